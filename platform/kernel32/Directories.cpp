#include "platform/kernel32/Environment.h"
#include "platform/kernel32/KernelCall.h"
#include "platform/kernel32/MachineError.h"
#include "platform/kernel32/PathCheck.h"
#include "platform/kernel32/Paths.h"
#include "platform/kernel32/TextResult.h"

#include <cerrno>

#include <sys/stat.h>
#include <unistd.h>

namespace platform
{
namespace
{
// A folder leaves room for a name of the old short form in it.
constexpr std::size_t cchFolderMax = MAX_PATH - 12;
} // namespace
} // namespace platform

using namespace platform;

DWORD WINAPI GetCurrentDirectoryW(DWORD cchBuffer, LPWSTR szBuffer)
{
    return KernelCall("GetCurrentDirectoryW", ERROR_ACCESS_DENIED, DWORD{0},
                      [&]
                      {
                          std::error_code error;
                          const auto current = std::filesystem::current_path(error);
                          if (error)
                              return FailWith(ErrorFromErrno(error.value()), DWORD{0});
                          return ReturnText(PlatformPath(current), szBuffer, cchBuffer);
                      });
}

BOOL WINAPI SetCurrentDirectoryW(LPCWSTR szPath)
{
    return KernelCall("SetCurrentDirectoryW", ERROR_FILE_NOT_FOUND, FALSE,
                      [&]
                      {
                          if (!szPath || std::u16string_view(szPath).find_first_not_of(u' ') == std::u16string_view::npos)
                              return FailWith(ERROR_INVALID_NAME, FALSE);
                          const auto path = CheckPath(szPath);
                          if (path.dwError != ERROR_SUCCESS)
                              return FailWith(path.dwError, FALSE);
                          if (chdir(path.hostPath.c_str()) == 0)
                              return TRUE;
                          const int nErrno = errno;
                          struct stat status = {};
                          // A file in the folder's place is told apart from one on the way to it.
                          const bool bIsFile = nErrno == ENOTDIR && stat(path.hostPath.c_str(), &status) == 0;
                          return FailWith(bIsFile ? ERROR_DIRECTORY : PathError(nErrno, path.hostPath), FALSE);
                      });
}

UINT WINAPI GetSystemDirectoryW(LPWSTR szBuffer, UINT cchBuffer)
{
    return KernelCall("GetSystemDirectoryW", ERROR_ACCESS_DENIED, UINT{0},
                      [&] { return ReturnText(u"C:\\windows\\system32", szBuffer, cchBuffer); });
}

DWORD WINAPI GetTempPathW(DWORD cchBuffer, LPWSTR szBuffer)
{
    return KernelCall("GetTempPathW", ERROR_ACCESS_DENIED, DWORD{0},
                      [&]
                      {
                          auto path = PlatformPath(EnvironmentText("TMPDIR").value_or("/tmp"));
                          if (!path.ends_with(u'\\'))
                              path += u'\\';
                          return ReturnText(path, szBuffer, cchBuffer);
                      });
}

BOOL WINAPI CreateDirectoryW(LPCWSTR szPath, LPSECURITY_ATTRIBUTES pAttributes)
{
    return KernelCall("CreateDirectoryW", ERROR_ACCESS_DENIED, FALSE,
                      [&]
                      {
                          if (pAttributes && pAttributes->lpSecurityDescriptor)
                              return FailWith(ERROR_NOT_SUPPORTED, FALSE);
                          const auto path = CheckPath(szPath, cchFolderMax, ERROR_FILENAME_EXCED_RANGE);
                          if (path.dwError != ERROR_SUCCESS)
                              return FailWith(path.dwError, FALSE);
                          if (mkdir(path.hostPath.c_str(), 0777) == 0)
                              return TRUE;
                          // Only a folder on the way can be missing here.
                          return FailWith(errno == ENOENT ? ERROR_PATH_NOT_FOUND : ErrorFromErrno(errno), FALSE);
                      });
}

BOOL WINAPI RemoveDirectoryW(LPCWSTR szPath)
{
    return KernelCall("RemoveDirectoryW", ERROR_ACCESS_DENIED, FALSE,
                      [&]
                      {
                          const auto path = CheckPath(szPath);
                          if (path.dwError != ERROR_SUCCESS)
                              return FailWith(path.dwError, FALSE);
                          if (rmdir(path.hostPath.c_str()) == 0)
                              return TRUE;
                          const int nErrno = errno;
                          struct stat status = {};
                          const bool bIsFile = nErrno == ENOTDIR && stat(path.hostPath.c_str(), &status) == 0;
                          return FailWith(bIsFile ? ERROR_DIRECTORY : PathError(nErrno, path.hostPath), FALSE);
                      });
}
