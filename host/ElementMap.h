// The elements of an XML text with their positions, down to a depth.
#pragma once

#include "host/XmlScanner.h"

#include <vector>

struct XmlElement
{
    CWideView name; // with the prefix
    const XmlElement* pParent = nullptr;
    XmlToken openingTag;
    std::size_t nContentEnd = 0; // where the end tag begins; for an empty tag its end
    std::size_t nEnd = 0;

    bool IsEmptyTag() const
    {
        return openingTag.kind == XmlTokenKind::EmptyTag;
    }
    std::size_t Begin() const
    {
        return openingTag.nBegin;
    }
    std::size_t ContentBegin() const
    {
        return openingTag.nEnd;
    }
};

class CElementMap
{
public:
    // The text is borrowed. Throws CHostError for a text whose tags do not match up.
    CElementMap(CWideView text, std::size_t nMaxDepth);
    CElementMap(const CElementMap&) = delete;
    CElementMap& operator=(const CElementMap&) = delete;

    CWideView Text() const
    {
        return m_text;
    }
    const XmlElement& Root() const
    {
        return m_elements.front();
    }
    // The first child element of the local name, in whatever namespace; null when there is none.
    const XmlElement* Child(const XmlElement& parent, CWideView localName) const;
    const XmlElement* FirstChild(const XmlElement& parent) const;
    const XmlElement* LastChild(const XmlElement& parent) const;

private:
    void Count(std::size_t nMaxDepth);
    void Fill(std::size_t nMaxDepth);

    CWideView m_text;
    std::vector<XmlElement> m_elements; // in document order; never grows once filled, so that pointers into it hold
};
