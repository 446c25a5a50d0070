#include "host/check/ProfileCheck.h"

#include "host/HostError.h"
#include "host/IhvElement.h"
#include "host/KeyMask.h"
#include "host/ProfileDocument.h"
#include "host/ProfileText.h"
#include "host/SafeFile.h"
#include "host/check/BandsCheck.h"
#include "host/check/ConnectionCheck.h"
#include "host/check/ForeignElements.h"
#include "host/check/SecurityCheck.h"
#include "host/check/WellFormedness.h"
#include "profile/DocumentPrologue.h"
#include "profile/XmlDocument.h"

#include <algorithm>

namespace
{
constexpr std::size_t cchLongestName = 255;

// Ends the reading of a file in which there is no profile to judge.
struct NotReadable
{
    CheckRule rule;
    std::string strReason;
    std::optional<TextRange> place;
};

std::string BytesOf(const std::filesystem::path& file)
{
    try
    {
        return ReadSafely(file);
    }
    catch (const CHostError& error)
    {
        throw NotReadable{CheckRule::CannotRead, error.what(), {}};
    }
}

// What the declaration says of the encoding was true of the bytes. Blanks in its place leave all positions as they are.
CWideString TextOf(std::string_view bytes)
{
    try
    {
        CWideString strText = DecodeProfile(bytes).strText;
        if (const auto declaration = FindEncodingDeclaration(strText))
            std::fill(strText.begin() + static_cast<std::ptrdiff_t>(declaration->nBegin),
                      strText.begin() + static_cast<std::ptrdiff_t>(declaration->nEnd), OLESTR(' '));
        return strText;
    }
    catch (const CHostError& error)
    {
        throw NotReadable{CheckRule::NotText, error.what(), {}};
    }
}

// A reason may quote what does not fit: when that is a part of a key, the text without keys has another one.
NotReadable WhereFaulty(const CWideString& strText, std::string strOtherwise)
{
    const auto fault = FindFault(strText);
    if (!fault)
        return {CheckRule::NotWellFormed, std::move(strOtherwise), {}};
    const auto withoutKeys = FindFault(WithoutKeys(strText));
    const bool bQuotesKey = !withoutKeys || withoutKeys->strReason != fault->strReason;
    return {CheckRule::NotWellFormed, bQuotesKey ? "in a key, or because of one" : fault->strReason, fault->place};
}

CXmlDocument RequireDocument(const CWideString& strText)
{
    if (HasDocumentType(strText.c_str()))
    {
        const std::size_t nBegin = strText.find(OLESTR("<!DOCTYPE"));
        throw NotReadable{CheckRule::DocumentType, "no wireless profile has one", TextRange{nBegin, nBegin + 1}};
    }
    try
    {
        RequireModerateMarkup(strText);
    }
    catch (const CHostError& error)
    {
        throw WhereFaulty(strText, error.what());
    }
    CXmlDocument document;
    // The document component has the last word; where its own words would come from, a person gets plainer ones.
    if (document.Load(strText.c_str()) && strText.find(WCHAR{}) == CWideString::npos)
        return document;
    throw WhereFaulty(strText, "the document component does not load it");
}

void CheckName(const CElementMap& map, CFindings& findings, ProfileVerdict& verdict)
{
    const XmlElement* pName = map.Child(&map.Root(), OLESTR("name"));
    const std::string strAllowed = "1 to " + std::to_string(cchLongestName) + " characters";
    const std::string strEffect = "the service finds no profile by such a name";
    const CWideString strText = pName ? TextOf(map, *pName) : CWideString();
    const CWideString strName(Trimmed(strText));
    if (strName.empty())
        findings.AddMissing(CheckRule::ProfileName, ProfilePart::Profile, "name", pName ? *pName : map.Root(),
                            {{}, strAllowed, strEffect});
    else
        verdict.strName = Shortened(ValueWithoutKeys(map, *pName, strName), cchLongestName);
    if (strName.size() > cchLongestName)
        findings.AddContent(CheckRule::ProfileName, ProfilePart::Profile, *pName, {strName, strAllowed, strEffect});
}

// Elements of the profile of which the first is taken, each with the names around it.
struct SingleElement
{
    CWideView parent; // empty for the root
    CWideView name;
    ProfilePart part;
};
constexpr SingleElement singleElements[] = {
    {{}, OLESTR("name"), ProfilePart::Profile},
    {{}, OLESTR("MSM"), ProfilePart::Bands},
    {{}, OLESTR("IHV"), ProfilePart::Profile},
    {OLESTR("MSM"), OLESTR("connectivity"), ProfilePart::Bands},
    {OLESTR("MSM"), OLESTR("security"), ProfilePart::Bands},
    {OLESTR("IHV"), OLESTR("connectivity"), ProfilePart::Connection},
    {OLESTR("IHV"), OLESTR("security"), ProfilePart::Security},
};

void CheckSingleElements(const CElementMap& map, CFindings& findings)
{
    for (const SingleElement& single : singleElements)
    {
        const XmlElement* pParent = single.parent.empty() ? &map.Root() : map.Child(&map.Root(), single.parent);
        const XmlElement* pFirst = map.Child(pParent, single.name);
        for (const XmlElement* pOther = pFirst ? pFirst->pNext : nullptr; pOther; pOther = pOther->pNext)
            if (LocalNameOf(pOther->Name()) == single.name)
                findings.AddElement(CheckRule::SecondElement, single.part, *pOther, {{}, {}, "the first one counts"});
    }
}

struct Place
{
    VendorPlace place;
    ProfilePart part;
    void (*check)(CVendorElements& elements, CFindings& findings);
    const char* szWithTwoRoots;
};
const Place places[] = {
    {VendorPlace::Connectivity, ProfilePart::Connection, CheckConnection, "the text does not load, so nothing of it is read"},
    {VendorPlace::Security, ProfilePart::Security, CheckSecurity, "the text does not load, so the choice is lost"},
};

void CheckPlace(const CElementMap& map, const Place& place, CFindings& findings)
{
    const XmlElement* pRoot = VendorElement(map, place.place);
    if (!pRoot)
        return;
    const XmlElement* pFirst = pRoot->pParent->pFirstChild;
    if (const XmlElement* pOther = pFirst == pRoot ? pRoot->pNext : pFirst)
    {
        findings.AddElement(CheckRule::TwoRoots, place.part, *pOther, {{}, {}, place.szWithTwoRoots});
        return;
    }
    CVendorElements elements(map, *pRoot);
    place.check(elements, findings);
    if (PrefixOf(pRoot->Name()).empty())
        CheckForeignElements(elements, place.place, findings);
    else
        findings.AddElement(CheckRule::PrefixedElement, place.part, *pRoot, {{}, {}, namesWithPrefix});
}

void Judge(std::string_view bytes, ProfileVerdict& verdict)
{
    verdict.strText = TextOf(bytes);
    const CXmlDocument document = RequireDocument(verdict.strText);
    const CElementMap map(verdict.strText);
    if (LocalNameOf(map.Root().Name()) != OLESTR("WLANProfile"))
        throw NotReadable{CheckRule::NoProfile, "the root element is " + Utf8Of(map.Root().Name()),
                          TextRange{map.Root().openingTag.nBegin, map.Root().openingTag.nEnd}};
    CFindings findings(map);
    CheckName(map, findings, verdict);
    CheckSingleElements(map, findings);
    CheckBands(map, document, findings);
    for (const Place& place : places)
        CheckPlace(map, place, findings);
    verdict.findings = findings.Take();
}

template <class Read>
ProfileVerdict VerdictOn(std::string strTitle, Read read)
{
    ProfileVerdict verdict;
    verdict.strFile = std::move(strTitle);
    try
    {
        Judge(read(), verdict);
    }
    catch (const NotReadable& reason)
    {
        verdict.findings = {{&RowOf(reason.rule), ProfilePart::Profile, {}, reason.place, {}, {}, reason.strReason}};
    }
    return verdict;
}
} // namespace

ProfileVerdict CheckProfile(const std::filesystem::path& file)
{
    return VerdictOn(NameOf(file), [&] { return BytesOf(file); });
}

ProfileVerdict CheckProfile(std::string strTitle, std::string_view bytes)
{
    return VerdictOn(std::move(strTitle), [&] { return bytes; });
}
