#include "host/Terminal.h"

#include <unistd.h>

bool IsTerminal(int nDescriptor)
{
    return isatty(nDescriptor) == 1;
}
