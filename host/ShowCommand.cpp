// korihost show: what the extension answers about a profile.
#include "host/Commands.h"
#include "host/Extension.h"
#include "host/HostError.h"
#include "host/ProfileFile.h"
#include "host/PropertyKinds.h"
#include "host/SessionArguments.h"

#include <iomanip>
#include <sstream>

namespace
{
struct ShowArguments
{
    std::string strProfile;
    SessionOptions session;
};

constexpr const char* notOffered = "not offered";

void WriteRow(std::ostream& table, const char* szTitle, const std::string& strValue)
{
    table << std::left << std::setw(14) << szTitle << strValue << "\n";
}

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
        WriteRow(table, "  entries", notOffered);
        return;
    }
    const char* szTitle = "  entries";
    for (std::size_t n = 0; n < answer->entries.size(); ++n)
    {
        const Dot11ExtUIPropertyEntry& entry = *answer->entries[n];
        std::ostringstream row;
        row << n << "  " << std::left << std::setw(12) << Utf8Of(ViewOf(entry.bstrDisplayText)) << "data key " << entry.dwDataKey;
        if (n == answer->uDefault)
            row << "  (default)";
        WriteRow(table, szTitle, row.str());
        szTitle = "";
    }
}

void WriteProperty(std::ostream& table, const PropertyKind& kind, const CProperty& property,
                   const std::optional<CWideString>& strVendorText, CConnectionContext& context)
{
    const auto flags = property.Flags();
    table << "\n";
    WriteRow(table, "Property", Utf8Of(property.Name()));
    WriteRow(table, "  kind", std::to_string(kind.uKind) + " (" + kind.szName + ")");
    WriteRow(table, "  flags",
             flags ? "qualified names " + std::to_string(flags->uQualifiedNames) + ", kind value " + std::to_string(flags->uKind)
                   : notOffered);
    WriteRow(table, "  settings", strVendorText ? "in the profile" : "none in the profile");
    WriteRow(table, "  selected", YesOrNo(property.IsSelected(strVendorText, context)));
    WriteRow(table, "  dialog", YesOrNo(property.HasDialog()));
    WriteEntries(table, property.Entries(strVendorText, context));
}

std::string Table(IDot11ExtUI& root, const CProfileFile& profile)
{
    std::ostringstream table;
    CConnectionContext context(profile.ProfileName());
    WriteRow(table, "Profile", Utf8Of(profile.ProfileName()));
    WriteRow(table, "Extension", Utf8Of(FriendlyName(root)));
    for (const PropertyKind& kind : propertyKinds)
        for (const CProperty& property : Properties(root, kind.uKind))
            WriteProperty(table, kind, property, profile.VendorText(kind.place), context);
    return table.str();
}

void Show(const ShowArguments& arguments)
{
    const CProfileFile profile(PathOf(arguments.strProfile));
    CSession session(arguments.session, {profile.File()});
    session.Print(NamingFile(profile.File(), [&] { return Table(session.Root(), profile); }));
    session.Close();
}
} // namespace

void AddShowCommand(CLI::App& app, CommandWork& chosen)
{
    const auto pArguments = std::make_shared<ShowArguments>();
    CLI::App* pCommand = app.add_subcommand("show", "Show what the extension answers about a profile");
    pCommand->add_option("PROFILE", pArguments->strProfile, "The profile, as the platform exports it")->required()->type_name("");
    AddSessionArguments(*pCommand, pArguments->session);
    pCommand->callback([pArguments, &chosen] { chosen = [pArguments] { Show(*pArguments); }; });
}
