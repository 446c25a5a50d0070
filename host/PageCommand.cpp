// korihost page: the wireless-profile page on one profile.
#include "host/Commands.h"
#include "host/HostError.h"
#include "host/ProfileFile.h"
#include "host/ProfilePage.h"
#include "host/SafeFile.h"
#include "host/ServiceArguments.h"
#include "host/SessionArguments.h"
#include "host/StoredProfile.h"

namespace
{
struct PageArguments
{
    std::string strProfile;
    std::string strName;
    ServiceOptions service;
    SessionOptions session;
};

void PutChanged(CProfile& profile, VendorPlace place, const std::optional<CWideString>& strText)
{
    if (strText && strText != profile.VendorText(place))
        profile.PutVendorText(place, *strText);
}

// The property of the kind, if any: pages show one.
std::optional<CProperty> PropertyOf(const CSession& session, ULONG uKind)
{
    std::vector<CProperty> properties = Properties(session.Root(), uKind);
    return properties.empty() ? std::nullopt : std::optional(std::move(properties.front()));
}

bool RunPage(CSession& session, const CProfile& profile, CConnectionContext& context, bool bHasAdapter,
             const CProfilePage::SaveWork& save)
{
    const std::optional<CProperty> security = PropertyOf(session, propertyKindSecurity);
    const std::optional<CProperty> connection = PropertyOf(session, propertyKindConnection);
    CSecurityChoice choice(security ? &*security : nullptr, OwnSecurityOf(profile.Text()),
                           profile.VendorText(VendorPlace::Security), context);
    const std::string strHead = Utf8Of(profile.ProfileName()) + "  (" + profile.Title() + ")";
    CProfilePage page({strHead, choice, connection ? &*connection : nullptr, profile.VendorText(VendorPlace::Connectivity),
                       context, bHasAdapter},
                      save, [&session] { return session.TakeTrace(); });
    const bool bSaved = page.Run();
    session.TakeTrace(); // it was the page's to show
    return bSaved;
}

// Without --adapter the first one that there is.
std::optional<WlanAdapter> AdapterOf(const CWlanService& service, const std::string& strAdapter)
{
    if (!strAdapter.empty())
        return service.Adapter(*GuidOf(strAdapter));
    const std::vector<WlanAdapter> adapters = service.Adapters();
    return adapters.empty() ? std::nullopt : std::optional(adapters.front());
}

void PageOnFile(const PageArguments& arguments, const CWlanService* pService, const std::optional<WlanAdapter>& adapter)
{
    const CProfileFile profile(PathOf(arguments.strProfile));
    CSession session(arguments.session, {profile.File()});
    const CWideString strName = arguments.strName.empty() ? profile.ProfileName() : WideOf(arguments.strName);
    const auto stored = pService && adapter ? pService->Profile(adapter->guid, strName) : std::nullopt;
    CConnectionContext context(strName, adapter ? adapter->guid : GUID{}, stored ? stored->dwFlags : 0);
    const bool bSaved = RunPage(session, profile, context, adapter.has_value(),
                                [&](const auto& strSecurity, const auto& strConnectivity)
                                {
                                    CProfileFile changed = profile;
                                    PutChanged(changed, VendorPlace::Connectivity, strConnectivity);
                                    PutChanged(changed, VendorPlace::Security, strSecurity);
                                    if (changed.Text() != profile.Text())
                                        WriteSafely(profile.File(), changed.Bytes());
                                });
    session.Print(profile.Title() + (bSaved ? ": saved\n" : ": cancelled, not changed\n"));
    session.Close();
}

void PageOnStored(const PageArguments& arguments, const CWlanService& service, const WlanAdapter& adapter)
{
    const CStoredProfile profile(service, adapter.guid, WideOf(arguments.strName));
    CSession session(arguments.session, {});
    CConnectionContext context(WideOf(arguments.strName), adapter.guid, profile.Flags());
    const bool bSaved = RunPage(session, profile, context, true,
                                [&](const auto& strSecurity, const auto& strConnectivity)
                                {
                                    // The settings dialog has stored the bands meanwhile.
                                    CStoredProfile changed(service, adapter.guid, WideOf(arguments.strName));
                                    PutChanged(changed, VendorPlace::Connectivity, strConnectivity);
                                    PutChanged(changed, VendorPlace::Security, strSecurity);
                                    changed.Store();
                                });
    session.Print(profile.Title() + (bSaved ? ": saved\n" : ": cancelled\n"));
    session.Close();
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
    if (!arguments.strProfile.empty())
        PageOnFile(arguments, pService.get(), adapter);
    else if (pService && adapter)
        PageOnStored(arguments, *pService, *adapter);
    else
        throw CHostError("there is no wireless adapter that could have a stored profile");
}
} // namespace

void AddPageCommand(CLI::App& app, CommandWork& chosen)
{
    const auto pArguments = std::make_shared<PageArguments>();
    CLI::App* pCommand = app.add_subcommand("page", "Open the wireless-profile page");
    pCommand
        ->add_option("PROFILE", pArguments->strProfile,
                     "The profile, as the platform exports it; without it the stored profile --name is edited")
        ->type_name("");
    AddServiceArguments(*pCommand, pArguments->service);
    AddStoredNameArgument(*pCommand, pArguments->strName);
    AddModuleArgument(*pCommand, pArguments->session.strModule);
    pCommand->footer("Save writes the extension's settings into the profile, Cancel leaves it alone. The bands are the WLAN\n"
                     "service's: the settings dialog stores them there as soon as it is confirmed.");
    pCommand->callback(
        [pArguments, &chosen]
        {
            if (pArguments->strProfile.empty() && pArguments->strName.empty())
                throw CLI::ValidationError("PROFILE", "a profile file, or the --name of a stored profile, is needed");
            chosen = [pArguments] { Page(*pArguments); };
        });
}
