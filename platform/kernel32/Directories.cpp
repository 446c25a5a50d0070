#include "platform/kernel32/KernelCall.h"
#include "platform/kernel32/MachineError.h"
#include "platform/kernel32/Paths.h"
#include "platform/kernel32/TextResult.h"

#include <sys/stat.h>
#include <unistd.h>

using namespace platform;

namespace
{
// A folder leaves room for a name of the old short form in it.
constexpr std::size_t cchFolderMax = MAX_PATH - 12;
} // namespace

DWORD WINAPI GetCurrentDirectoryW(DWORD cchBuffer, LPWSTR szBuffer)
{
    return KernelCall("GetCurrentDirectoryW", ERROR_ACCESS_DENIED, DWORD{0},
                      [&]
                      {
                          std::error_code error;
                          const auto current = std::filesystem::current_path(error);
                          Require(!error, ErrorFromErrno(error.value()));
                          return ReturnText(PlatformPath(current), szBuffer, cchBuffer);
                      });
}

BOOL WINAPI SetCurrentDirectoryW(LPCWSTR szPath)
{
    return KernelCall("SetCurrentDirectoryW", ERROR_FILE_NOT_FOUND, FALSE,
                      [&]
                      {
                          const auto path = RealPath(szPath);
                          RequireDone(chdir(path.c_str()), path);
                      });
}

UINT WINAPI GetSystemDirectoryW(LPWSTR szBuffer, UINT cchBuffer)
{
    return KernelCall("GetSystemDirectoryW", ERROR_ACCESS_DENIED, UINT{0},
                      [&] { return ReturnText(u"C:\\windows\\system32", szBuffer, cchBuffer); });
}

BOOL WINAPI CreateDirectoryW(LPCWSTR szPath, LPSECURITY_ATTRIBUTES pAttributes)
{
    return KernelCall("CreateDirectoryW", ERROR_ACCESS_DENIED, FALSE,
                      [&]
                      {
                          Require(!pAttributes, ERROR_NOT_SUPPORTED);
                          const auto path = RealPath(szPath, cchFolderMax, ERROR_FILENAME_EXCED_RANGE);
                          RequireDone(mkdir(path.c_str(), 0777), path);
                      });
}

BOOL WINAPI RemoveDirectoryW(LPCWSTR szPath)
{
    return KernelCall("RemoveDirectoryW", ERROR_ACCESS_DENIED, FALSE,
                      [&]
                      {
                          const auto path = RealPath(szPath);
                          RequireDone(rmdir(path.c_str()), path);
                      });
}
