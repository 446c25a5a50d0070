// The stand-in's side of failing on purpose.
#pragma once

#include <windows.h>

namespace platform::testing
{
// Counts a call of the named function; true when this call is to fail. Costs one relaxed load while nothing is planned.
bool FaultFires(const char* szFunction) noexcept;

// The code that the plan asks for, or dwDefault when it leaves the choice to the function.
DWORD FaultCode(const char* szFunction, DWORD dwDefault) noexcept;
} // namespace platform::testing
