#include "host/check/SecurityCheck.h"

#include "host/IhvElement.h"
#include "host/check/KnownElements.h"
#include "profile/CCXSecuritySettings.h"
#include "values/Utf8Text.h"

#include <algorithm>

namespace
{
constexpr ProfilePart securityPart = ProfilePart::Security;

// What the extension takes for a choice that is none: the last of the ciphers that it offers.
const CCXSecurityTokens::Cipher& FallbackCipher()
{
    const auto isOffered = [](const CCXSecurityTokens::Cipher& row) { return row.bOffered; };
    return *std::find_if(std::rbegin(CCXSecurityTokens::cipher), std::rend(CCXSecurityTokens::cipher), isOffered);
}

std::string TakenAs()
{
    const auto* pAuthentication = CCXSecurityTokens::Find(CCXSecurityTokens::authentication, authCckm);
    return "taken as " + Utf8Of(pAuthentication->szName) + " with " + Utf8Of(FallbackCipher().szName);
}

template <class Row, std::size_t nRows>
std::string Tokens(const Row (&rows)[nRows])
{
    std::string strTokens;
    for (const Row& row : rows)
        strTokens += (strTokens.empty() ? "" : ", ") + Utf8Of(row.szToken);
    return strTokens;
}

// A record of which no field is the marker is valid; of the others the record knows itself.
bool IsValid(const CCXSecuritySettings& settings)
{
    const bool bWhole = settings.auth != CCXSecuritySettings::invalid && settings.cipher != CCXSecuritySettings::invalid;
    return bWhole || settings.IsValid();
}

void CheckAuthentication(const XmlElement& network, const CVendorElements& elements, CFindings& findings,
                         const CCXSecuritySettings& settings)
{
    const auto* pCounting = CCXSecurityTokens::Find(CCXSecurityTokens::authentication, settings.auth);
    if (!pCounting)
    {
        findings.AddElement(CheckRule::AuthenticationToken, securityPart, network,
                            {{}, Tokens(CCXSecurityTokens::authentication), TakenAs()});
        return;
    }
    for (const auto& row : CCXSecurityTokens::authentication)
        if (const XmlElement* pOther = &row == pCounting ? nullptr : FindBelow(&network, {row.szToken}))
            if (!elements.IsUsed(*pOther))
                findings.AddElement(CheckRule::OtherAuthentication, securityPart, *pOther,
                                    {pCounting->szToken, {}, Utf8Of(pCounting->szToken) + " counts"});
}

void CheckCipher(const XmlElement& authentication, CVendorElements& elements, CFindings& findings,
                 const CCXSecuritySettings& settings)
{
    const XmlElement* pCipher = elements.Below(&authentication, {OLESTR("encryption")});
    if (!IsValid(settings))
    {
        const std::string strAllowed = Tokens(CCXSecurityTokens::cipher);
        if (pCipher)
            findings.AddContent(CheckRule::Cipher, securityPart, *pCipher,
                                {TextOf(elements.Map(), *pCipher), strAllowed, TakenAs()});
        else
            findings.AddMissing(CheckRule::Cipher, securityPart, "encryption", authentication, {{}, strAllowed, TakenAs()});
        return;
    }
    const auto* pRow = CCXSecurityTokens::Find(CCXSecurityTokens::cipher, settings.cipher);
    if (!pCipher || !pRow)
        return;
    const CWideString strText = TextOf(elements.Map(), *pCipher);
    if (!IsSameButCase(strText, pRow->szToken))
        findings.AddContent(CheckRule::CipherPrefix, securityPart, *pCipher,
                            {strText, Tokens(CCXSecurityTokens::cipher), "read as " + Utf8Of(pRow->szToken)});
    if (settings.auth == authCckm && !pRow->bOffered)
        findings.AddContent(CheckRule::CckmWithoutCipher, securityPart, *pCipher,
                            {strText, {}, "shown as " + Utf8Of(FallbackCipher().szName)});
}
} // namespace

void CheckSecurity(CVendorElements& elements, CFindings& findings)
{
    const CCXSecuritySettings settings(VendorText(elements.Map(), elements.Root()).c_str());
    const XmlElement* pOpen = elements.Anywhere({OLESTR("CCX"), OLESTR("openNetwork")});
    const XmlElement* pNetwork = elements.Anywhere({OLESTR("CCX"), OLESTR("authenticatingNetwork")});
    if (pOpen && pNetwork)
        findings.AddElement(CheckRule::OpenBesideAuthenticating, securityPart, *pNetwork, {{}, {}, "openNetwork counts"});
    if (pOpen)
        return;
    if (!pNetwork)
    {
        findings.AddElement(CheckRule::SecurityForm, securityPart, elements.Root(), {{}, {}, TakenAs()});
        return;
    }
    const auto* pToken = CCXSecurityTokens::Find(CCXSecurityTokens::authentication, settings.auth);
    if (const XmlElement* pCounting = pToken ? elements.Below(pNetwork, {pToken->szToken}) : nullptr)
        CheckCipher(*pCounting, elements, findings, settings);
    CheckAuthentication(*pNetwork, elements, findings, settings);
}
