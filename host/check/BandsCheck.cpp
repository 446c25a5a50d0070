#include "host/check/BandsCheck.h"

#include "host/check/VendorElements.h"
#include "profile/WlanProfileBands.h"
#include "values/Utf8Text.h"

#include <algorithm>

namespace
{
constexpr ProfilePart bandsPart = ProfilePart::Bands;
constexpr CWideView sectionName = OLESTR("MSM");
constexpr CWideView connectivityName = OLESTR("connectivity");
constexpr CWideView securityName = OLESTR("security");

// What the standards' letters mean to a person. The one of both bands says nothing beside others.
struct PhyMeaning
{
    CWideView text;
    DWORD bands;
};
constexpr PhyMeaning phyMeanings[] = {
    {OLESTR("a"), bands5GHz}, {OLESTR("b"), bands24GHz}, {OLESTR("g"), bands24GHz}, {OLESTR("n"), bandsNotRead}};

const char* ReadAs(DWORD bands)
{
    constexpr const char* readings[] = {"shown as both bands", "read as 2.4 GHz", "read as 5 GHz", "read as both bands"};
    return readings[bands];
}

void CheckTypes(const CElementMap& map, const CXmlDocument& document, const XmlElement& connectivity, CFindings& findings)
{
    DWORD meant = bandsNotRead;
    bool bClear = true;
    CWideString strWritten;
    for (const XmlElement* pType = connectivity.pFirstChild; pType; pType = pType->pNext)
    {
        const CWideString strText = TextOf(map, *pType);
        const auto* pMeaning = std::find_if(std::begin(phyMeanings), std::end(phyMeanings),
                                            [&](const PhyMeaning& row) { return row.text == Trimmed(strText); });
        if (pMeaning == std::end(phyMeanings))
            bClear = false;
        else
            meant |= pMeaning->bands;
        strWritten += (strWritten.empty() ? OLESTR("") : OLESTR(" ")) + CWideString(Trimmed(strText));
    }
    WlanProfileBands read = bandsNotRead;
    ReadProfileBands(document, &read);
    if (!bClear || read == bandsNotRead || meant != static_cast<DWORD>(read))
        findings.AddContent(CheckRule::BandReading, bandsPart, *connectivity.pFirstChild,
                            {ValueWithoutKeys(map, connectivity, strWritten), {}, ReadAs(read)});
}

// Storing the bands puts a section before the security and erases the first empty declaration, which is to be the new
// section's. What stands in the section that it replaces is gone by then.
void CheckDeclarations(const CElementMap& map, const XmlElement& parent, const XmlElement& security, CFindings& findings)
{
    for (const XmlElement* pChild = parent.pFirstChild; pChild && pChild->Begin() < security.Begin(); pChild = pChild->pNext)
    {
        if (pChild->pParent == security.pParent && pChild->Name() == connectivityName)
            continue;
        for (const XmlAttribute& attribute : AttributesOf(map.Text(), pChild->openingTag))
            if (attribute.name == OLESTR("xmlns") && attribute.value.empty())
                findings.AddElement(CheckRule::EmptyNamespace, bandsPart, *pChild,
                                    {{}, {}, "it is lost when the bands are stored, and the new section keeps its own"});
        CheckDeclarations(map, *pChild, security, findings);
    }
}
} // namespace

void CheckBands(const CElementMap& map, const CXmlDocument& document, CFindings& findings)
{
    const XmlElement& root = map.Root();
    const XmlElement* pSection = map.Child(&root, sectionName);
    if (pSection && (!PrefixOf(root.Name()).empty() || !PrefixOf(pSection->Name()).empty()))
    {
        findings.AddElement(CheckRule::PrefixedElement, bandsPart, *pSection,
                            {{}, {}, "not found; both bands are shown, and no choice is stored"});
        return;
    }
    const XmlElement* pConnectivity = FindBelow(&root, {sectionName, connectivityName});
    if (pConnectivity && pConnectivity->pFirstChild)
        CheckTypes(map, document, *pConnectivity, findings);
    const XmlElement* pSecurity = FindBelow(&root, {sectionName, securityName});
    if (pSecurity)
        CheckDeclarations(map, root, *pSecurity, findings);
    else
        findings.AddMissing(CheckRule::NoSecuritySection, bandsPart, "MSM", pSection ? *pSection : root,
                            {{}, {}, "the bands are never stored"});
}
