#include <objbase.h>

#include "platform/testing/Accounts.h"
#include "platform/testing/FaultPoint.h"

#include <algorithm>
#include <cstdlib>

using platform::testing::Account;
using platform::testing::ChangeAccount;
using platform::testing::FaultFires;

LPVOID WINAPI CoTaskMemAlloc(SIZE_T cb)
{
    if (FaultFires("CoTaskMemAlloc"))
        return nullptr;
    void* const pv = std::malloc(std::max<SIZE_T>(cb, 1)); // a block of no bytes is a block too
    if (pv)
        ChangeAccount(Account::TaskMemory, 1);
    return pv;
}

void WINAPI CoTaskMemFree(LPVOID pv)
{
    FaultFires("CoTaskMemFree"); // has no way to fail; the call is counted
    if (!pv)
        return;
    ChangeAccount(Account::TaskMemory, -1);
    std::free(pv);
}
