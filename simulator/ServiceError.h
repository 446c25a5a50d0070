// How the inside of the service reports failure: the code that the exported function returns.
#pragma once

#include <windows.h>

#include <string>
#include <utility>

namespace simulator
{
class CServiceError
{
public:
    // The reason is for the person who reads the call log.
    explicit CServiceError(DWORD dwCode, std::string reason = {}) : m_dwCode(dwCode), m_reason(std::move(reason))
    {
    }
    DWORD Code() const
    {
        return m_dwCode;
    }
    const std::string& Reason() const
    {
        return m_reason;
    }

private:
    DWORD m_dwCode;
    std::string m_reason;
};

inline void Require(bool bHolds, DWORD dwCode = ERROR_INVALID_PARAMETER)
{
    if (!bHolds)
        throw CServiceError(dwCode);
}
} // namespace simulator
