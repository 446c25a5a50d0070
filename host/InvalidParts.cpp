#include "host/InvalidParts.h"

#include "host/SecurityInUse.h"
#include "host/Shown.h"
#include "host/check/ProfileCheck.h"

namespace
{
constexpr ProfilePart vendorParts[] = {ProfilePart::Security, ProfilePart::Connection};

std::vector<std::string> FaultsOf(const ProfileVerdict& verdict, ProfilePart part)
{
    std::vector<std::string> faults;
    for (const Finding& finding : verdict.findings)
        if (finding.part == part && finding.pRule->severity == Severity::Error)
            faults.push_back(Sentence(finding));
    return faults;
}

ProfileVerdict VerdictOn(const CProfile& profile)
{
    return CheckProfile(profile.Title(), profile.Bytes());
}

std::string Lines(const CProfile& profile, const char* szWhen, const std::vector<std::string>& texts)
{
    std::string strLines;
    for (const std::string& strText : texts)
        strLines += Shown(profile.Title()) + ": " + szWhen + ": " + Escaped(strText) + "\n";
    return strLines;
}
} // namespace

std::string InvalidPartsBefore(const CProfile& profile)
{
    const ProfileVerdict verdict = VerdictOn(profile);
    std::string strLines;
    for (const ProfilePart part : vendorParts)
        strLines += Lines(profile, "before", FaultsOf(verdict, part));
    return strLines;
}

std::string InvalidPartsAfter(IDot11ExtUI& root, const CProfile& before, const CProfile& changed)
{
    const ProfileVerdict verdictBefore = VerdictOn(before);
    const ProfileVerdict verdict = VerdictOn(changed);
    std::string strLines;
    for (const ProfilePart part : vendorParts)
    {
        if (FaultsOf(verdictBefore, part).empty())
            continue;
        std::vector<std::string> texts = FaultsOf(verdict, part);
        if (texts.empty())
            texts = {part == ProfilePart::Security ? SecurityInUseOf(root, changed).strName : "the settings are valid"};
        strLines += Lines(before, "after", texts);
    }
    return strLines;
}
