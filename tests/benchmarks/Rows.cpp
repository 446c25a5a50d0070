#include "tests/benchmarks/Rows.h"

#include "host/Library.h"
#include "tests/support/TestFolder.h"

#include <objbase.h>

#include <cstdio>
#include <stdexcept>

namespace bench
{
void Require(bool bHolds, const char* szWhat)
{
    if (!bHolds)
        throw std::runtime_error(szWhat);
}

int RunRows(int nArguments, char** pszArguments, Which which, const std::function<void(const Row&, const Sides&)>& run)
try
{
    const std::string strArgument = nArguments > 1 ? pszArguments[1] : "";
    if (strArgument == szWriterOption)
        return WriteAsChild(pszArguments + 2);
    // Both are the stand-in's; the real platform does not look at them.
    const tests::CTestFolder stateFolder;
    SetEnvironmentVariableW(OLESTR("PLATFORM_ROOT"), stateFolder.PlatformName().c_str());
    SetEnvironmentVariableW(OLESTR("PLATFORM_DIALOGS"), OLESTR("none"));
    // Before the module, which else would find the system's own service.
    const auto service = std::filesystem::path(SAMPLES_FOLDER) / "service" / "no-adapter";
    SetEnvironmentVariableW(OLESTR("WLAN_SERVICE_DIR"), tests::PlatformNameOf(service).c_str());
    const CUniqueLibrary simulated(LoadLibraryW(BesideProgram(OLESTR("simulated\\wlanapi.dll")).c_str()));
    Require(static_cast<bool>(simulated), "there is no simulated service");
    // In the apartment that the module asks for, for the life of the process.
    CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    // Loading comes first: what an activation has loaded stays.
    for (const auto& rows : {ModuleRows(), ProfileRows(), LogRows()})
        for (const auto& row : rows)
        {
            if (row.strName.find(strArgument) == std::string::npos || (which == Which::Counted && !row.bCounted))
                continue;
            const Sides sides = row.make();
            run(row, sides);
            sides.check();
            // The next row's echo goes over this one's.
            std::rewind(stdout);
        }
    return 0;
}
catch (const std::exception& exception)
{
    std::fprintf(stderr, "bench: %s\n", exception.what());
    return 1;
}
} // namespace bench
