#include <windows.h>

namespace
{
thread_local DWORD t_dwLastError = ERROR_SUCCESS;
}

DWORD WINAPI GetLastError()
{
    return t_dwLastError;
}

void WINAPI SetLastError(DWORD dwError)
{
    t_dwLastError = dwError;
}
