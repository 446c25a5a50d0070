// korihost configure: works the extension's connection settings dialog.
#include "host/ChangeReport.h"
#include "host/Commands.h"
#include "host/DialogPerson.h"
#include "host/Extension.h"
#include "host/HostError.h"
#include "host/ProfileFile.h"
#include "host/SafeFile.h"
#include "host/ServiceArguments.h"
#include "host/SessionArguments.h"
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
    std::string strProfile;
    std::string strName;
    std::string strOutput;
    bool bInPlace = false;
    std::vector<std::string> settings;
    ServiceOptions service;
    SessionOptions session;
};

// The connection settings as the dialog gives them back.
CWideString Configure(CSession& session, const CProfile& profile, CConnectionContext& context,
                      const std::vector<WantedState>& states)
{
    const std::vector<CProperty> properties = Properties(session.Root(), propertyKindConnection);
    if (properties.empty())
        throw CHostError("the extension offers no connection property");
    // Found out now, before the dialog stores anything: is there a place for what comes back?
    const std::optional<CWideString> strRead = profile.VendorText(VendorPlace::Connectivity);
    CProfile(profile).PutVendorText(VendorPlace::Connectivity, strRead ? CWideView(*strRead) : CWideView(OLESTR("<CCX/>")));

    CDialogPerson person(states);
    const std::optional<CWideString> strConfigured = properties.front().ShowDialog(nullptr, strRead, context);
    const PersonReport report = person.Finish();
    for (const std::string& strMessage : report.messages)
        session.Print("Message box: " + strMessage + "\n");
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

void ConfigureFile(const ConfigureArguments& arguments, const GUID& adapter, const std::vector<WantedState>& states)
{
    const std::filesystem::path file = PathOf(arguments.strProfile);
    const std::filesystem::path output = PathOf(arguments.strOutput);
    const CProfileFile profile(file);
    if (!arguments.strOutput.empty() && IsSameFile(file, output))
        throw CHostError(arguments.strOutput + ": is the profile itself; use --in-place to change it");
    const CWlanService service(arguments.service);
    service.Adapter(adapter);

    CSession session(arguments.session, {file, output});
    const CWideString strName = arguments.strName.empty() ? profile.ProfileName() : WideOf(arguments.strName);
    const std::optional<StoredText> before = service.Profile(adapter, strName);
    if (!before)
        session.Print("The WLAN service has no profile " + Utf8Of(strName) + " on the adapter: the bands will not be stored.\n");
    CConnectionContext context(strName, adapter, before ? before->dwFlags : 0);
    CProfileFile changed = profile;
    changed.PutVendorText(VendorPlace::Connectivity, Configure(session, profile, context, states));
    std::optional<CStoredProfile> after;
    if (before)
    {
        after.emplace(service, adapter, strName);
        RequireBands(*after, states);
    }
    if (!arguments.strOutput.empty())
        WriteSafely(output, changed.Bytes());
    else if (arguments.bInPlace && profile.Text() != changed.Text())
        WriteSafely(file, changed.Bytes());

    const std::string strTarget = arguments.strOutput.empty() ? profile.Title() : arguments.strOutput;
    session.Print("The profile:\n" + ChangeReport(profile.Title(), profile.Text(), strTarget, changed.Text()));
    if (after)
        session.Print("\nThe WLAN service's stored profile:\n" +
                      ChangeReport(after->Title(), before->strText, after->Title(), after->Text()));
    session.Close();
}

void ConfigureStored(const ConfigureArguments& arguments, const GUID& adapter, const std::vector<WantedState>& states)
{
    const CWlanService service(arguments.service);
    service.Adapter(adapter);
    const CWideString strName = WideOf(arguments.strName);
    const CStoredProfile profile(service, adapter, strName);

    CSession session(arguments.session, {});
    CConnectionContext context(strName, adapter, profile.Flags());
    const CWideString strConfigured = Configure(session, profile, context, states);
    // The dialog has stored the bands meanwhile.
    CStoredProfile changed(service, adapter, strName);
    RequireBands(changed, states);
    changed.PutVendorText(VendorPlace::Connectivity, strConfigured);
    changed.Store();
    session.Print("The WLAN service's stored profile:\n" +
                  ChangeReport(profile.Title(), profile.Text(), profile.Title(), changed.Text()));
    session.Close();
}

void Configure(const ConfigureArguments& arguments)
{
    // Nobody sits at this dialog: the stand-in is to keep the terminal as it is.
    SetEnvironmentVariableW(OLESTR("PLATFORM_DIALOGS"), OLESTR("none"));
    const CWatchdog watchdog(longestRun);
    const GUID adapter = *GuidOf(arguments.service.strAdapter);
    const std::vector<WantedState> states = ChoicesOf(arguments.settings);
    if (arguments.strProfile.empty())
        ConfigureStored(arguments, adapter, states);
    else
        ConfigureFile(arguments, adapter, states);
}

void CheckUsage(const ConfigureArguments& arguments)
{
    if (arguments.strProfile.empty() && arguments.strName.empty())
        throw CLI::ValidationError("PROFILE", "a profile file, or the --name of a stored profile, is needed");
    if (arguments.strProfile.empty() && (arguments.bInPlace || !arguments.strOutput.empty()))
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
    pCommand
        ->add_option("PROFILE", pArguments->strProfile,
                     "The profile, as the platform exports it; without it the stored profile --name is changed")
        ->type_name("");
    AddServiceArguments(*pCommand, pArguments->service)->required();
    AddStoredNameArgument(*pCommand, pArguments->strName);
    // Each stands for itself, also when its value has commas or blanks.
    pCommand->add_option("--set", pArguments->settings, "A setting to make in the dialog; may be given several times")
        ->type_name("NAME=VALUE")
        ->allow_extra_args(false);
    CLI::Option* pOutput =
        pCommand->add_option("-o,--output", pArguments->strOutput, "Where the changed profile goes")->type_name("FILE");
    pCommand->add_flag("--in-place", pArguments->bInPlace, "Change the profile itself")->excludes(pOutput);
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
