#include "host/SecurityChoice.h"

#include "host/HostError.h"

CSecurityChoice::CSecurityChoice(const CProperty* pProperty, StandardSecurity standard, std::optional<CWideString> strVendorText,
                                 CConnectionContext& context)
    : m_pProperty(pProperty), m_standard(std::move(standard)), m_strRead(std::move(strVendorText)), m_strText(m_strRead),
      m_context(context)
{
    // Without a text of the vendor's the extension would claim every profile for itself.
    if (m_pProperty && m_strRead)
        m_bStandardOffered = !m_pProperty->IsSelected(m_strRead, m_context).value_or(false);
}

std::vector<CWideString> CSecurityChoice::Authentications() const
{
    std::vector<CWideString> names;
    if (m_bStandardOffered)
        names.push_back(m_standard.strAuthentication);
    if (m_pProperty)
        names.push_back(m_pProperty->Name());
    return names;
}

bool CSecurityChoice::IsExtensionChosen() const
{
    return m_pProperty && m_nAuthentication == (m_bStandardOffered ? 1u : 0u);
}

void CSecurityChoice::ChooseAuthentication(std::size_t nAuthentication)
{
    if (nAuthentication == m_nAuthentication)
        return;
    m_nAuthentication = nAuthentication;
    m_strText = m_strRead;
    if (!IsExtensionChosen())
        return;
    if (auto strSelected = m_pProperty->Select(m_strRead, m_context))
        m_strText = std::move(strSelected);
}

PropertyEntries CSecurityChoice::Entries() const
{
    if (auto entries = m_pProperty->Entries(m_strText, m_context))
        return *entries;
    throw CHostError("the extension offers no ciphers");
}

std::vector<CWideString> CSecurityChoice::Encryptions() const
{
    if (!IsExtensionChosen())
        return {m_standard.strEncryption};
    std::vector<CWideString> names;
    for (const Dot11ExtUIPropertyEntry* pEntry : Entries().entries)
        names.emplace_back(TextOf(*pEntry));
    return names;
}

std::size_t CSecurityChoice::Encryption() const
{
    return IsExtensionChosen() ? Entries().uDefault : 0;
}

void CSecurityChoice::ChooseEncryption(std::size_t nEncryption)
{
    if (!IsExtensionChosen())
        return;
    if (auto strChosen = m_pProperty->Choose(m_strText, m_context, *Entries().entries.at(nEncryption)))
        m_strText = std::move(strChosen);
}
