#include "host/ServiceArguments.h"

#include "host/FileArguments.h"

namespace
{
std::string CheckGuid(const std::string& strText)
{
    return GuidOf(strText) ? std::string() : strText + " is not a GUID";
}
} // namespace

CLI::Option* AddServiceArguments(CLI::App& command, ServiceOptions& options)
{
    CLI::Option* pFolder = command
                               .add_option("--service", options.strFolder,
                                           "The folder of a simulated WLAN service (default: the machine's own service)")
                               ->type_name("DIR");
    command
        .add_option("--service-log", options.strLog,
                    std::string("Where the simulated service logs its calls, behind what is there: ") + writtenFileRule)
        ->needs(pFolder)
        ->type_name("FILE");
    return command.add_option("--adapter", options.strAdapter, "The wireless adapter")
        ->check(CLI::Validator(CheckGuid, "", "GUID"))
        ->type_name("GUID");
}

void AddStoredNameArgument(CLI::App& command, std::string& strName)
{
    command.add_option("--name", strName, "The profile's name in the WLAN service (default: the name in the file)")
        ->type_name("NAME");
}

void AddTargetArguments(CLI::App& command, TargetOptions& options, const std::string& strWhatHappens)
{
    command
        .add_option("PROFILE", options.strProfile,
                    "The profile, as the platform exports it; without it the stored profile --name is " + strWhatHappens)
        ->type_name("");
    AddStoredNameArgument(command, options.strName);
    command.parse_complete_callback(
        [&options]
        {
            if (options.strProfile.empty() && options.strName.empty())
                throw CLI::ValidationError("PROFILE", "a profile file, or the --name of a stored profile, is needed");
        });
}

CWideString NameInService(const TargetOptions& options, const CProfile& profile)
{
    return NameInService(options.strName, profile);
}

CWideString NameInService(const std::string& strName, const CProfile& profile)
{
    return strName.empty() ? profile.ProfileName() : WideOf(strName);
}
