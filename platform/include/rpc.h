// Identifiers and their text forms.
#pragma once

#include "windef.h"

using RPC_STATUS = LONG;
// The platform's own spelling: unsigned 16-bit units and not its character type, so callers convert on both builds.
using RPC_WSTR = unsigned short*;
inline constexpr RPC_STATUS RPC_S_OK = 0;
inline constexpr RPC_STATUS RPC_S_OUT_OF_MEMORY = 14;
inline constexpr RPC_STATUS RPC_S_INVALID_ARG = 87;
inline constexpr RPC_STATUS RPC_S_INVALID_STRING_UUID = 1705;

extern "C"
{
    RPC_STATUS WINAPI UuidToStringW(UUID* pUuid, RPC_WSTR* pszUuid);
    RPC_STATUS WINAPI UuidFromStringW(RPC_WSTR szUuid, UUID* pUuid);
    RPC_STATUS WINAPI RpcStringFreeW(RPC_WSTR* pszText);
}
