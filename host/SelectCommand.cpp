// korihost select: makes the extension's security property the one that a profile uses.
#include "host/ChangeReport.h"
#include "host/Commands.h"
#include "host/Extension.h"
#include "host/HostError.h"
#include "host/ProfileFile.h"
#include "host/SafeFile.h"
#include "host/SessionArguments.h"

namespace
{
struct SelectArguments
{
    std::string strProfile;
    std::string strCipher;
    std::string strOutput;
    bool bInPlace = false;
    SessionOptions session;
};

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

CProfileFile Changed(IDot11ExtUI& root, const CProfileFile& profile, const std::string& strCipher)
{
    CProfileFile changed = profile;
    if (const auto strSecurity = NamingFile(profile.File(), [&] { return SelectSecurity(root, profile, strCipher); }))
        changed.PutVendorText(VendorPlace::Security, *strSecurity);
    return changed;
}

void Select(const SelectArguments& arguments)
{
    const std::filesystem::path file = PathOf(arguments.strProfile);
    const std::filesystem::path output = PathOf(arguments.strOutput);
    const CProfileFile profile(file);
    if (!arguments.strOutput.empty() && IsSameFile(file, output))
        throw CHostError(arguments.strOutput + ": is the profile itself; use --in-place to change it");

    CSession session(arguments.session, {file, output});
    const CProfileFile changed = Changed(session.Root(), profile, arguments.strCipher);
    if (!arguments.strOutput.empty())
        WriteSafely(output, changed.Bytes());
    else if (arguments.bInPlace && profile.Text() != changed.Text())
        WriteSafely(file, changed.Bytes());
    const std::string strTarget = arguments.strOutput.empty() ? profile.Title() : arguments.strOutput;
    session.Print(ChangeReport(profile.Title(), profile.Text(), strTarget, changed.Text()));
    session.Close();
}
} // namespace

void AddSelectCommand(CLI::App& app, CommandWork& chosen)
{
    const auto pArguments = std::make_shared<SelectArguments>();
    CLI::App* pCommand = app.add_subcommand("select", "Make a profile use the extension's authentication");
    pCommand->add_option("PROFILE", pArguments->strProfile, "The profile, as the platform exports it")->required()->type_name("");
    pCommand->add_option("--cipher", pArguments->strCipher, "The cipher to use with it")
        ->transform(CLI::IsMember({"WEP", "TKIP", "AES"}, CLI::ignore_case))
        ->type_name("NAME");
    CLI::Option* pOutput =
        pCommand->add_option("-o,--output", pArguments->strOutput, "Where the changed profile goes")->type_name("FILE");
    pCommand->add_flag("--in-place", pArguments->bInPlace, "Change the profile itself")->excludes(pOutput);
    AddSessionArguments(*pCommand, pArguments->session);
    pCommand->footer("Without -o and --in-place the changes are shown and written nowhere.");
    pCommand->callback([pArguments, &chosen] { chosen = [pArguments] { Select(*pArguments); }; });
}
