#include "tests/support/ProgramRun.h"

#include <cstdlib>

// The shell takes the outermost quotes away when the line begins with one.
int tests::RunShellLine(const std::string& strLine)
{
    return std::system(('"' + strLine + '"').c_str());
}
