#include "host/CommandLine.h"

#include "host/Arguments.h"
#include "host/CommandEnd.h"
#include "host/Commands.h"
#include "host/FileArguments.h"
#include "host/HostError.h"
#include "host/Module.h"
#include "host/Refusals.h"
#include "host/Shown.h"

#include <algorithm>
#include <iostream>

namespace
{
constexpr const char* examples = "Examples:\n"
                                 "  korihost check office.xml profiles/\n"
                                 "  korihost show office.xml\n"
                                 "  korihost show profiles/\n"
                                 "  korihost select office.xml --cipher AES\n"
                                 "  korihost select office.xml --cipher TKIP -o changed.xml --trace trace.txt\n"
                                 "  korihost select office.xml --in-place --trace -\n"
                                 "  korihost select profiles/ --cipher AES --dry-run\n"
                                 "  korihost configure office.xml --service DIR --adapter GUID --set rapido=on -o out.xml\n"
                                 "  korihost page office.xml --service DIR --adapter GUID\n"
                                 "  korihost register --module korihvui.dll\n"
                                 "  korihost show office.xml --registered\n\n"
                                 "Exit codes: 0 done, 1 refused or invalid input, 2 wrong usage.";

int Refuse(const char* szReason)
{
    TellRefusal(szReason);
    return exitRefused;
}

// What the parser says of a wrong argument quotes it.
std::string UsageMessage(const CLI::App* pApp, const CLI::Error& error)
{
    return CLI::FailureMessage::simple(pApp, CLI::Error(error.get_name(), Shown(error.what()), error.get_exit_code()));
}

// The parser would only say that a command is missing, whatever stands in its place.
void RequireCommand(const CLI::App& app, const std::vector<std::string>& arguments)
{
    std::string strCommands;
    for (const CLI::App* pCommand : app.get_subcommands([](const CLI::App*) { return true; }))
    {
        if (!arguments.empty() && pCommand->check_name(arguments.front()))
            return;
        strCommands += (strCommands.empty() ? "" : ", ") + pCommand->get_name();
    }
    if (!arguments.empty() && app.get_option_no_throw(arguments.front()))
        return;
    throw CLI::ParseError(arguments.empty() ? "a command is missing; there are " + strCommands
                                            : "there is no command " + arguments.front() + "; there are " + strCommands,
                          exitUsage);
}

int Run(const CommandWork& work)
{
    try
    {
        const CComApartment apartment;
        work();
        return 0;
    }
    catch (const CommandEnd& end)
    {
        return end.nExitCode;
    }
    catch (const std::bad_alloc&)
    {
        return Refuse("out of memory");
    }
    catch (const std::exception& error)
    {
        return Refuse(error.what());
    }
}
} // namespace

int RunCommandLine(int nArguments, char** pszArguments, const char* szVersion)
{
    CLI::App app("Plays the platform's wireless-profile pages on a profile file, with the extension's help.", "korihost");
    CommandWork chosen;
    // A leading slash begins a path, on Windows too. Set first: the commands take it over as they are added.
    app.allow_windows_style_options(false);
    app.require_subcommand(1);
    app.failure_message(UsageMessage);
    app.footer(examples);
    app.set_version_flag("--version", std::string("korihost ") + szVersion);
    AddCheckCommand(app, chosen);
    AddShowCommand(app, chosen);
    AddSelectCommand(app, chosen);
    AddConfigureCommand(app, chosen);
    AddPageCommand(app, chosen);
    AddRegistrationCommands(app, chosen);
    AddTraceCommand(app, chosen);
    try
    {
        std::vector<std::string> arguments = ProgramArguments(nArguments, pszArguments);
        arguments.erase(arguments.begin());
        RequireCommand(app, arguments);
        std::reverse(arguments.begin(), arguments.end()); // the order in which the parser takes them
        app.parse(std::move(arguments));
    }
    catch (const CLI::ParseError& error)
    {
        return app.exit(error) == 0 ? 0 : exitUsage;
    }
    return Run(
        [&]
        {
            RequireSeparateFiles(*app.get_subcommands().front());
            chosen();
        });
}
