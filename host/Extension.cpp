#include "host/Extension.h"

#include "host/ComResults.h"
#include "host/HostError.h"

#include <memory>

namespace
{
// What the dialog operation reports in place of "modified" when there was no dialog.
constexpr BOOL dialogNotOpened = -1;

bool IsOffered(HRESULT hr, const char* szCall)
{
    if (hr == E_NOTIMPL)
        return false;
    RequireSuccess(hr, szCall);
    return true;
}

// A missing text is a null string.
CBstr BstrOf(const std::optional<CWideString>& strText)
{
    return strText ? CBstr(CWideView(*strText)) : CBstr();
}

std::optional<CWideString> ChangedText(HRESULT hr, const char* szCall, BOOL bModified, const CBstr& bstrModified)
{
    RequireSuccess(hr, szCall);
    if (!bModified)
        return std::nullopt;
    if (!bstrModified)
        throw CHostError(std::string(szCall) + " reported a change without a new text");
    const CWideView text = bstrModified.View();
    const std::size_t nLast = text.find_last_not_of(OLESTR(" \t\r\n"));
    return CWideString(text.substr(0, nLast + 1));
}
} // namespace

CConnectionContext::CConnectionContext(CWideView profileName, const GUID& adapter, DWORD dwFlags)
{
    m_record.connectionKind = connectionKindPlain;
    profileName.copy(m_record.profileName, connectionContextNameCapacity - 1);
    m_record.profileFlags = dwFlags;
    m_record.interfaceGuid = adapter;
}

CWideString CProperty::Name() const
{
    CBstr bstrName;
    RequireSuccess(m_property->Dot11ExtUIPropertyGetName(bstrName.Put()), "Dot11ExtUIPropertyGetName");
    return CWideString(bstrName.View());
}

std::optional<PropertyFlags> CProperty::Flags() const
{
    PropertyFlags flags{};
    const HRESULT hr = m_property->Dot11ExtUIPropertyGetFlags(&flags.uQualifiedNames, &flags.uKind);
    return IsOffered(hr, "Dot11ExtUIPropertyGetFlags") ? std::optional(flags) : std::nullopt;
}

std::optional<bool> CProperty::HasDialog() const
{
    BOOL bDialog = FALSE;
    const HRESULT hr = m_property->Dot11ExtUIPropertyHasDialog(&bDialog);
    return IsOffered(hr, "Dot11ExtUIPropertyHasDialog") ? std::optional(bDialog != FALSE) : std::nullopt;
}

std::optional<bool> CProperty::IsSelected(const std::optional<CWideString>& strVendorText, CConnectionContext& context) const
{
    BOOL bSelected = FALSE;
    const CBstr bstrText = BstrOf(strVendorText);
    const HRESULT hr = m_property->Dot11ExtUIPropertyGetSelected(bstrText.Get(), context.Record(), &bSelected);
    return IsOffered(hr, "Dot11ExtUIPropertyGetSelected") ? std::optional(bSelected != FALSE) : std::nullopt;
}

std::optional<PropertyEntries> CProperty::Entries(const std::optional<CWideString>& strVendorText,
                                                  CConnectionContext& context) const
{
    PropertyEntries result{};
    ULONG cEntries = 0;
    Dot11ExtUIPropertyEntry* pEntries = nullptr;
    const CBstr bstrText = BstrOf(strVendorText);
    const HRESULT hr =
        m_property->Dot11ExtUIPropertyGetDisplayInfo(0, bstrText.Get(), context.Record(), &cEntries, &result.uDefault, &pEntries);
    if (!IsOffered(hr, "Dot11ExtUIPropertyGetDisplayInfo"))
        return std::nullopt;
    for (ULONG n = 0; pEntries && n < cEntries; ++n)
        result.entries.push_back(pEntries + n);
    return result;
}

std::optional<CWideString> CProperty::Select(const std::optional<CWideString>& strVendorText, CConnectionContext& context) const
{
    BOOL bModified = FALSE;
    CBstr bstrModified;
    const CBstr bstrText = BstrOf(strVendorText);
    const HRESULT hr =
        m_property->Dot11ExtUIPropertySetSelected(bstrText.Get(), context.Record(), bstrModified.Put(), &bModified);
    return ChangedText(hr, "Dot11ExtUIPropertySetSelected", bModified, bstrModified);
}

std::optional<CWideString> CProperty::Choose(const std::optional<CWideString>& strVendorText, CConnectionContext& context,
                                             Dot11ExtUIPropertyEntry& entry) const
{
    BOOL bModified = FALSE;
    CBstr bstrModified;
    const CBstr bstrText = BstrOf(strVendorText);
    const HRESULT hr =
        m_property->Dot11ExtUIPropertySetDisplayInfo(0, bstrText.Get(), context.Record(), &entry, bstrModified.Put(), &bModified);
    return ChangedText(hr, "Dot11ExtUIPropertySetDisplayInfo", bModified, bstrModified);
}

std::optional<CWideString> CProperty::ShowDialog(HWND hwndOwner, const std::optional<CWideString>& strVendorText,
                                                 CConnectionContext& context) const
{
    BOOL bModified = FALSE;
    CBstr bstrModified;
    const CBstr bstrText = BstrOf(strVendorText);
    const HRESULT hr =
        m_property->Dot11ExtUIPropertyShowDialog(hwndOwner, bstrText.Get(), context.Record(), bstrModified.Put(), &bModified);
    if (SUCCEEDED(hr) && bModified == dialogNotOpened)
        throw CHostError("the extension's dialog could not be opened");
    return ChangedText(hr, "Dot11ExtUIPropertyShowDialog", bModified, bstrModified);
}

CWideString FriendlyName(IDot11ExtUI& root)
{
    CBstr bstrName;
    RequireSuccess(root.Dot11ExtUIGetFriendlyName(bstrName.Put()), "Dot11ExtUIGetFriendlyName");
    return CWideString(bstrName.View());
}

std::vector<CProperty> Properties(IDot11ExtUI& root, ULONG uKind)
{
    ULONG cProperties = 0;
    IDot11ExtUIProperty** pProperties = nullptr;
    const HRESULT hr = root.Dot11ExtUIGetProperties(uKind, &cProperties, &pProperties);
    if (!IsOffered(hr, "Dot11ExtUIGetProperties"))
        return {};
    const std::unique_ptr<IDot11ExtUIProperty*[], decltype(&CoTaskMemFree)> array(pProperties, &CoTaskMemFree);
    std::vector<CComRef<IDot11ExtUIProperty>> owned(cProperties);
    for (ULONG n = 0; n < cProperties; ++n)
        *owned[n].Put() = pProperties[n];
    return std::vector<CProperty>(owned.begin(), owned.end());
}
