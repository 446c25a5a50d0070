// The words of the security elements and the values behind them. The order of the rows is the order of the search.
#pragma once

#include "values/WideText.h"

struct CCXSecurityToken
{
    const WCHAR* szToken;
    DWORD value;
};

inline constexpr DWORD authOpen = 1;
inline constexpr DWORD authCckm = 0x80000001u; // lies in the vendors' range
inline constexpr DWORD cipherNone = 0;
inline constexpr DWORD cipherWep = 5;

namespace CCXSecurityTokens
{
inline constexpr CCXSecurityToken authentication[] = {
    {OLESTR("open"), authOpen},
    {OLESTR("cckm"), authCckm},
    {OLESTR("wpa"), 3},
    {OLESTR("wpa2"), 6},
};

inline constexpr CCXSecurityToken cipher[] = {
    {OLESTR("None"), cipherNone},
    {OLESTR("WEP"), cipherWep},
    {OLESTR("TKIP"), 2},
    {OLESTR("AES"), 4},
};
} // namespace CCXSecurityTokens
