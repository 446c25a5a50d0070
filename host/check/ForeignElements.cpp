#include "host/check/ForeignElements.h"

#include "host/check/KnownElements.h"
#include "values/Utf8Text.h"

#include <algorithm>

namespace
{
bool Holds(const std::vector<CWideView>& names, CWideView name)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

class CForeignElements
{
public:
    CForeignElements(const CVendorElements& elements, VendorPlace place, CFindings& findings)
        : m_elements(elements), m_place(place), m_findings(findings),
          m_part(place == VendorPlace::Connectivity ? ProfilePart::Connection : ProfilePart::Security)
    {
    }

    void Visit(const XmlElement& parent, const CWideString& strPath)
    {
        const std::vector<CWideView> known = KnownBelow(m_place, strPath);
        // Below what holds no elements, text is all that is looked at.
        if (known.empty())
            return;
        std::vector<CWideView> seen; // of the known names
        for (const XmlElement* pChild = parent.pFirstChild; pChild; pChild = pChild->pNext)
        {
            if (!Holds(known, pChild->Name()))
            {
                if (!m_elements.IsUsed(*pChild))
                    SayUnknown(*pChild, strPath, known);
                continue;
            }
            if (!Holds(seen, pChild->Name()))
                seen.push_back(pChild->Name());
            else if (!m_elements.IsUsed(*pChild))
                Add(CheckRule::SecondElement, *pChild, "the first one counts");
            Visit(*pChild, strPath + (strPath.empty() ? OLESTR("") : OLESTR("/")) + CWideString(pChild->Name()));
        }
    }

private:
    void Add(CheckRule rule, const XmlElement& element, std::string strEffect)
    {
        m_findings.AddElement(rule, m_part, element, {{}, {}, std::move(strEffect)});
    }

    void SayUnknown(const XmlElement& element, CWideView path, const std::vector<CWideView>& known)
    {
        const CWideView name = element.Name();
        const VendorPlace other = m_place == VendorPlace::Connectivity ? VendorPlace::Security : VendorPlace::Connectivity;
        if (path.empty() && Holds(KnownBelow(other, {}), name))
            return Add(CheckRule::OtherEntrysElement, element,
                       std::string("not read; its place is IHV/") +
                           (other == VendorPlace::Security ? "security" : "connectivity"));
        if (!PrefixOf(name).empty())
            return Add(CheckRule::PrefixedElement, element, namesWithPrefix);
        const CWideView nearest = NearestName(name, known);
        Add(CheckRule::UnknownElement, element,
            nearest.empty()                ? "not read"
            : IsSameButCase(name, nearest) ? "not read; it is written " + Utf8Of(nearest)
                                           : "not read; the nearest known name is " + Utf8Of(nearest));
    }

    const CVendorElements& m_elements;
    VendorPlace m_place;
    CFindings& m_findings;
    ProfilePart m_part;
};
} // namespace

void CheckForeignElements(const CVendorElements& elements, VendorPlace place, CFindings& findings)
{
    CForeignElements(elements, place, findings).Visit(elements.Root(), {});
}
