// The frame of every kernel function: faults first, then the body, and no exception beyond it.
#pragma once

#include "platform/kernel32/Failure.h"
#include "platform/testing/FaultPoint.h"

#include <windows.h>

#include <new>
#include <type_traits>
#include <utility>

namespace platform
{
template <class Result>
Result FailWith(DWORD dwError, Result failure) noexcept
{
    SetLastError(dwError);
    return failure;
}

// Runs the body; a failure or an exhausted memory gives the function's failure value, with the last error set. A body that
// returns nothing has done what it is there for when it comes back.
template <class Result, class Body>
Result GuardedCall(Result failure, Body&& body) noexcept
{
    try
    {
        if constexpr (std::is_void_v<std::invoke_result_t<Body>>)
        {
            std::forward<Body>(body)();
            return TRUE;
        }
        else
            return std::forward<Body>(body)();
    }
    catch (const Failure& thrown)
    {
        return FailWith(thrown.dwError, failure);
    }
    catch (const std::bad_alloc&)
    {
        return FailWith(ERROR_NOT_ENOUGH_MEMORY, failure);
    }
}

// Runs the body and returns what it returns. A planned fault gives the function's failure value instead, with the last
// error set (dwFaultError is the code of a plan that leaves the choice to the function).
template <class Result, class Body>
Result KernelCall(const char* szFunction, DWORD dwFaultError, Result failure, Body&& body) noexcept
{
    if (testing::FaultFires(szFunction))
        return FailWith(testing::FaultCode(szFunction, dwFaultError), failure);
    return GuardedCall(failure, std::forward<Body>(body));
}

// The same for a function that gives something back. Made to fail, it gives it back all the same, so that the accounts
// and the locks show only what the caller forgot.
template <class Body>
BOOL GiveBackCall(const char* szFunction, DWORD dwFaultError, Body&& body) noexcept
{
    const bool bFails = testing::FaultFires(szFunction);
    const BOOL bDone = GuardedCall(FALSE, std::forward<Body>(body));
    return bFails ? FailWith(testing::FaultCode(szFunction, dwFaultError), FALSE) : bDone;
}
} // namespace platform
