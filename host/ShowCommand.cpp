// korihost show: what the extension answers about a profile, and what it makes of many.
#include "host/AdapterTable.h"
#include "host/BandsName.h"
#include "host/CommandEnd.h"
#include "host/Commands.h"
#include "host/Extension.h"
#include "host/HostError.h"
#include "host/ProfilePaths.h"
#include "host/PropertyKinds.h"
#include "host/Refusals.h"
#include "host/SecurityInUse.h"
#include "host/ServiceArguments.h"
#include "host/SessionArguments.h"
#include "host/StoredProfile.h"
#include "host/Table.h"
#include "host/check/CheckReport.h"
#include "host/check/ProfileCheck.h"
#include "profile/CCXConnectionSettings.h"

#include <functional>
#include <iomanip>
#include <sstream>

namespace
{
struct ShowArguments
{
    std::vector<std::string> paths; // without any the stored profiles are meant
    std::string strName;
    ServiceOptions service;
    SessionOptions session;
};

constexpr const char* notOffered = "not offered";

std::string YesOrNo(std::optional<bool> answer)
{
    if (!answer)
        return notOffered;
    return *answer ? "yes" : "no";
}

void WriteEntries(std::ostream& table, const std::optional<PropertyEntries>& answer)
{
    if (!answer)
    {
        table << Row("  entries", notOffered);
        return;
    }
    const char* szTitle = "  entries";
    for (std::size_t n = 0; n < answer->entries.size(); ++n)
    {
        const Dot11ExtUIPropertyEntry& entry = *answer->entries[n];
        std::ostringstream row;
        row << n << "  " << std::left << std::setw(12) << Utf8Of(TextOf(entry)) << "data key " << entry.dwDataKey;
        if (n == answer->uDefault)
            row << "  (default)";
        table << Row(szTitle, row.str());
        szTitle = "";
    }
}

// The extension claims also a profile in which nobody has chosen anything of it.
std::string SelectedText(IDot11ExtUI& root, const PropertyKind& kind, const CProperty& property, const CProfile& profile,
                         CConnectionContext& context)
{
    const std::optional<CWideString> strVendorText = profile.VendorText(kind.place);
    const auto selected = property.IsSelected(strVendorText, context);
    if (!selected || kind.uKind != propertyKindSecurity)
        return YesOrNo(selected);
    return YesOrNo(*selected && strVendorText) + ", the profile uses " + SecurityInUseOf(root, profile).strName;
}

void WriteProperty(std::ostream& table, IDot11ExtUI& root, const PropertyKind& kind, const CProperty& property,
                   const CProfile& profile, CConnectionContext& context)
{
    const std::optional<CWideString> strVendorText = profile.VendorText(kind.place);
    const auto flags = property.Flags();
    table << "\n";
    table << Row("Property", Utf8Of(property.Name()));
    table << Row("  kind", std::to_string(kind.uKind) + " (" + kind.szName + ")");
    table << Row("  flags", flags ? "qualified names " + std::to_string(flags->uQualifiedNames) + ", kind value " +
                                        std::to_string(flags->uKind)
                                  : notOffered);
    table << Row("  settings", strVendorText ? "in the profile" : "none in the profile");
    table << Row("  selected", SelectedText(root, kind, property, profile, context));
    table << Row("  dialog", YesOrNo(property.HasDialog()));
    WriteEntries(table, property.Entries(strVendorText, context));
}

struct RecordField
{
    const char* szName;
    LONG CCXConnectionSettings::*pValue;
};
constexpr RecordField recordFields[] = {
    {"radioMeasurement", &CCXConnectionSettings::radioMeasurement},
    {"locationBasedServices", &CCXConnectionSettings::locationBasedServices},
    {"maxOffChannelTimeMs", &CCXConnectionSettings::maxOffChannelTimeMs},
    {"minOnChannelTimeMs", &CCXConnectionSettings::minOnChannelTimeMs},
    {"rapido", &CCXConnectionSettings::rapido},
    {"advancedRoaming", &CCXConnectionSettings::advancedRoaming},
    {"roamingOption", &CCXConnectionSettings::roamingOption},
    {"keepAliveEnabled", &CCXConnectionSettings::keepAliveEnabled},
    {"keepAlivePeriod", &CCXConnectionSettings::keepAlivePeriod},
    {"authorizedProfile", &CCXConnectionSettings::authorizedProfile},
    {"clientReporting", &CCXConnectionSettings::clientReporting},
    {"diagnosticSsidLength", &CCXConnectionSettings::diagnosticSsidLength},
};

std::string ValueText(LONG lValue)
{
    if (lValue == CCXConnectionSettings::NotSet)
        return "not set";
    return lValue == CCXConnectionSettings::Invalid ? "invalid" : std::to_string(lValue);
}

void WriteConnectionRecord(std::ostream& table, const std::optional<CWideString>& strVendorText)
{
    table << "\nConnection settings\n";
    if (!strVendorText)
    {
        table << "  none in the profile; the dialog begins with its defaults\n";
        return;
    }
    CCXConnectionSettings record;
    // Reading leaves it alone where the text has none.
    record.roamingOption = CCXConnectionSettings::NotSet;
    record.Parse(strVendorText->c_str());
    for (const RecordField& field : recordFields)
        table << Row("  " + std::string(field.szName), ValueText(record.*field.pValue));
}

std::string Counted(std::size_t n, const char* szWhat)
{
    return n == 0 ? std::string() : ", " + std::to_string(n) + " " + szWhat + (n == 1 ? "" : "s");
}

// All about one profile.
std::string ProfileTable(IDot11ExtUI& root, const CProfile& profile)
{
    std::ostringstream table;
    CConnectionContext context(profile.ProfileName());
    const ProfileVerdict verdict = CheckProfile(profile.Title(), profile.Bytes());
    table << Row("Profile", Utf8Of(profile.ProfileName()));
    table << Row("Verdict", StateName(verdict.State()) + Counted(verdict.Count(Severity::Error), "error") +
                                Counted(verdict.Count(Severity::Warning), "warning"));
    table << textReport.entry(verdict, {});
    table << Row("Extension", Utf8Of(FriendlyName(root)));
    for (const PropertyKind& kind : propertyKinds)
        for (const CProperty& property : Properties(root, kind.uKind))
            WriteProperty(table, root, kind, property, profile, context);
    WriteConnectionRecord(table, profile.VendorText(VendorPlace::Connectivity));
    return table.str();
}

// A profile that is to be shown.
struct Source
{
    std::string strPlace; // where it is, UTF-8
    std::optional<GUID> adapter;
    std::function<std::unique_ptr<CProfile>()> open; // throws CHostError
};

std::vector<Source> Files(const std::vector<std::string>& paths, const std::optional<GUID>& adapter)
{
    std::vector<Source> sources;
    for (const std::filesystem::path& file : FilesOf(paths))
        sources.push_back({NameOf(file), adapter, [file] { return std::make_unique<CProfileFile>(OpenProfile(file)); }});
    return sources;
}

std::vector<Source> StoredProfiles(const CWlanService& service, const std::optional<GUID>& chosen, const CWideString& strWanted)
{
    std::vector<Source> sources;
    if (chosen)
        service.Adapter(*chosen);
    for (const WlanAdapter& adapter : service.Adapters())
    {
        if (chosen && !IsEqualGUID(*chosen, adapter.guid))
            continue;
        for (const CWideString& strName : service.ProfileNames(adapter.guid))
            if (strWanted.empty() || strName == strWanted)
                sources.push_back({"adapter " + TextOf(adapter.guid), adapter.guid, [&service, guid = adapter.guid, strName] {
                                       return std::make_unique<CStoredProfile>(service, guid, strName);
                                   }});
    }
    if (sources.empty())
        throw CHostError("the WLAN service has no profile" + (strWanted.empty() ? "" : " " + Utf8Of(strWanted)));
    return sources;
}

void ShowOne(CSession& session, const Source& source, const CWlanService* pService, const std::string& strName)
{
    const std::unique_ptr<CProfile> pProfile = source.open();
    session.Print(Naming(pProfile->Title(), [&] { return ProfileTable(session.Root(), *pProfile); }));
    if (pService)
        session.Print(AdapterTable(*pService, source.adapter, NameInService(strName, *pProfile)));
}

const char* SettingsText(const CProfile& profile, const ProfileVerdict& verdict)
{
    if (verdict.State() == ProfileState::Valid && !profile.VendorText(VendorPlace::Security) &&
        !profile.VendorText(VendorPlace::Connectivity))
        return "none";
    return StateName(verdict.State());
}

// A row for each. The result is how many could not be shown.
std::size_t ShowMany(CSession& session, const std::vector<Source>& sources)
{
    const std::string strExtension = Utf8Of(FriendlyName(session.Root()));
    std::vector<std::vector<std::string>> rows = {
        {"PROFILE", "AUTHENTICATED BY", "SECURITY", "CCKM", "SETTINGS", "BANDS", "PLACE"}};
    std::size_t nInvalid = 0;
    const std::size_t nRefused =
        RefusedAmong(sources,
                     [&](const Source& source)
                     {
                         const std::unique_ptr<CProfile> pProfile = source.open();
                         const ProfileVerdict verdict = CheckProfile(pProfile->Title(), pProfile->Bytes());
                         const SecurityInUse security =
                             Naming(pProfile->Title(), [&] { return SecurityInUseOf(session.Root(), *pProfile); });
                         nInvalid += verdict.State() == ProfileState::Valid ? 0 : 1;
                         rows.push_back({Utf8Of(pProfile->ProfileName()), security.bExtensions ? strExtension : "the platform",
                                         security.strName, YesOrNo(security.bSelected), SettingsText(*pProfile, verdict),
                                         BandsName(pProfile->Text()), source.strPlace});
                     });
    session.Print(Columns(rows));
    session.Print("\n" + std::to_string(rows.size() - 1) + (rows.size() == 2 ? " profile" : " profiles") + " shown, " +
                  std::to_string(nInvalid) + " invalid; " + std::to_string(nRefused) + " could not be read\n");
    return nRefused;
}

void Show(const ShowArguments& arguments)
{
    const bool bStored = arguments.paths.empty();
    const bool bMachine = bStored || !arguments.service.strFolder.empty() || !arguments.service.strAdapter.empty();
    // Without the machine being asked for, no service is needed, and none is touched.
    const auto pService = bMachine ? CWlanService::Open(arguments.service, true) : nullptr;
    const std::optional<GUID> adapter = GuidOf(arguments.service.strAdapter);
    const std::vector<Source> sources =
        bStored ? StoredProfiles(*pService, adapter, WideOf(arguments.strName)) : Files(arguments.paths, adapter);
    CSession session(arguments.session);
    std::size_t nRefused = 0;
    if (bStored ? sources.size() == 1 && !arguments.strName.empty() : AreOneFile(arguments.paths))
        ShowOne(session, sources.front(), pService.get(), arguments.strName);
    else
        nRefused = ShowMany(session, sources);
    session.Close();
    if (nRefused != 0)
        throw CommandEnd{exitRefused};
}

void CheckUsage(const ShowArguments& arguments)
{
    if (arguments.paths.empty())
        return;
    const bool bMachine = !arguments.service.strFolder.empty() || !arguments.service.strAdapter.empty();
    if (!AreOneFile(arguments.paths) && (bMachine || !arguments.strName.empty()))
        throw CLI::ValidationError("PATH", "--service, --adapter and --name go with one file, or with none for stored profiles");
    FilesOf(arguments.paths);
}
} // namespace

void AddShowCommand(CLI::App& app, CommandWork& chosen)
{
    const auto pArguments = std::make_shared<ShowArguments>();
    CLI::App* pCommand = app.add_subcommand("show", "Show what the extension answers about profiles");
    AddPathArguments(*pCommand, pArguments->paths);
    AddServiceArguments(*pCommand, pArguments->service);
    AddStoredNameArgument(*pCommand, pArguments->strName);
    AddSessionArguments(*pCommand, pArguments->session);
    pCommand->footer(
        "Of one profile everything is shown, of several a row each. Without PATH they are the WLAN service's stored\n"
        "profiles, of all adapters and names unless one is given. With one file, --service and --adapter show the\n"
        "machine's wireless adapters as well.");
    pCommand->callback(
        [pArguments, &chosen]
        {
            CheckUsage(*pArguments);
            chosen = [pArguments] { Show(*pArguments); };
        });
}
