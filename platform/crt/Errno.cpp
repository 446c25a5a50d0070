#include "platform/crt/Errno.h"

#include <cerrno>

namespace platform
{
void SetRuntimeError(DWORD dwError) noexcept
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
