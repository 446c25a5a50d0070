// korihost page: the wireless-profile page on one profile.
#include "host/Commands.h"
#include "host/Difference.h"
#include "host/HostError.h"
#include "host/InvalidParts.h"
#include "host/ProfileFile.h"
#include "host/ProfilePage.h"
#include "host/ServiceArguments.h"
#include "host/SessionArguments.h"
#include "host/Shown.h"
#include "host/StoredProfile.h"

namespace
{
struct PageArguments
{
    TargetOptions target;
    ServiceOptions service;
    SessionOptions session;
};

// True when that changed the profile.
bool PutChanged(CProfile& profile, VendorPlace place, const std::optional<CWideString>& strText)
{
    const bool bChanged = strText && strText != profile.VendorText(place);
    if (bChanged)
        profile.PutVendorText(place, *strText);
    return bChanged;
}

std::string SavedReport(IDot11ExtUI& root, const CProfile& before, const CProfile& after)
{
    const std::string strReport = ChangeReport(before.Title(), before.Text(), after.Title(), after.Text());
    if (before.Text() == after.Text())
        return strReport;
    return InvalidPartsBefore(before) + InvalidPartsAfter(root, before, after) + Shown(after.Title()) + ": saved\n" + strReport;
}

// What the settings dialog had the service store, whatever became of the page.
std::string StoredReport(const CWideString& strName, const StoredText& before, const std::optional<StoredText>& after)
{
    if (!after || after->strText == before.strText)
        return {};
    const std::string strTitle = "stored profile " + Utf8Of(strName);
    return "\nThe WLAN service's stored profile:\n" + ChangeReport(strTitle, before.strText, strTitle, after->strText);
}

// The property of the kind, if any: pages show one.
std::optional<CProperty> PropertyOf(const CSession& session, ULONG uKind)
{
    std::vector<CProperty> properties = Properties(session.Root(), uKind);
    return properties.empty() ? std::nullopt : std::optional(std::move(properties.front()));
}

void RunPage(CSession& session, const CProfile& profile, CConnectionContext& context, bool bHasAdapter,
             const CProfilePage::SaveWork& save)
{
    // Also of a page that cannot be opened, whose reason is to stand alone.
    const std::unique_ptr<CSession, void (*)(CSession*)> traceTaken(&session, [](CSession* pSession) { pSession->TakeTrace(); });
    const std::optional<CProperty> security = PropertyOf(session, propertyKindSecurity);
    const std::optional<CProperty> connection = PropertyOf(session, propertyKindConnection);
    CSecurityChoice choice(security ? &*security : nullptr, StandardSecurityOf(profile.Text()),
                           profile.VendorText(VendorPlace::Security), context);
    const std::string strHead = Utf8Of(profile.ProfileName()) + "  (" + profile.Title() + ")";
    CProfilePage page({strHead, choice, connection ? &*connection : nullptr, profile.VendorText(VendorPlace::Connectivity),
                       context, bHasAdapter},
                      save, [&session] { return session.TakeTrace(); });
    page.Run();
    session.TakeTrace(); // it was the page's to show
}

// Without --adapter the first one that there is.
std::optional<WlanAdapter> AdapterOf(const CWlanService& service, const std::string& strAdapter)
{
    if (!strAdapter.empty())
        return service.Adapter(*GuidOf(strAdapter));
    const std::vector<WlanAdapter> adapters = service.Adapters();
    return adapters.empty() ? std::nullopt : std::optional(adapters.front());
}

void Page(PageArguments arguments)
{
    // With nobody to see it the page would wait for ever, so the stand-in is to insist on a terminal. Whoever drives the
    // page by messages says so.
    constexpr const WCHAR* drawing = OLESTR("PLATFORM_DIALOGS");
    if (GetEnvironmentVariableW(drawing, nullptr, 0) == 0)
        SetEnvironmentVariableW(drawing, OLESTR("terminal"));
    // The page polls what the output split would otherwise show.
    arguments.session.strTrace = "-";

    const bool bServiceNeeded = !arguments.service.strFolder.empty() || !arguments.service.strAdapter.empty();
    const std::unique_ptr<CWlanService> pService = CWlanService::Open(arguments.service, bServiceNeeded);
    const std::optional<WlanAdapter> adapter = pService ? AdapterOf(*pService, arguments.service.strAdapter) : std::nullopt;
    const bool bFile = !arguments.target.strProfile.empty();
    if (!bFile && !adapter)
        throw CHostError("there is no wireless adapter that could have a stored profile");

    const auto open = [&]() -> std::unique_ptr<CProfile>
    {
        if (bFile)
            return std::make_unique<CProfileFile>(PathOf(arguments.target.strProfile));
        return std::make_unique<CStoredProfile>(*pService, adapter->guid, WideOf(arguments.target.strName));
    };
    const std::unique_ptr<CProfile> pProfile = open();
    CSession session(arguments.session);
    const CWideString strName = NameInService(arguments.target, *pProfile);
    const auto stored = adapter ? pService->Profile(adapter->guid, strName) : std::nullopt;
    CConnectionContext context(strName, adapter ? adapter->guid : GUID{}, stored ? stored->dwFlags : 0);
    std::unique_ptr<CProfile> pSaved;
    RunPage(session, *pProfile, context, adapter.has_value(),
            [&](const auto& strSecurity, const auto& strConnectivity)
            {
                // The settings dialog has stored the bands meanwhile.
                std::unique_ptr<CProfile> pChanged = open();
                const bool bConnectivity = PutChanged(*pChanged, VendorPlace::Connectivity, strConnectivity);
                if (PutChanged(*pChanged, VendorPlace::Security, strSecurity) || bConnectivity)
                    pChanged->Store();
                pSaved = std::move(pChanged);
            });
    session.Print(pSaved ? SavedReport(session.Root(), *pProfile, *pSaved)
                         : Shown(pProfile->Title()) + (bFile ? ": cancelled, not changed\n" : ": cancelled\n"));
    if (stored && (bFile || !pSaved))
        session.Print(StoredReport(strName, *stored, pService->Profile(adapter->guid, strName)));
    session.Close();
}
} // namespace

void AddPageCommand(CLI::App& app, CommandWork& chosen)
{
    const auto pArguments = std::make_shared<PageArguments>();
    CLI::App* pCommand = app.add_subcommand("page", "Open the wireless-profile page");
    AddServiceArguments(*pCommand, pArguments->service);
    AddTargetArguments(*pCommand, pArguments->target, "edited");
    AddModuleArgument(*pCommand, pArguments->session.strModule);
    pCommand->footer("Save writes the extension's settings into the profile, Cancel leaves it alone. The bands are the WLAN\n"
                     "service's: the settings dialog stores them there as soon as it is confirmed.");
    pCommand->callback([pArguments, &chosen] { chosen = [pArguments] { Page(*pArguments); }; });
}
