// korihost configure: works the extension's connection settings dialog.
#include "host/Commands.h"
#include "host/DialogPerson.h"
#include "host/Difference.h"
#include "host/Extension.h"
#include "host/HostError.h"
#include "host/InvalidParts.h"
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
    std::vector<std::string> paths; // without any the stored profile of the name is meant
    std::string strName;
    OutputOptions output;
    std::vector<std::string> settings;
    ServiceOptions service;
    SessionOptions session;
};

// The connection settings as the dialog gives them back.
CWideString WorkDialog(CSession& session, CProfileOutput& output, const CProfile& profile, CConnectionContext& context,
                       const std::vector<WantedState>& states)
{
    const std::vector<CProperty> properties = Properties(session.Root(), propertyKindConnection);
    if (properties.empty())
        throw CHostError("the extension offers no connection property");
    // Found out now, before the dialog stores anything: is there a place for what comes back?
    const std::optional<CWideString> strRead = profile.VendorText(VendorPlace::Connectivity);
    WithVendorText(profile.Text(), VendorPlace::Connectivity, strRead.value_or(OLESTR("<CCX/>")));

    CDialogPerson person(states);
    const std::optional<CWideString> strConfigured = properties.front().ShowDialog(nullptr, strRead, context);
    const PersonReport report = person.Finish();
    for (const std::string& strMessage : report.messages)
        output.Print("Message box: " + Shown(strMessage) + "\n");
    if (!report.strRefusal.empty())
        throw CHostError(report.strRefusal + "; nothing is changed");
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

// The machine's side of a profile: the dialog stores the bands there as soon as it is confirmed.
class CStoredSide
{
public:
    // Throws CHostError when there has to be a stored profile of the name, and is none.
    CStoredSide(const CWlanService& service, const GUID& adapter, CWideString strName, bool bNeeded)
        : m_service(service), m_adapter(adapter), m_strName(std::move(strName))
    {
        if (bNeeded || service.Profile(adapter, m_strName))
            m_before.emplace(Now());
    }

    // Null when there is none.
    const CStoredProfile* Before() const
    {
        return m_before ? &*m_before : nullptr;
    }
    CStoredProfile Now() const
    {
        return CStoredProfile(m_service, m_adapter, m_strName);
    }
    CConnectionContext Context() const
    {
        return CConnectionContext(m_strName, m_adapter, m_before ? m_before->Flags() : 0);
    }
    void PutBack() const
    {
        if (m_before && Now().Text() != m_before->Text())
            m_before->Store();
    }

private:
    const CWlanService& m_service;
    GUID m_adapter;
    CWideString m_strName;
    std::optional<CStoredProfile> m_before;
};

// Works the dialog on the file's profile or, without one, on the stored one.
void ConfigureOne(CSession& session, CProfileOutput& output, const CStoredSide& stored, const CProfileFile* pFile,
                  const std::vector<WantedState>& states, bool bDryRun)
{
    const CStoredProfile* const pBefore = stored.Before();
    const CProfile& profile = pFile ? static_cast<const CProfile&>(*pFile) : *pBefore;
    CConnectionContext context = stored.Context();
    const CWideString strConfigured =
        Naming(profile.Title(), [&] { return WorkDialog(session, output, profile, context, states); });
    // The dialog has stored the bands meanwhile.
    std::optional<CStoredProfile> after;
    if (pBefore)
    {
        after.emplace(stored.Now());
        RequireBands(*after, states);
    }
    if (pFile)
    {
        CProfileFile changed = *pFile;
        changed.PutVendorText(VendorPlace::Connectivity, strConfigured);
        output.Write(*pFile, changed, "The profile:\n");
        output.Print(after ? "\n" : "");
    }
    else
    {
        after->PutVendorText(VendorPlace::Connectivity, strConfigured);
        if (!bDryRun)
            after->Store();
        output.Print(InvalidPartsAfter(session.Root(), *pBefore, *after));
    }
    if (after)
        output.Print("The WLAN service's stored profile:\n" +
                     ChangeReport(pBefore->Title(), pBefore->Text(), after->Title(), after->Text()));
}

// All of it, or nothing: bands that are stored already go back when the rest cannot follow.
void ConfigureWhole(CSession& session, CProfileOutput& output, const CStoredSide& stored, const CProfileFile* pFile,
                    const std::vector<WantedState>& states, bool bDryRun)
{
    try
    {
        ConfigureOne(session, output, stored, pFile, states, bDryRun);
    }
    catch (...)
    {
        stored.PutBack();
        throw;
    }
    if (bDryRun)
        stored.PutBack();
}

void Configure(const ConfigureArguments& arguments)
{
    // Nobody sits at this dialog: the stand-in is to keep the terminal as it is.
    SetEnvironmentVariableW(OLESTR("PLATFORM_DIALOGS"), OLESTR("none"));
    std::optional<CWatchdog> watchdog(longestRun);
    const GUID adapter = *GuidOf(arguments.service.strAdapter);
    const std::vector<WantedState> states = ChoicesOf(arguments.settings);
    const CWlanService service(arguments.service);
    service.Adapter(adapter);
    CSession session(arguments.session);
    CProfileOutput output(session, arguments.output);
    if (arguments.paths.empty())
    {
        const CStoredSide stored(service, adapter, WideOf(arguments.strName), true);
        output.Print(InvalidPartsBefore(*stored.Before()));
        ConfigureWhole(session, output, stored, nullptr, states, arguments.output.bDryRun);
        return session.Close();
    }
    output.ForEach(arguments.paths,
                   [&](const CProfileFile& profile)
                   {
                       watchdog.emplace(longestRun); // for each anew
                       const CStoredSide stored(service, adapter, NameInService(arguments.strName, profile), false);
                       if (!stored.Before())
                           output.Print(Shown(profile.Title()) +
                                        ": the WLAN service has no profile of the name on the adapter: the bands will not be "
                                        "stored.\n");
                       ConfigureWhole(session, output, stored, &profile, states, arguments.output.bDryRun);
                   });
}

void CheckUsage(const ConfigureArguments& arguments)
{
    if (!arguments.paths.empty())
    {
        if (!AreOneFile(arguments.paths) && !arguments.strName.empty())
            throw CLI::ValidationError("--name", "is the name of one profile");
        CheckOutputUsage(arguments.output, arguments.paths);
        FilesOf(arguments.paths);
    }
    else if (arguments.strName.empty())
        throw CLI::ValidationError("PATH", "a profile file, or the --name of a stored profile, is needed");
    else if (arguments.output.bInPlace || !arguments.output.strFile.empty())
        throw CLI::ValidationError("PATH", "-o and --in-place need a file; a stored profile is changed where it is stored");
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
    AddPathArguments(*pCommand, pArguments->paths);
    AddStoredNameArgument(*pCommand, pArguments->strName);
    // Each stands for itself, also when its value has commas or blanks.
    pCommand->add_option("--set", pArguments->settings, "A setting to make in the dialog; may be given several times")
        ->type_name("NAME=VALUE")
        ->allow_extra_args(false);
    AddOutputArguments(*pCommand, pArguments->output);
    AddSessionArguments(*pCommand, pArguments->session);
    pCommand->footer("Settings:\n" + ChoicesHelp() +
                     "\nWithout PATH the stored profile --name is changed. Without -o and --in-place the changes of a file are\n"
                     "shown and written nowhere. The bands are the WLAN service's: the dialog stores them there. Of several\n"
                     "profiles each is changed or left as it is; what is refused of one stops no other.");
    pCommand->callback(
        [pArguments, &chosen]
        {
            CheckUsage(*pArguments);
            chosen = [pArguments] { Configure(*pArguments); };
        });
}
