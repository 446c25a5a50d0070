#include "host/IhvElement.h"

#include "host/HostError.h"
#include "host/ProfileLayout.h"
#include "profile/IhvProfile.h"

#include <set>

namespace
{
constexpr CWideView vendorElement = OLESTR("CCX");
constexpr CWideView ihvElement = OLESTR("IHV");

// Who made the IHV element, where this program had to make it: an identifier of nobody (locally administered).
constexpr CWideView inventedOui = OLESTR("024b4f");
constexpr CWideView inventedType = OLESTR("00");

// The children of the IHV element, in the order of the profile's schema.
constexpr CWideView ihvChildren[] = {OLESTR("OUIHeader"), OLESTR("connectivity"), OLESTR("security"), OLESTR("useMSOneX")};
constexpr std::size_t nHeader = 0;

std::size_t ChildIndex(VendorPlace place)
{
    return place == VendorPlace::Connectivity ? 1 : 2;
}

CWideView NamespacePrefix(CWideView attributeName)
{
    constexpr CWideView declaration = OLESTR("xmlns:");
    return attributeName.starts_with(declaration) ? attributeName.substr(declaration.size()) : CWideView{};
}

// Every word before a colon: a prefix may also stand in an attribute's value.
std::set<CWideView> PrefixesIn(CWideView text)
{
    std::set<CWideView> prefixes;
    for (std::size_t nBegin = 0, nColon = 0; (nColon = text.find(OLESTR(':'), nBegin)) != CWideView::npos; nBegin = nColon + 1)
    {
        const CWideView before = text.substr(nBegin, nColon - nBegin);
        prefixes.insert(before.substr(before.find_last_of(OLESTR(" \t\r\n<>/=\"'")) + 1));
    }
    return prefixes;
}

// The declarations of prefixes that the element uses and that stand on elements around it. Without them its text
// would not be a document of its own.
CWideString MissingDeclarations(CWideView profile, const XmlElement& element)
{
    // Those that no element so far declares.
    std::set<CWideView> wanted = PrefixesIn(profile.substr(element.Begin(), element.nEnd - element.Begin()));
    CWideString strDeclarations;
    for (const XmlElement* pScope = &element; pScope; pScope = pScope->pParent)
    {
        for (const XmlAttribute& attribute : AttributesOf(profile, pScope->openingTag))
        {
            const CWideView prefix = NamespacePrefix(attribute.name);
            if (prefix.empty() || wanted.erase(prefix) == 0 || pScope == &element)
                continue;
            const std::size_t nInner = pScope->openingTag.nBegin + 1 + pScope->Name().size();
            strDeclarations += OLESTR(" ");
            const CWideView written = profile.substr(nInner + attribute.nBegin, attribute.nEnd - attribute.nBegin);
            strDeclarations += written.substr(written.find_first_not_of(xmlWhiteSpace));
        }
    }
    return strDeclarations;
}

// The elements that lead to the vendor's text; those that the profile lacks are null.
struct VendorPath
{
    const XmlElement* pIhv;
    const XmlElement* pPlace;
    const XmlElement* pText;
    const XmlElement* pForeign; // the first one that is not the profile's or the vendor's, but another's of the same local name
};

VendorPath PathTo(const CElementMap& map, VendorPlace place)
{
    VendorPath path{};
    path.pIhv = map.Child(&map.Root(), ihvElement);
    path.pPlace = map.Child(path.pIhv, ihvChildren[ChildIndex(place)]);
    path.pText = map.Child(path.pPlace, vendorElement);
    for (const XmlElement* pElement : {path.pIhv, path.pPlace, path.pText})
    {
        const CWideView space = pElement ? map.NamespaceOf(*pElement) : CWideView();
        const bool bVendors = pElement == path.pText && (space.empty() || space == szCcxNamespaceUri);
        if (pElement && !path.pForeign && !bVendors && space != map.NamespaceOf(*pElement->pParent))
            path.pForeign = pElement;
    }
    return path;
}

// The last child of the IHV element that stands before the place in the schema's order.
const XmlElement* Predecessor(const CElementMap& map, const XmlElement& ihv, VendorPlace place)
{
    for (std::size_t n = ChildIndex(place); n-- > 0;)
        if (const XmlElement* pChild = map.Child(&ihv, ihvChildren[n]))
            return pChild;
    return nullptr;
}

// The elements to be made below the IHV element: the place, with the header before it where that is missing.
std::vector<NewElement> MissingIhvChildren(VendorPlace place, CWideView prefix, CWideView vendorText, bool bWithHeader)
{
    std::vector<NewElement> children;
    if (bWithHeader)
        children.push_back({QualifiedName(prefix, ihvChildren[nHeader]),
                            {},
                            {{QualifiedName(prefix, OLESTR("OUI")), CWideString(inventedOui), {}},
                             {QualifiedName(prefix, OLESTR("type")), CWideString(inventedType), {}}}});
    children.push_back({QualifiedName(prefix, ihvChildren[ChildIndex(place)]), {}, {{{}, CWideString(vendorText), {}}}});
    return children;
}
} // namespace

const XmlElement* VendorElement(const CElementMap& map, VendorPlace place)
{
    const VendorPath path = PathTo(map, place);
    return path.pForeign ? nullptr : path.pText;
}

CWideString VendorText(const CElementMap& map, const XmlElement& element)
{
    CWideString strText(map.Text().substr(element.Begin(), element.nEnd - element.Begin()));
    strText.insert(1 + element.Name().size(), MissingDeclarations(map.Text(), element));
    return strText;
}

std::optional<CWideString> VendorText(CWideView profile, VendorPlace place)
{
    const CElementMap map(profile);
    const XmlElement* pElement = VendorElement(map, place);
    return pElement ? std::optional(VendorText(map, *pElement)) : std::nullopt;
}

CWideString WithVendorText(CWideView profile, VendorPlace place, CWideView vendorText)
{
    const CElementMap map(profile);
    const CProfileLayout layout(map);
    const CWideString strNew = layout.WithOwnLineEnds(vendorText);

    const VendorPath path = PathTo(map, place);
    if (path.pForeign)
        throw CHostError("the IHV element belongs to another vendor: " + Utf8Of(path.pForeign->Name()) +
                         " is of the namespace \"" + Utf8Of(map.NamespaceOf(*path.pForeign)) + "\"");
    if (path.pText)
        return CWideString(profile).replace(path.pText->Begin(), path.pText->nEnd - path.pText->Begin(), strNew);

    if (path.pPlace)
    {
        if (const auto others = map.Children(*path.pPlace); !others.empty())
            throw CHostError("the IHV element belongs to another vendor: " + Utf8Of(path.pPlace->Name()) + " holds " +
                             Utf8Of(others.front()->Name()));
        return layout.Insert(*path.pPlace, nullptr, {{{}, strNew, {}}});
    }

    if (path.pIhv)
    {
        const bool bWithHeader = map.Child(path.pIhv, ihvChildren[nHeader]) == nullptr;
        return layout.Insert(*path.pIhv, Predecessor(map, *path.pIhv, place),
                             MissingIhvChildren(place, PrefixOf(path.pIhv->Name()), strNew, bWithHeader));
    }

    // Elements of later additions to the profile form follow the IHV element, so it goes right behind MSM.
    const XmlElement& root = map.Root();
    const CWideView prefix = PrefixOf(root.Name());
    const XmlElement* pBefore = map.Child(&root, OLESTR("MSM"));
    if (const auto children = map.Children(root); !pBefore && !children.empty())
        pBefore = children.back();
    return layout.Insert(root, pBefore,
                         {{QualifiedName(prefix, ihvElement), {}, MissingIhvChildren(place, prefix, strNew, true)}});
}
