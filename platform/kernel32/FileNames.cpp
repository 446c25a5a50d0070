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
int RenameToFreeName(const char* szExisting, const char* szTarget)
{
    const int nResult = renameat2(AT_FDCWD, szExisting, AT_FDCWD, szTarget, RENAME_NOREPLACE);
    if (nResult == 0 || (errno != EINVAL && errno != ENOSYS))
        return nResult;
    struct stat status = {};
    Require(lstat(szTarget, &status) != 0, ERROR_ALREADY_EXISTS);
    return rename(szExisting, szTarget);
}

void Move(LPCWSTR szExisting, LPCWSTR szNew, bool bReplace)
{
    const auto existing = RealPath(szExisting);
    const auto target = RealPath(szNew);
    struct stat status = {};
    RequireDone(lstat(existing.c_str(), &status), existing);
    Require(!IsNameHeld(status), ERROR_SHARING_VIOLATION);
    struct stat targetStatus = {};
    if (bReplace && lstat(target.c_str(), &targetStatus) == 0)
        Require(!S_ISDIR(targetStatus.st_mode) && !S_ISDIR(status.st_mode) && !IsReadOnly(targetStatus) &&
                    !IsNameHeld(targetStatus),
                ERROR_ACCESS_DENIED);
    const int nResult = bReplace ? rename(existing.c_str(), target.c_str()) : RenameToFreeName(existing.c_str(), target.c_str());
    // The source is there: what is missing lies on the way to the target.
    Require(nResult == 0 || errno != ENOENT, ERROR_PATH_NOT_FOUND);
    RequireDone(nResult);
}
} // namespace
} // namespace platform

using namespace platform;

BOOL WINAPI DeleteFileW(LPCWSTR szFileName)
{
    return KernelCall("DeleteFileW", ERROR_ACCESS_DENIED, FALSE,
                      [&]
                      {
                          const auto path = RealPath(szFileName);
                          struct stat status = {};
                          RequireDone(lstat(path.c_str(), &status), path);
                          Require(!S_ISDIR(status.st_mode) && !IsReadOnly(status), ERROR_ACCESS_DENIED);
                          Require(!IsNameHeld(status), ERROR_SHARING_VIOLATION);
                          RequireDone(unlink(path.c_str()), path);
                      });
}

BOOL WINAPI MoveFileW(LPCWSTR szExisting, LPCWSTR szNew)
{
    return KernelCall("MoveFileW", ERROR_ACCESS_DENIED, FALSE, [&] { Move(szExisting, szNew, false); });
}

BOOL WINAPI MoveFileExW(LPCWSTR szExisting, LPCWSTR szNew, DWORD dwFlags)
{
    return KernelCall("MoveFileExW", ERROR_ACCESS_DENIED, FALSE,
                      [&]
                      {
                          Require(dwFlags == MOVEFILE_REPLACE_EXISTING, ERROR_INVALID_PARAMETER);
                          Move(szExisting, szNew, true);
                      });
}

DWORD WINAPI GetFileAttributesW(LPCWSTR szFileName)
{
    return KernelCall("GetFileAttributesW", ERROR_ACCESS_DENIED, INVALID_FILE_ATTRIBUTES,
                      [&]
                      {
                          const auto path = RealPath(szFileName);
                          struct stat status = {};
                          RequireDone(stat(path.c_str(), &status), path);
                          if (S_ISDIR(status.st_mode))
                              return FILE_ATTRIBUTE_DIRECTORY;
                          return IsReadOnly(status) ? FILE_ATTRIBUTE_READONLY : FILE_ATTRIBUTE_NORMAL;
                      });
}
