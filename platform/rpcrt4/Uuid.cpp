#include <rpc.h>

#include "platform/rpcrt4/GuidText.h"
#include "platform/testing/Accounts.h"
#include "platform/testing/FaultPoint.h"

#include <algorithm>
#include <new>

using platform::testing::Account;
using platform::testing::ChangeAccount;
using platform::testing::FaultFires;

namespace
{
RPC_STATUS FaultStatus(const char* szFunction, RPC_STATUS defaultStatus)
{
    return static_cast<RPC_STATUS>(platform::testing::FaultCode(szFunction, static_cast<DWORD>(defaultStatus)));
}
} // namespace

RPC_STATUS WINAPI UuidToStringW(UUID* pUuid, RPC_WSTR* pszUuid)
{
    if (FaultFires("UuidToStringW"))
        return FaultStatus("UuidToStringW", RPC_S_OUT_OF_MEMORY);
    if (!pUuid || !pszUuid)
        return RPC_S_INVALID_ARG;
    try
    {
        const std::u16string text = platform::GuidToText(*pUuid);
        *pszUuid = new unsigned short[text.size() + 1];
        std::copy_n(text.c_str(), text.size() + 1, *pszUuid);
    }
    catch (const std::bad_alloc&)
    {
        return RPC_S_OUT_OF_MEMORY;
    }
    ChangeAccount(Account::RpcString, 1);
    return RPC_S_OK;
}

RPC_STATUS WINAPI UuidFromStringW(RPC_WSTR szUuid, UUID* pUuid)
{
    if (FaultFires("UuidFromStringW"))
        return FaultStatus("UuidFromStringW", RPC_S_INVALID_STRING_UUID);
    if (!szUuid || !pUuid)
        return RPC_S_INVALID_ARG;
    // One character more than an identifier has tells a text that is too long.
    char16_t text[37];
    std::size_t cch = 0;
    for (; cch < std::size(text) && szUuid[cch] != 0; ++cch)
        text[cch] = szUuid[cch];
    const auto uuid = platform::GuidFromText({text, cch});
    if (!uuid)
        return RPC_S_INVALID_STRING_UUID;
    *pUuid = *uuid;
    return RPC_S_OK;
}

RPC_STATUS WINAPI RpcStringFreeW(RPC_WSTR* pszText)
{
    // Made to fail, it frees all the same, so that the account of texts shows only what the caller forgot.
    const bool bFails = FaultFires("RpcStringFreeW");
    if (!pszText)
        return RPC_S_INVALID_ARG;
    if (*pszText)
        ChangeAccount(Account::RpcString, -1);
    delete[] * pszText;
    *pszText = nullptr;
    return bFails ? FaultStatus("RpcStringFreeW", RPC_S_INVALID_ARG) : RPC_S_OK;
}
