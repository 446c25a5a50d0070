#include "host/Terminal.h"

#include <windows.h>

#include <io.h>

bool IsTerminal(int nDescriptor)
{
    const auto hConsole = reinterpret_cast<HANDLE>(_get_osfhandle(nDescriptor));
    DWORD dwMode = 0;
    return GetConsoleMode(hConsole, &dwMode) && SetConsoleMode(hConsole, dwMode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
}
