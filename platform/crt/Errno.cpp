#include "platform/crt/Errno.h"

#include <algorithm>
#include <array>
#include <cerrno>

namespace platform
{
namespace
{
struct RuntimeError
{
    DWORD dwError;
    int nErrno;
};

constexpr std::array runtimeErrors{
    RuntimeError{ERROR_FILE_NOT_FOUND, ENOENT},
    RuntimeError{ERROR_PATH_NOT_FOUND, ENOENT},
    RuntimeError{ERROR_FILENAME_EXCED_RANGE, ENOENT},
    RuntimeError{ERROR_BAD_PATHNAME, ENOENT},
    RuntimeError{ERROR_ACCESS_DENIED, EACCES},
    RuntimeError{ERROR_SHARING_VIOLATION, EACCES},
    RuntimeError{ERROR_LOCK_VIOLATION, EACCES},
    RuntimeError{ERROR_FILE_EXISTS, EEXIST},
    RuntimeError{ERROR_ALREADY_EXISTS, EEXIST},
    RuntimeError{ERROR_TOO_MANY_OPEN_FILES, EMFILE},
    RuntimeError{ERROR_DISK_FULL, ENOSPC},
    RuntimeError{ERROR_NOT_ENOUGH_MEMORY, ENOMEM},
    RuntimeError{ERROR_OUTOFMEMORY, ENOMEM},
    RuntimeError{ERROR_INVALID_HANDLE, EBADF},
    RuntimeError{ERROR_NO_UNICODE_TRANSLATION, EILSEQ},
};
} // namespace

void SetRuntimeError(DWORD dwError) noexcept
{
    const auto found = std::ranges::find(runtimeErrors, dwError, &RuntimeError::dwError);
    SetLastError(dwError);
    errno = found == runtimeErrors.end() ? EINVAL : found->nErrno;
}
} // namespace platform
