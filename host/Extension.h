// The extension as its host sees it: what the root object and its properties answer, in ordinary types.
#pragma once

#include "public/Dot11ExtUI.h"
#include "values/Bstr.h"
#include "values/ComRef.h"

#include <optional>
#include <string>
#include <vector>

// The host's record that goes with every question about a profile.
class CConnectionContext
{
public:
    // The name is that of the profile on the adapter, and the flags are the ones that it is stored with.
    explicit CConnectionContext(CWideView profileName, const GUID& adapter = {}, DWORD dwFlags = 0);

    void* Record()
    {
        return &m_record;
    }

private:
    Dot11ExtUIConnectionContext m_record{};
};

struct PropertyFlags
{
    ULONG uQualifiedNames;
    ULONG uKind;
};

inline CWideView TextOf(const Dot11ExtUIPropertyEntry& entry)
{
    return entry.bstrDisplayText ? CWideView(entry.bstrDisplayText, SysStringLen(entry.bstrDisplayText)) : CWideView();
}

struct PropertyEntries
{
    // Borrowed from the property, as long as that lives.
    std::vector<Dot11ExtUIPropertyEntry*> entries;
    ULONG uDefault;
};

// Each question answers nothing where the property does not offer the operation, and throws CHostError for any other
// failure. A vendor text may be missing.
class CProperty
{
public:
    explicit CProperty(CComRef<IDot11ExtUIProperty> property) : m_property(std::move(property))
    {
    }

    CWideString Name() const;
    std::optional<PropertyFlags> Flags() const;
    std::optional<bool> HasDialog() const;
    std::optional<bool> IsSelected(const std::optional<CWideString>& strVendorText, CConnectionContext& context) const;
    std::optional<PropertyEntries> Entries(const std::optional<CWideString>& strVendorText, CConnectionContext& context) const;

    // These give the changed vendor text, or nothing when the property sees nothing to change.
    std::optional<CWideString> Select(const std::optional<CWideString>& strVendorText, CConnectionContext& context) const;
    std::optional<CWideString> Choose(const std::optional<CWideString>& strVendorText, CConnectionContext& context,
                                      Dot11ExtUIPropertyEntry& entry) const;

    // Runs the property's dialog and waits for its end; nothing when it was cancelled. Throws CHostError when the dialog
    // could not be opened.
    std::optional<CWideString> ShowDialog(HWND hwndOwner, const std::optional<CWideString>& strVendorText,
                                          CConnectionContext& context) const;

private:
    CComRef<IDot11ExtUIProperty> m_property;
};

CWideString FriendlyName(IDot11ExtUI& root);

// Empty where the kind is not offered.
std::vector<CProperty> Properties(IDot11ExtUI& root, ULONG uKind);
