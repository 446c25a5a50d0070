#include "platform/kernel32/Environment.h"

#include "platform/kernel32/KernelCall.h"
#include "platform/kernel32/TextResult.h"
#include "platform/kernel32/Unicode.h"

#include <cstdlib>
#include <mutex>

namespace platform
{
namespace
{
std::mutex& EnvironmentLock()
{
    static auto* const pLock = new std::mutex;
    return *pLock;
}
} // namespace

std::optional<std::string> EnvironmentText(const char* szName)
{
    const std::lock_guard lock(EnvironmentLock());
    const char* const szValue = std::getenv(szName);
    return szValue ? std::optional<std::string>(szValue) : std::nullopt;
}
} // namespace platform

using namespace platform;

DWORD WINAPI GetEnvironmentVariableW(LPCWSTR szName, LPWSTR szBuffer, DWORD cchBuffer)
{
    return KernelCall("GetEnvironmentVariableW", ERROR_ENVVAR_NOT_FOUND, DWORD{0},
                      [&]
                      {
                          const auto value = EnvironmentText(ToUtf8(szName).c_str());
                          Require(value.has_value(), ERROR_ENVVAR_NOT_FOUND);
                          // An empty value gives 0 like a missing variable; the last error tells the two apart.
                          SetLastError(ERROR_SUCCESS);
                          return ReturnText(FromUtf8(*value), szBuffer, cchBuffer);
                      });
}

BOOL WINAPI SetEnvironmentVariableW(LPCWSTR szName, LPCWSTR szValue)
{
    return KernelCall("SetEnvironmentVariableW", ERROR_NOT_ENOUGH_MEMORY, FALSE,
                      [&]
                      {
                          const auto name = ToUtf8(szName);
                          const std::lock_guard lock(EnvironmentLock());
                          const int nResult = szValue ? setenv(name.c_str(), ToUtf8(szValue).c_str(), 1) : unsetenv(name.c_str());
                          Require(nResult == 0, ERROR_INVALID_PARAMETER); // an empty name, or one with "="
                      });
}
