// The security part of the profile page: the choices, and what the extension makes of the one that is taken.
#pragma once

#include "host/Extension.h"
#include "host/StandardSecurity.h"

// What the profile uses by itself and what the extension offers, to be shown and chosen from.
class CSecurityChoice
{
public:
    // The property is null where the extension offers none. All are borrowed.
    CSecurityChoice(const CProperty* pProperty, StandardSecurity standard, std::optional<CWideString> strVendorText,
                    CConnectionContext& context);

    // The names to choose from. A profile that uses the extension's authentication can only keep it.
    std::vector<CWideString> Authentications() const;
    std::size_t Authentication() const
    {
        return m_nAuthentication;
    }
    void ChooseAuthentication(std::size_t nAuthentication);
    // Whether that is the extension's, and not what the profile uses by itself.
    bool IsExtensionChosen() const;

    std::vector<CWideString> Encryptions() const;
    // The one that the profile stands for.
    std::size_t Encryption() const;
    void ChooseEncryption(std::size_t nEncryption);

    // The vendor's text with all choices; nothing when the profile has none and needs none.
    const std::optional<CWideString>& VendorText() const
    {
        return m_strText;
    }

private:
    PropertyEntries Entries() const;

    const CProperty* m_pProperty;
    StandardSecurity m_standard;
    std::optional<CWideString> m_strRead;
    std::optional<CWideString> m_strText;
    CConnectionContext& m_context;
    bool m_bStandardOffered = true;
    std::size_t m_nAuthentication = 0;
};
