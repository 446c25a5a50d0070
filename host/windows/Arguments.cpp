#include "host/Arguments.h"

#include "values/Utf8Text.h"

#include <memory>
#include <shellapi.h>

// The arguments of main come narrowed to the code page, which loses names; the command line is asked instead.
std::vector<std::string> ProgramArguments(int argc, char** argv)
{
    int cArguments = 0;
    const std::unique_ptr<LPWSTR[], decltype(&LocalFree)> arguments(CommandLineToArgvW(GetCommandLineW(), &cArguments),
                                                                    &LocalFree);
    if (!arguments)
        return {argv, argv + argc};
    std::vector<std::string> utf8;
    for (int n = 0; n < cArguments; ++n)
        utf8.push_back(Utf8Of(CWideView(arguments[static_cast<std::size_t>(n)])));
    return utf8;
}
