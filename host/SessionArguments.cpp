#include "host/SessionArguments.h"

#include "host/FileArguments.h"

void AddModuleArgument(CLI::App& command, std::string& strModule)
{
    command
        .add_option("--module", strModule,
                    "The module to load (default: korihvui.dll beside this program, or in\nthe system folder)")
        ->type_name("FILE");
}

void AddTraceArgument(CLI::App& command, std::string& strTrace)
{
    command
        .add_option("--trace", strTrace,
                    std::string("Where the module's trace lines go: -, which is standard output, or ") + writtenFileRule)
        ->type_name("FILE|-");
}

void AddSessionArguments(CLI::App& command, SessionOptions& options)
{
    AddModuleArgument(command, options.strModule);
    command.add_flag("--registered", options.bRegistered, "Activate the registered module instead of loading a file")
        ->excludes("--module");
    AddTraceArgument(command, options.strTrace);
}
