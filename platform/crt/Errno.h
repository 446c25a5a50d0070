// The C run-time's view of system error codes.
#pragma once

#include <windows.h>

namespace platform
{
// Sets errno to what the run-time makes of the code and the last error to the code itself.
void SetRuntimeError(DWORD dwError) noexcept;
} // namespace platform
