// Planned faults of functions that return an HRESULT.
#pragma once

#include "platform/testing/FaultPoint.h"

#include <optional>

namespace platform
{
// The result to fail with when this call of the function is to fail. A planned code may be a result or a system error.
inline std::optional<HRESULT> ResultFault(const char* szFunction, HRESULT hrDefault) noexcept
{
    if (!testing::FaultFires(szFunction))
        return std::nullopt;
    const auto dwCode = testing::FaultCode(szFunction, static_cast<DWORD>(hrDefault));
    const auto hr = static_cast<HRESULT>(dwCode);
    return FAILED(hr) || hr == S_FALSE ? hr : HRESULT_FROM_WIN32(dwCode);
}
} // namespace platform
