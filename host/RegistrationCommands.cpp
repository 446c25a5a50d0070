// korihost register, korihost unregister: the module's own entries in the registry.
#include "host/ComResults.h"
#include "host/Commands.h"
#include "host/HostError.h"
#include "host/OutputSplit.h"
#include "host/SessionArguments.h"
#include "host/Shown.h"

namespace
{
struct Registration
{
    const char* szCommand;
    const char* szDescription;
    const char* szExport;
    HRESULT (CLoadedModule::*pOperation)() const;
    const char* szDone;
    const char* szNotDone; // what a result other than success means
};
constexpr Registration registrations[] = {
    {"register", "Register the module on this machine (the native build: in the stand-in's registry)", "DllRegisterServer",
     &CLoadedModule::Register, ": registered\n",
     ": not registered: the registry could not be written; it takes an administrator"},
    {"unregister", "Remove the module's registration", "DllUnregisterServer", &CLoadedModule::Unregister, ": unregistered\n",
     ": not unregistered: it was not registered, or the registry could not be written"},
};

void Run(const Registration& registration, const std::string& strModule, const std::string& strTrace)
{
    COutputSplit output(strTrace);
    const CLoadedModule module(strModule);
    const HRESULT hr = (module.*registration.pOperation)();
    if (FAILED(hr))
        throw CHostError(module.Name() + ": " + registration.szExport + " answered " + ResultName(hr));
    // The exports tell a registry that refused with another success code.
    if (hr != S_OK)
        throw CHostError(module.Name() + registration.szNotDone);
    output.Write(Shown(module.Name()) + registration.szDone);
}
} // namespace

void AddRegistrationCommands(CLI::App& app, CommandWork& chosen)
{
    for (const Registration& registration : registrations)
    {
        const auto pOptions = std::make_shared<SessionOptions>();
        CLI::App* pCommand = app.add_subcommand(registration.szCommand, registration.szDescription);
        AddModuleArgument(*pCommand, pOptions->strModule);
        AddTraceArgument(*pCommand, pOptions->strTrace);
        pCommand->footer(std::string("Example:\n  korihost ") + registration.szCommand + " --module korihvui.dll");
        pCommand->callback(
            [pOptions, &registration, &chosen]
            { chosen = [pOptions, &registration] { Run(registration, pOptions->strModule, pOptions->strTrace); }; });
    }
}
