// korihost configure: works the extension's connection settings dialog.
#include "host/Commands.h"
#include "host/DialogPerson.h"
#include "host/Difference.h"
#include "host/Extension.h"
#include "host/HostError.h"
#include "host/ProfileOutput.h"
#include "host/ServiceArguments.h"
#include "host/SessionArguments.h"
#include "host/Shown.h"
#include "host/StoredProfile.h"
#include "host/Watchdog.h"
#include "profile/WlanProfileBands.h"
#include "resources/resource.h"

namespace
{
// Longer than the person at the dialog waits, who has more to tell.
constexpr auto longestRun = std::chrono::seconds(25);

struct ConfigureArguments
{
    TargetOptions target;
    OutputOptions output;
    std::vector<std::string> settings;
    ServiceOptions service;
    SessionOptions session;
};

// The connection settings as the dialog gives them back.
CWideString WorkDialog(CSession& session, const CProfile& profile, CConnectionContext& context,
                       const std::vector<WantedState>& states)
{
    const std::vector<CProperty> properties = Properties(session.Root(), propertyKindConnection);
    if (properties.empty())
        throw CHostError("the extension offers no connection property");
    // Found out now, before the dialog stores anything: is there a place for what comes back?
    const std::optional<CWideString> strRead = profile.VendorText(VendorPlace::Connectivity);
    Naming(profile.Title(),
           [&] { WithVendorText(profile.Text(), VendorPlace::Connectivity, strRead.value_or(OLESTR("<CCX/>"))); });

    CDialogPerson person(states);
    const std::optional<CWideString> strConfigured = properties.front().ShowDialog(nullptr, strRead, context);
    const PersonReport report = person.Finish();
    for (const std::string& strMessage : report.messages)
        session.Print("Message box: " + Shown(strMessage) + "\n");
    if (!report.strRefusal.empty())
        throw CHostError(report.strRefusal +
                         (strConfigured ? "; the profile is not changed" : "; cancelled, nothing is changed"));
    if (!strConfigured)
        throw CHostError("the dialog was cancelled");
    return *strConfigured;
}

struct BandControl
{
    int nControl;
    WlanProfileBands band;
};
constexpr BandControl bandControls[] = {{IDC_BAND_5_GHZ, bands5GHz}, {IDC_BAND_2_4_GHZ, bands24GHz}};

// The dialog ends as if all were well when the service does not take the bands: whoever asked for them is to know.
void RequireBands(const CStoredProfile& stored, const std::vector<WantedState>& states)
{
    WlanProfileBands bands = bandsNotRead;
    ReadProfileBands(stored.Text().c_str(), &bands);
    for (const WantedState& state : states)
        for (const BandControl& row : bandControls)
            if (row.nControl == state.nControl && ((bands & row.band) != 0) != (state.lWanted != 0))
            {
                // Changes nothing, and brings out what the service has against it.
                stored.Store();
                throw CHostError(stored.Title() + ": the WLAN service has not taken the bands");
            }
}

void Configure(const ConfigureArguments& arguments)
{
    // Nobody sits at this dialog: the stand-in is to keep the terminal as it is.
    SetEnvironmentVariableW(OLESTR("PLATFORM_DIALOGS"), OLESTR("none"));
    const CWatchdog watchdog(longestRun);
    const GUID adapter = *GuidOf(arguments.service.strAdapter);
    const std::vector<WantedState> states = ChoicesOf(arguments.settings);
    std::optional<CProfileFile> file;
    if (!arguments.target.strProfile.empty())
        file.emplace(PathOf(arguments.target.strProfile));
    const CWlanService service(arguments.service);
    service.Adapter(adapter);
    const CWideString strName = file ? NameInService(arguments.target, *file) : WideOf(arguments.target.strName);
    std::optional<CStoredProfile> before;
    if (!file || service.Profile(adapter, strName))
        before.emplace(service, adapter, strName);

    CSession session(arguments.session);
    if (!before)
        session.Print("The WLAN service has no profile " + Shown(Utf8Of(strName)) +
                      " on the adapter: the bands will not be stored.\n");
    CConnectionContext context(strName, adapter, before ? before->Flags() : 0);
    const CWideString strConfigured =
        WorkDialog(session, file ? static_cast<const CProfile&>(*file) : static_cast<const CProfile&>(*before), context, states);
    // The dialog has stored the bands meanwhile.
    std::optional<CStoredProfile> after;
    if (before)
    {
        after.emplace(service, adapter, strName);
        RequireBands(*after, states);
    }
    if (file)
    {
        CProfileFile changed = *file;
        changed.PutVendorText(VendorPlace::Connectivity, strConfigured);
        session.Print("The profile:\n" + WriteChanged(arguments.output, *file, changed) + (after ? "\n" : ""));
    }
    else
    {
        after->PutVendorText(VendorPlace::Connectivity, strConfigured);
        after->Store();
    }
    if (after)
        session.Print("The WLAN service's stored profile:\n" +
                      ChangeReport(before->Title(), before->Text(), after->Title(), after->Text()));
    session.Close();
}

void CheckUsage(const ConfigureArguments& arguments)
{
    if (arguments.target.strProfile.empty() && (arguments.output.bInPlace || !arguments.output.strFile.empty()))
        throw CLI::ValidationError("PROFILE",
                                   "-o and --in-place need a PROFILE file; a stored profile is changed where it is stored");
    try
    {
        ChoicesOf(arguments.settings);
    }
    catch (const std::invalid_argument& error)
    {
        throw CLI::ValidationError("--set", error.what());
    }
}
} // namespace

void AddConfigureCommand(CLI::App& app, CommandWork& chosen)
{
    const auto pArguments = std::make_shared<ConfigureArguments>();
    CLI::App* pCommand = app.add_subcommand("configure", "Work the extension's connection settings dialog");
    AddServiceArguments(*pCommand, pArguments->service)->required();
    AddTargetArguments(*pCommand, pArguments->target, "changed");
    // Each stands for itself, also when its value has commas or blanks.
    pCommand->add_option("--set", pArguments->settings, "A setting to make in the dialog; may be given several times")
        ->type_name("NAME=VALUE")
        ->allow_extra_args(false);
    AddOutputArguments(*pCommand, pArguments->output);
    AddSessionArguments(*pCommand, pArguments->session);
    pCommand->footer("Settings:\n" + ChoicesHelp() +
                     "\nWithout -o and --in-place the changes of PROFILE are shown and written nowhere. The bands are the\n"
                     "WLAN service's: the dialog stores them there, whatever becomes of PROFILE.");
    pCommand->callback(
        [pArguments, &chosen]
        {
            CheckUsage(*pArguments);
            chosen = [pArguments] { Configure(*pArguments); };
        });
}
