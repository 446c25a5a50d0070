#include "platform/kernel32/MachineError.h"

#include "platform/kernel32/Failure.h"

#include <algorithm>
#include <array>
#include <cerrno>

namespace platform
{
namespace
{
struct ErrorPair
{
    int nErrno;
    DWORD dwError;
};

constexpr std::array errorPairs{
    ErrorPair{ENOENT, ERROR_FILE_NOT_FOUND},      ErrorPair{ENOTDIR, ERROR_PATH_NOT_FOUND},
    ErrorPair{ELOOP, ERROR_PATH_NOT_FOUND},       ErrorPair{EMFILE, ERROR_TOO_MANY_OPEN_FILES},
    ErrorPair{ENFILE, ERROR_TOO_MANY_OPEN_FILES}, ErrorPair{EACCES, ERROR_ACCESS_DENIED},
    ErrorPair{EPERM, ERROR_ACCESS_DENIED},        ErrorPair{EROFS, ERROR_ACCESS_DENIED},
    ErrorPair{EISDIR, ERROR_ACCESS_DENIED},       ErrorPair{ETXTBSY, ERROR_SHARING_VIOLATION},
    ErrorPair{EBUSY, ERROR_SHARING_VIOLATION},    ErrorPair{EBADF, ERROR_INVALID_HANDLE},
    ErrorPair{ENOMEM, ERROR_NOT_ENOUGH_MEMORY},   ErrorPair{EXDEV, ERROR_NOT_SAME_DEVICE},
    ErrorPair{EAGAIN, ERROR_LOCK_VIOLATION},      ErrorPair{EEXIST, ERROR_ALREADY_EXISTS},
    ErrorPair{ENOTEMPTY, ERROR_DIR_NOT_EMPTY},    ErrorPair{ENOSPC, ERROR_DISK_FULL},
    ErrorPair{EDQUOT, ERROR_DISK_FULL},           ErrorPair{EFBIG, ERROR_DISK_FULL},
    ErrorPair{EINVAL, ERROR_INVALID_PARAMETER},   ErrorPair{ENAMETOOLONG, ERROR_FILENAME_EXCED_RANGE},
};
} // namespace

DWORD ErrorFromErrno(int nErrno) noexcept
{
    const auto found = std::ranges::find(errorPairs, nErrno, &ErrorPair::nErrno);
    return found == errorPairs.end() ? ERROR_GEN_FAILURE : found->dwError;
}

void RequireDone(int nResult)
{
    if (nResult < 0)
        throw Failure{ErrorFromErrno(errno)};
}

void RequireDone(int nResult, const std::filesystem::path& realPath)
{
    if (nResult >= 0 || errno != ENOENT)
        return RequireDone(nResult);
    // A final separator belongs to the last component.
    const auto folder = realPath.has_filename() ? realPath.parent_path() : realPath.parent_path().parent_path();
    std::error_code ignored;
    throw Failure{std::filesystem::is_directory(folder, ignored) ? ERROR_FILE_NOT_FOUND : ERROR_PATH_NOT_FOUND};
}
} // namespace platform
