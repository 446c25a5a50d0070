#include "platform/kernel32/KernelCall.h"
#include "platform/kernel32/MachineError.h"
#include "platform/kernel32/OpenFiles.h"
#include "platform/kernel32/Paths.h"

#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform
{
namespace
{
// Renames only when the target's name is free. Not every file system has that as one step.
int RenameToFreeName(const std::filesystem::path& existing, const std::filesystem::path& target)
{
    if (renameat2(AT_FDCWD, existing.c_str(), AT_FDCWD, target.c_str(), RENAME_NOREPLACE) == 0)
        return 0;
    if (errno != EINVAL && errno != ENOSYS)
        return errno;
    struct stat status = {};
    if (lstat(target.c_str(), &status) == 0)
        return EEXIST;
    return rename(existing.c_str(), target.c_str()) == 0 ? 0 : errno;
}

BOOL Move(LPCWSTR szExisting, LPCWSTR szNew, bool bReplace)
{
    const auto existing = CheckPath(szExisting);
    const auto target = CheckPath(szNew);
    for (const auto& path : {existing, target})
    {
        if (path.dwError != ERROR_SUCCESS)
            return FailWith(path.dwError, FALSE);
    }
    struct stat status = {};
    if (lstat(existing.hostPath.c_str(), &status) != 0)
        return FailWith(PathError(errno, existing.hostPath), FALSE);
    if (IsNameHeld(status))
        return FailWith(ERROR_SHARING_VIOLATION, FALSE);
    struct stat targetStatus = {};
    if (bReplace && lstat(target.hostPath.c_str(), &targetStatus) == 0 &&
        (S_ISDIR(targetStatus.st_mode) || S_ISDIR(status.st_mode) || IsReadOnly(targetStatus) || IsNameHeld(targetStatus)))
        return FailWith(ERROR_ACCESS_DENIED, FALSE);
    const int nErrno = !bReplace ? RenameToFreeName(existing.hostPath, target.hostPath)
                       : rename(existing.hostPath.c_str(), target.hostPath.c_str()) != 0 ? errno
                                                                                         : 0;
    // The source is there: what is missing lies on the way to the target.
    return nErrno == 0 ? TRUE : FailWith(nErrno == ENOENT ? ERROR_PATH_NOT_FOUND : ErrorFromErrno(nErrno), FALSE);
}
} // namespace
} // namespace platform

using namespace platform;

BOOL WINAPI DeleteFileW(LPCWSTR szFileName)
{
    return KernelCall("DeleteFileW", ERROR_ACCESS_DENIED, FALSE,
                      [&]
                      {
                          const auto path = CheckPath(szFileName);
                          if (path.dwError != ERROR_SUCCESS)
                              return FailWith(path.dwError, FALSE);
                          struct stat status = {};
                          if (lstat(path.hostPath.c_str(), &status) != 0)
                              return FailWith(PathError(errno, path.hostPath), FALSE);
                          if (S_ISDIR(status.st_mode) || IsReadOnly(status))
                              return FailWith(ERROR_ACCESS_DENIED, FALSE);
                          if (IsNameHeld(status))
                              return FailWith(ERROR_SHARING_VIOLATION, FALSE);
                          return unlink(path.hostPath.c_str()) == 0 ? TRUE : FailWith(PathError(errno, path.hostPath), FALSE);
                      });
}

BOOL WINAPI MoveFileW(LPCWSTR szExisting, LPCWSTR szNew)
{
    return KernelCall("MoveFileW", ERROR_ACCESS_DENIED, FALSE, [&] { return Move(szExisting, szNew, false); });
}

BOOL WINAPI MoveFileExW(LPCWSTR szExisting, LPCWSTR szNew, DWORD dwFlags)
{
    return KernelCall("MoveFileExW", ERROR_ACCESS_DENIED, FALSE,
                      [&]
                      {
                          if (dwFlags != MOVEFILE_REPLACE_EXISTING)
                              return FailWith(ERROR_INVALID_PARAMETER, FALSE);
                          return Move(szExisting, szNew, true);
                      });
}

DWORD WINAPI GetFileAttributesW(LPCWSTR szFileName)
{
    return KernelCall("GetFileAttributesW", ERROR_ACCESS_DENIED, INVALID_FILE_ATTRIBUTES,
                      [&]
                      {
                          const auto path = CheckPath(szFileName);
                          if (path.dwError != ERROR_SUCCESS)
                              return FailWith(path.dwError, INVALID_FILE_ATTRIBUTES);
                          struct stat status = {};
                          if (stat(path.hostPath.c_str(), &status) != 0)
                              return FailWith(PathError(errno, path.hostPath), INVALID_FILE_ATTRIBUTES);
                          if (S_ISDIR(status.st_mode))
                              return FILE_ATTRIBUTE_DIRECTORY;
                          return IsReadOnly(status) ? FILE_ATTRIBUTE_READONLY : FILE_ATTRIBUTE_NORMAL;
                      });
}
