#include "host/ProfileOutput.h"

#include "host/Difference.h"
#include "host/FileArguments.h"
#include "host/HostError.h"
#include "host/SafeFile.h"

void AddOutputArguments(CLI::App& command, OutputOptions& options)
{
    CLI::Option* pOutput =
        command.add_option("-o,--output", options.strFile, std::string("Where the changed profile goes: ") + writtenFileRule)
            ->type_name("FILE");
    command.add_flag("--in-place", options.bInPlace, "Change the profile itself")->excludes(pOutput);
}

std::string WriteChanged(const OutputOptions& options, const CProfileFile& profile, const CProfileFile& changed)
{
    if (!options.strFile.empty())
        WriteSafely(PathOf(options.strFile), changed.Bytes());
    else if (options.bInPlace && profile.Text() != changed.Text())
        changed.Store();
    return ChangeReport(profile.Title(), profile.Text(), options.strFile.empty() ? profile.Title() : options.strFile,
                        changed.Text());
}
