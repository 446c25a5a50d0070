#include "host/OwnSecurity.h"

#include "host/ElementMap.h"

namespace
{
// WLANProfile, MSM, security, authEncryption and its children.
constexpr std::size_t securityDepth = 5;
constexpr CWideView pathToSecurity[] = {OLESTR("MSM"), OLESTR("security"), OLESTR("authEncryption")};

CWideString ChildText(const CElementMap& map, const XmlElement& parent, CWideView name)
{
    const XmlElement* pChild = map.Child(parent, name);
    if (!pChild || pChild->IsEmptyTag())
        return {};
    const CWideView content = map.Text().substr(pChild->ContentBegin(), pChild->nContentEnd - pChild->ContentBegin());
    const std::size_t nFirst = content.find_first_not_of(xmlWhiteSpace);
    return nFirst == CWideView::npos ? CWideString()
                                     : CWideString(content.substr(nFirst, content.find_last_not_of(xmlWhiteSpace) + 1 - nFirst));
}
} // namespace

OwnSecurity OwnSecurityOf(CWideView profile)
{
    const CElementMap map(profile, securityDepth);
    const XmlElement* pElement = &map.Root();
    for (const CWideView name : pathToSecurity)
        if (pElement)
            pElement = map.Child(*pElement, name);
    if (!pElement)
        return {};
    return {ChildText(map, *pElement, OLESTR("authentication")), ChildText(map, *pElement, OLESTR("encryption"))};
}
