#include "extui/SecurityPropertyInfo.h"

#include "profile/CCXSecurityTokens.h"
#include "public/Dot11ExtUI.h"

#include <algorithm>
#include <atomic>
#include <iterator>

namespace
{
constexpr CCXSecurityPropertyInfo OfferCckm()
{
    CCXSecurityPropertyInfo info = {authCckm, FALSE, FALSE, FALSE, propertyKindSecurity, 0, {}};
    for (const auto& row : CCXSecurityTokens::cipher)
    {
        if (row.bOffered)
            info.ciphers[info.cipherCount++] = row.value;
    }
    return info;
}

constinit CCXSecurityPropertyInfo securityPropertyInfos[] = {OfferCckm()};
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
    constexpr LONG lastRow = static_cast<LONG>(std::size(CCXSecurityTokens::cipher)) - 1;
    return CCXSecurityTokens::cipher[std::clamp<LONG>(info.cipherCount - 1, 0, lastRow)].value;
}

std::span<CCXSecurityPropertyInfo> SecurityPropertyInfos()
{
    return securityPropertyInfos;
}

const WCHAR* FindAuthenticationName(DWORD auth)
{
    const auto* pRow = CCXSecurityTokens::Find(CCXSecurityTokens::authentication, auth);
    return pRow ? pRow->szName : nullptr;
}

const WCHAR* AuthenticationName(DWORD auth)
{
    const WCHAR* szName = FindAuthenticationName(auth);
    return szName ? szName : OLESTR("");
}

const WCHAR* CipherName(DWORD cipher, bool bQualified)
{
    const auto* pRow = CCXSecurityTokens::Find(CCXSecurityTokens::cipher, cipher);
    if (!pRow)
        return OLESTR("");
    return bQualified ? pRow->szQualifiedName : pRow->szName;
}
