// korihost show: what the extension answers about a profile.
#include "host/AdapterTable.h"
#include "host/Commands.h"
#include "host/Extension.h"
#include "host/HostError.h"
#include "host/ProfileFile.h"
#include "host/PropertyKinds.h"
#include "host/ServiceArguments.h"
#include "host/SessionArguments.h"
#include "host/Table.h"
#include "profile/CCXConnectionSettings.h"

#include <iomanip>
#include <sstream>

namespace
{
struct ShowArguments
{
    TargetOptions target;
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

void WriteProperty(std::ostream& table, const PropertyKind& kind, const CProperty& property,
                   const std::optional<CWideString>& strVendorText, CConnectionContext& context)
{
    const auto flags = property.Flags();
    table << "\n";
    table << Row("Property", Utf8Of(property.Name()));
    table << Row("  kind", std::to_string(kind.uKind) + " (" + kind.szName + ")");
    table << Row("  flags", flags ? "qualified names " + std::to_string(flags->uQualifiedNames) + ", kind value " +
                                        std::to_string(flags->uKind)
                                  : notOffered);
    table << Row("  settings", strVendorText ? "in the profile" : "none in the profile");
    table << Row("  selected", YesOrNo(property.IsSelected(strVendorText, context)));
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

std::string Table(IDot11ExtUI& root, const CProfileFile& profile)
{
    std::ostringstream table;
    CConnectionContext context(profile.ProfileName());
    table << Row("Profile", Utf8Of(profile.ProfileName()));
    table << Row("Extension", Utf8Of(FriendlyName(root)));
    for (const PropertyKind& kind : propertyKinds)
        for (const CProperty& property : Properties(root, kind.uKind))
            WriteProperty(table, kind, property, profile.VendorText(kind.place), context);
    WriteConnectionRecord(table, profile.VendorText(VendorPlace::Connectivity));
    return table.str();
}

void Show(const ShowArguments& arguments)
{
    const CProfileFile profile(PathOf(arguments.target.strProfile));
    const bool bMachine = !arguments.service.strFolder.empty() || !arguments.service.strAdapter.empty();
    // Without the machine being asked for, no service is needed, and none is touched.
    const auto pService = bMachine ? CWlanService::Open(arguments.service, true) : nullptr;
    CSession session(arguments.session);
    session.Print(Naming(profile.Title(), [&] { return Table(session.Root(), profile); }));
    if (pService)
    {
        session.Print(AdapterTable(*pService, GuidOf(arguments.service.strAdapter), NameInService(arguments.target, profile)));
    }
    session.Close();
}
} // namespace

void AddShowCommand(CLI::App& app, CommandWork& chosen)
{
    const auto pArguments = std::make_shared<ShowArguments>();
    CLI::App* pCommand = app.add_subcommand("show", "Show what the extension answers about a profile");
    pCommand->add_option("PROFILE", pArguments->target.strProfile, "The profile, as the platform exports it")
        ->required()
        ->type_name("");
    AddServiceArguments(*pCommand, pArguments->service);
    AddStoredNameArgument(*pCommand, pArguments->target.strName);
    AddSessionArguments(*pCommand, pArguments->session);
    pCommand->footer("With --service or --adapter the machine's wireless adapters are shown as well.");
    pCommand->callback([pArguments, &chosen] { chosen = [pArguments] { Show(*pArguments); }; });
}
