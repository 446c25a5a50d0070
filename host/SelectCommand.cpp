// korihost select: makes the extension's security property the one that a profile uses.
#include "host/Commands.h"
#include "host/Extension.h"
#include "host/HostError.h"
#include "host/ProfileOutput.h"
#include "host/SessionArguments.h"
#include "profile/CCXSecurityTokens.h"

namespace
{
struct SelectArguments
{
    std::vector<std::string> paths;
    std::string strCipher;
    OutputOptions output;
    SessionOptions session;
};

std::vector<std::string> OfferedCiphers()
{
    std::vector<std::string> names;
    for (const auto& cipher : CCXSecurityTokens::cipher)
        if (cipher.bOffered)
            names.push_back(Utf8Of(cipher.szName));
    return names;
}

Dot11ExtUIPropertyEntry& EntryNamed(const CProperty& property, const std::optional<CWideString>& strVendorText,
                                    CConnectionContext& context, const std::string& strName)
{
    const auto answer = property.Entries(strVendorText, context);
    if (answer)
        for (Dot11ExtUIPropertyEntry* pEntry : answer->entries)
            if (Utf8Of(TextOf(*pEntry)) == strName)
                return *pEntry;
    throw CHostError("the extension offers no cipher " + strName);
}

// The changed security text, or nothing when the extension sees nothing to change.
std::optional<CWideString> SelectSecurity(IDot11ExtUI& root, const CProfileFile& profile, const std::string& strCipher)
{
    const std::vector<CProperty> properties = Properties(root, propertyKindSecurity);
    if (properties.empty())
        throw CHostError("the extension offers no security property");
    const CProperty& property = properties.front();

    CConnectionContext context(profile.ProfileName());
    const std::optional<CWideString> strRead = profile.VendorText(VendorPlace::Security);
    const std::optional<CWideString> strSelected = property.Select(strRead, context);
    if (strCipher.empty())
        return strSelected;
    const std::optional<CWideString>& strCurrent = strSelected ? strSelected : strRead;
    Dot11ExtUIPropertyEntry& entry = EntryNamed(property, strCurrent, context, strCipher);
    const std::optional<CWideString> strChosen = property.Choose(strCurrent, context, entry);
    return strChosen ? strChosen : strSelected;
}

void Select(const SelectArguments& arguments)
{
    CSession session(arguments.session);
    CProfileOutput output(session, arguments.output);
    output.ForEach(arguments.paths,
                   [&](const CProfileFile& profile)
                   {
                       CProfileFile changed = profile;
                       if (const auto strSecurity = Naming(
                               profile.Title(), [&] { return SelectSecurity(session.Root(), profile, arguments.strCipher); }))
                           changed.PutVendorText(VendorPlace::Security, *strSecurity);
                       output.Write(profile, changed);
                   });
}
} // namespace

void AddSelectCommand(CLI::App& app, CommandWork& chosen)
{
    const auto pArguments = std::make_shared<SelectArguments>();
    CLI::App* pCommand = app.add_subcommand("select", "Make profiles use the extension's authentication");
    AddPathArguments(*pCommand, pArguments->paths)->required();
    pCommand->add_option("--cipher", pArguments->strCipher, "The cipher to use with it")
        ->transform(CLI::IsMember(OfferedCiphers(), CLI::ignore_case))
        ->type_name("NAME");
    AddOutputArguments(*pCommand, pArguments->output);
    AddSessionArguments(*pCommand, pArguments->session);
    pCommand->footer(
        "Without -o and --in-place the changes are shown and written nowhere. Of several profiles each is changed or\n"
        "left as it is; what is refused of one stops no other.");
    pCommand->callback(
        [pArguments, &chosen]
        {
            CheckOutputUsage(pArguments->output, pArguments->paths);
            FilesOf(pArguments->paths);
            chosen = [pArguments] { Select(*pArguments); };
        });
}
