#include "platform/kernel32/KernelCall.h"
#include "platform/kernel32/Loader.h"
#include "platform/kernel32/Paths.h"

#include <algorithm>

using namespace platform;

using QueryGuard = std::lock_guard<std::recursive_mutex>;

DWORD WINAPI GetModuleFileNameW(HMODULE hModule, LPWSTR szFileName, DWORD cchFileName)
{
    return KernelCall("GetModuleFileNameW", ERROR_MOD_NOT_FOUND, DWORD{0},
                      [&]
                      {
                          const QueryGuard lock(LoaderLock());
                          const CModule* const pModule = FindModule(hModule);
                          if (!pModule)
                              return FailWith(ERROR_MOD_NOT_FOUND, DWORD{0});
                          if (cchFileName == 0)
                              return FailWith(ERROR_INSUFFICIENT_BUFFER, DWORD{0});
                          const auto path = PlatformPath(pModule->File());
                          const auto cchCopied = std::min<std::size_t>(path.size(), cchFileName - 1);
                          *std::copy_n(path.begin(), cchCopied, szFileName) = u'\0';
                          if (cchCopied < path.size())
                              return FailWith(ERROR_INSUFFICIENT_BUFFER, cchFileName);
                          SetLastError(ERROR_SUCCESS);
                          return static_cast<DWORD>(cchCopied);
                      });
}

FARPROC WINAPI GetProcAddress(HMODULE hModule, LPCSTR szProcName)
{
    return KernelCall("GetProcAddress", ERROR_PROC_NOT_FOUND, FARPROC{nullptr},
                      [&]
                      {
                          const QueryGuard lock(LoaderLock());
                          const CModule* const pModule = FindModule(hModule);
                          if (!pModule)
                              return FailWith(ERROR_MOD_NOT_FOUND, FARPROC{nullptr});
                          // Exports have names here and no numbers.
                          void* const pSymbol = IS_INTRESOURCE(szProcName) ? nullptr : pModule->OwnSymbol(szProcName);
                          return pSymbol ? reinterpret_cast<FARPROC>(pSymbol) : FailWith(ERROR_PROC_NOT_FOUND, FARPROC{nullptr});
                      });
}

BOOL WINAPI DisableThreadLibraryCalls(HMODULE hModule)
{
    return KernelCall("DisableThreadLibraryCalls", ERROR_INVALID_HANDLE, FALSE,
                      [&]
                      {
                          const QueryGuard lock(LoaderLock());
                          // No module is told of threads here, so that there is nothing to turn off for a live one.
                          return hModule && FindModule(hModule) ? TRUE : FailWith(ERROR_MOD_NOT_FOUND, FALSE);
                      });
}
