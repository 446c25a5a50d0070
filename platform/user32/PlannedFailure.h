// Failing on purpose, for functions that say why by the last error.
#pragma once

#include "platform/testing/FaultPoint.h"

namespace platform::user32
{
// True when this call is to fail; the last error is set then.
inline bool FailsAsPlanned(const char* szFunction, DWORD dwDefaultError) noexcept
{
    if (!testing::FaultFires(szFunction))
        return false;
    SetLastError(testing::FaultCode(szFunction, dwDefaultError));
    return true;
}
} // namespace platform::user32
