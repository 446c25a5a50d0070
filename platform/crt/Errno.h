// The C run-time's view of system error codes.
#pragma once

#include <windows.h>

#include <cerrno>

namespace platform
{
// Sets errno to what the run-time makes of the code and the last error to the code itself.
inline void SetRuntimeError(DWORD dwError) noexcept
{
    SetLastError(dwError);
    switch (dwError)
    {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
        errno = ENOENT;
        break;
    case ERROR_ACCESS_DENIED:
        errno = EACCES;
        break;
    case ERROR_NOT_ENOUGH_MEMORY:
        errno = ENOMEM;
        break;
    case ERROR_NO_UNICODE_TRANSLATION:
        errno = EILSEQ;
        break;
    default:
        errno = EINVAL;
    }
}
} // namespace platform
