#include "profile/CCXSecuritySettings.h"

#include "profile/IhvProfile.h"

namespace
{
// Tokens are told apart by their first four characters.
constexpr std::size_t comparedLength = 4;

WCHAR FoldAsciiCase(WCHAR ch)
{
    return ch >= OLESTR('A') && ch <= OLESTR('Z') ? static_cast<WCHAR>(ch - OLESTR('A') + OLESTR('a')) : ch;
}

// The end of a shorter token takes part in the comparison, so WEP is not the beginning of a longer word.
bool MatchesToken(const CWideString& text, const WCHAR* szToken)
{
    for (std::size_t i = 0; i < comparedLength; ++i)
    {
        if (FoldAsciiCase(text.c_str()[i]) != FoldAsciiCase(szToken[i]))
            return false;
        if (szToken[i] == WCHAR{})
            return true;
    }
    return true;
}

DWORD ReadCipher(const CXmlNode& encryption)
{
    const auto text = encryption.Text();
    if (!text)
        return CCXSecuritySettings::invalid;
    for (const auto& row : CCXSecurityTokens::cipher)
    {
        if (MatchesToken(*text, row.szToken))
            return row.value;
    }
    return CCXSecuritySettings::invalid;
}

void AppendAuthentication(const CIhvProfileWriter& writer, const CCXSecuritySettings& settings)
{
    const CXmlNode network = writer.Append(writer.Root(), OLESTR("authenticatingNetwork"));
    const auto* pAuthentication = CCXSecurityTokens::Find(CCXSecurityTokens::authentication, settings.auth);
    if (!pAuthentication)
        return;
    const CXmlNode authentication = writer.Append(network, pAuthentication->szToken);
    const auto* pCipher = CCXSecurityTokens::Find(CCXSecurityTokens::cipher, settings.cipher);
    writer.Append(authentication, OLESTR("encryption"), pCipher ? pCipher->szToken : nullptr);
}
} // namespace

void CCXSecuritySettings::SetDefaults()
{
    auth = authCckm;
    cipher = cipherWep;
}

void CCXSecuritySettings::Parse(const WCHAR* szIHVProfile)
{
    auth = invalid;
    cipher = invalid;
    const CXmlNode root = OpenIhvProfile(szIHVProfile);
    if (root.Select(OLESTR("//CCX/openNetwork")))
    {
        auth = authOpen;
        cipher = cipherNone;
        return;
    }
    const CXmlNode network = root.Select(OLESTR("//CCX/authenticatingNetwork"));
    for (const auto& row : CCXSecurityTokens::authentication)
    {
        const CXmlNode authentication = network.Select(row.szToken);
        if (!authentication)
            continue;
        auth = row.value;
        cipher = ReadCipher(authentication.Select(OLESTR("encryption")));
        return;
    }
}

BSTR CCXSecuritySettings::Serialise() const
{
    const CIhvProfileWriter writer;
    if (!writer)
        return nullptr;
    if (auth == authOpen)
        writer.Append(writer.Root(), OLESTR("openNetwork"));
    else
        AppendAuthentication(writer, *this);
    return writer.Finish().Detach();
}

bool CCXSecuritySettings::IsValid() const
{
    CBstr bstrWritten;
    *bstrWritten.Put() = Serialise();
    const CCXSecuritySettings readBack(bstrWritten.Get());
    return readBack.auth != invalid && readBack.cipher != invalid;
}
