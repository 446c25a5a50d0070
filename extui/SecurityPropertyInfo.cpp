#include "extui/SecurityPropertyInfo.h"

#include "profile/CCXSecurityTokens.h"
#include "public/Dot11ExtUI.h"

#include <algorithm>
#include <atomic>
#include <iterator>

namespace
{
CCXSecurityPropertyInfo securityPropertyInfos[] = {
    {authCckm, FALSE, FALSE, FALSE, propertyKindSecurity, 3, {5, 2, 4}},
};

struct NamedAuthentication
{
    DWORD auth;
    const WCHAR* szName;
};
constexpr NamedAuthentication authenticationNames[] = {
    {authCckm, OLESTR("CCKM")},
    {6, OLESTR("(WPA2)")},
    {3, OLESTR("(WPA)")},
    {authOpen, OLESTR("Open (CCX)")},
};

// The order of the rows matters: the fallback cipher is taken from it by row.
struct NamedCipher
{
    DWORD cipher;
    const WCHAR* szPlainName;
    const WCHAR* szQualifiedName;
};
constexpr NamedCipher cipherNames[] = {
    {5, OLESTR("WEP"), OLESTR("WEP (CCX)")},
    {2, OLESTR("TKIP"), OLESTR("TKIP (MFP)")},
    {4, OLESTR("AES"), OLESTR("AES (MFP)")},
    {0, OLESTR("None"), OLESTR("None (CCX)")},
};
} // namespace

bool HasQualifiedNames(CCXSecurityPropertyInfo& info)
{
    return std::atomic_ref(info.bQualifiedNames).load(std::memory_order_relaxed) != 0;
}

void SetQualifiedNames(CCXSecurityPropertyInfo& info, bool bQualified)
{
    std::atomic_ref(info.bQualifiedNames).store(bQualified ? 1 : 0, std::memory_order_relaxed);
}

std::span<const DWORD> CiphersOf(const CCXSecurityPropertyInfo& info)
{
    const LONG cCiphers = std::clamp<LONG>(info.cipherCount, 0, static_cast<LONG>(maxCiphers));
    return {info.ciphers, static_cast<std::size_t>(cCiphers)};
}

DWORD FallbackCipher(const CCXSecurityPropertyInfo& info)
{
    constexpr LONG lastRow = static_cast<LONG>(std::size(cipherNames)) - 1;
    return cipherNames[std::clamp<LONG>(info.cipherCount - 1, 0, lastRow)].cipher;
}

std::span<CCXSecurityPropertyInfo> SecurityPropertyInfos()
{
    return securityPropertyInfos;
}

const WCHAR* FindAuthenticationName(DWORD auth)
{
    const auto row = std::find_if(std::begin(authenticationNames), std::end(authenticationNames),
                                  [&](const auto& candidate) { return candidate.auth == auth; });
    return row == std::end(authenticationNames) ? nullptr : row->szName;
}

const WCHAR* AuthenticationName(DWORD auth)
{
    const WCHAR* szName = FindAuthenticationName(auth);
    return szName ? szName : OLESTR("");
}

const WCHAR* CipherName(DWORD cipher, bool bQualified)
{
    const auto row = std::find_if(std::begin(cipherNames), std::end(cipherNames),
                                  [&](const auto& candidate) { return candidate.cipher == cipher; });
    if (row == std::end(cipherNames))
        return OLESTR("");
    return bQualified ? row->szQualifiedName : row->szPlainName;
}
