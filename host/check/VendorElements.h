// The elements of a vendor's text as the extension's paths find them, and which of them it has looked at.
#pragma once

#include "host/check/ElementText.h"
#include "host/check/Findings.h"

#include <initializer_list>

using ElementPath = std::initializer_list<CWideView>;

// The first element, in document order, at the path of names from the parent; null when there is none, or no parent. A name
// stands for elements that are written exactly so, without a prefix.
const XmlElement* FindBelow(const XmlElement* pParent, ElementPath path);

class CVendorElements
{
public:
    CVendorElements(const CElementMap& map, const XmlElement& root) : m_map(map), m_root(root)
    {
    }

    const CElementMap& Map() const
    {
        return m_map;
    }
    const XmlElement& Root() const
    {
        return m_root;
    }
    // As the paths that begin with "//": wherever in the text a chain of elements has the names.
    const XmlElement* Anywhere(ElementPath path);
    const XmlElement* Below(const XmlElement* pParent, ElementPath path);
    // Whether one of the two has given the element, or one below it.
    bool IsUsed(const XmlElement& element) const;

private:
    const XmlElement* Used(const XmlElement* pElement);

    const CElementMap& m_map;
    const XmlElement& m_root;
    std::vector<const XmlElement*> m_used;
};
