#include "tests/support/ProgramRun.h"

#include <cstdlib>
#include <sys/wait.h>

int tests::RunShellLine(const std::string& strLine)
{
    const int nStatus = std::system(strLine.c_str());
    return WIFEXITED(nStatus) ? WEXITSTATUS(nStatus) : -1;
}
