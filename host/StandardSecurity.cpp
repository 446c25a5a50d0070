#include "host/StandardSecurity.h"

#include "host/ElementMap.h"

namespace
{
CWideString ChildText(const CElementMap& map, const XmlElement* pParent, CWideView name)
{
    const XmlElement* pChild = map.Child(pParent, name);
    const CWideView content = pChild ? map.Content(*pChild) : CWideView();
    const std::size_t nFirst = content.find_first_not_of(xmlWhiteSpace);
    if (nFirst == CWideView::npos)
        return {};
    return CWideString(content.substr(nFirst, content.find_last_not_of(xmlWhiteSpace) + 1 - nFirst));
}
} // namespace

StandardSecurity StandardSecurityOf(CWideView profile)
{
    const CElementMap map(profile);
    const XmlElement* pSecurity = map.Child(map.Child(&map.Root(), OLESTR("MSM")), OLESTR("security"));
    const XmlElement* pElement = map.Child(pSecurity, OLESTR("authEncryption"));
    return {ChildText(map, pElement, OLESTR("authentication")), ChildText(map, pElement, OLESTR("encryption"))};
}
