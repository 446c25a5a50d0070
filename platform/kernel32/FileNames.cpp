#include "platform/kernel32/KernelCall.h"
#include "platform/kernel32/MachineError.h"
#include "platform/kernel32/OpenFiles.h"
#include "platform/kernel32/PathCheck.h"
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
bool HasNoWritePermission(const struct stat& status)
{
    return (status.st_mode & 0222) == 0;
}

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

// A missing source is told by its own path, anything missing with the source present lies on the way to the target.
DWORD MoveError(int nErrno, const std::filesystem::path& existing)
{
    struct stat status = {};
    if (nErrno == ENOENT && lstat(existing.c_str(), &status) == 0)
        return ERROR_PATH_NOT_FOUND;
    return PathError(nErrno, existing);
}

// A name of the same file, in another case or with a final separator: nothing moves, and the case becomes the new one.
DWORD Respell(const std::filesystem::path& existing, const CheckedPath& target)
{
    const auto written = HostPathOfFull(target.fullPath, NameCase::LastAsWritten);
    if (!written.has_filename() || written == existing)
        return ERROR_SUCCESS;
    return rename(existing.c_str(), written.c_str()) == 0 ? ERROR_SUCCESS : MoveError(errno, existing);
}

DWORD Move(LPCWSTR szExisting, LPCWSTR szNew, DWORD dwFlags)
{
    if ((dwFlags & ~MOVEFILE_REPLACE_EXISTING) != 0)
        return ERROR_INVALID_PARAMETER;
    const auto existing = CheckPath(szExisting);
    if (existing.dwError != ERROR_SUCCESS)
        return existing.dwError;
    struct stat status = {};
    if (lstat(existing.hostPath.c_str(), &status) != 0)
        return PathError(errno, existing.hostPath);
    if (IsHeldWithoutDeleteSharing(existing.hostPath))
        return ERROR_SHARING_VIOLATION;
    const auto target = CheckPath(szNew);
    if (target.dwError != ERROR_SUCCESS)
        return target.dwError;
    struct stat targetStatus = {};
    const bool bTargetExists = lstat(target.hostPath.c_str(), &targetStatus) == 0;
    if (bTargetExists && status.st_dev == targetStatus.st_dev && status.st_ino == targetStatus.st_ino)
        return Respell(existing.hostPath, target);
    if (!S_ISDIR(status.st_mode) && !target.hostPath.has_filename())
        return ERROR_INVALID_NAME;

    if ((dwFlags & MOVEFILE_REPLACE_EXISTING) == 0)
    {
        const int nErrno = RenameToFreeName(existing.hostPath, target.hostPath);
        return nErrno == 0 ? ERROR_SUCCESS : MoveError(nErrno, existing.hostPath);
    }
    if (bTargetExists && (S_ISDIR(targetStatus.st_mode) || S_ISDIR(status.st_mode) || HasNoWritePermission(targetStatus) ||
                          IsOpen(target.hostPath)))
        return ERROR_ACCESS_DENIED;
    return rename(existing.hostPath.c_str(), target.hostPath.c_str()) == 0 ? ERROR_SUCCESS : MoveError(errno, existing.hostPath);
}

BOOL MoveResult(DWORD dwError)
{
    return dwError == ERROR_SUCCESS ? TRUE : FailWith(dwError, FALSE);
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
                          if (S_ISDIR(status.st_mode) || HasNoWritePermission(status))
                              return FailWith(ERROR_ACCESS_DENIED, FALSE);
                          if (IsHeldWithoutDeleteSharing(path.hostPath))
                              return FailWith(ERROR_SHARING_VIOLATION, FALSE);
                          return unlink(path.hostPath.c_str()) == 0 ? TRUE : FailWith(PathError(errno, path.hostPath), FALSE);
                      });
}

BOOL WINAPI MoveFileW(LPCWSTR szExisting, LPCWSTR szNew)
{
    return KernelCall("MoveFileW", ERROR_ACCESS_DENIED, FALSE, [&] { return MoveResult(Move(szExisting, szNew, 0)); });
}

BOOL WINAPI MoveFileExW(LPCWSTR szExisting, LPCWSTR szNew, DWORD dwFlags)
{
    return KernelCall("MoveFileExW", ERROR_ACCESS_DENIED, FALSE, [&] { return MoveResult(Move(szExisting, szNew, dwFlags)); });
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
                          return HasNoWritePermission(status) ? FILE_ATTRIBUTE_READONLY : FILE_ATTRIBUTE_NORMAL;
                      });
}
