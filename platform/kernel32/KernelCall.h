// The frame of every kernel function: faults first, then the body, and no exception beyond it.
#pragma once

#include "platform/testing/FaultPoint.h"

#include <windows.h>

#include <new>
#include <utility>

namespace platform
{
template <class Result>
Result FailWith(DWORD dwError, Result failure) noexcept
{
    SetLastError(dwError);
    return failure;
}

// Runs the body and returns what it returns. A planned fault and an exhausted memory give the function's failure value
// instead, with the last error set (dwFaultError is the code of a plan that leaves the choice to the function).
template <class Result, class Body>
Result KernelCall(const char* szFunction, DWORD dwFaultError, Result failure, Body&& body) noexcept
{
    if (testing::FaultFires(szFunction))
        return FailWith(testing::FaultCode(szFunction, dwFaultError), failure);
    try
    {
        return std::forward<Body>(body)();
    }
    catch (const std::bad_alloc&)
    {
        return FailWith(ERROR_NOT_ENOUGH_MEMORY, failure);
    }
}
} // namespace platform
