// The elements of an XML text with their positions.
#pragma once

#include "host/XmlScanner.h"

#include <deque>

struct XmlElement
{
    const XmlElement* pParent;
    XmlToken openingTag;     // with the element's name
    std::size_t nContentEnd; // where the end tag begins; for an empty tag its end
    std::size_t nEnd;
    const XmlElement* pFirstChild = nullptr;
    const XmlElement* pNext = nullptr; // the parent's next child

    CWideView Name() const
    {
        return openingTag.name;
    }
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
    explicit CElementMap(CWideView text);
    CElementMap(const CElementMap&) = delete;
    CElementMap& operator=(const CElementMap&) = delete;

    CWideView Text() const
    {
        return m_text;
    }
    // What is written in the element.
    CWideView Content(const XmlElement& element) const
    {
        return m_text.substr(element.ContentBegin(), element.nContentEnd - element.ContentBegin());
    }
    const XmlElement& Root() const
    {
        return m_elements.front();
    }
    std::vector<const XmlElement*> Children(const XmlElement& parent) const;
    // The namespace that the element's name stands for, as it is written; empty for none.
    CWideView NamespaceOf(const XmlElement& element) const;
    // The first child element of the local name, in whatever namespace; null when there is none, or no parent.
    const XmlElement* Child(const XmlElement* pParent, CWideView localName) const;

private:
    CWideView m_text;
    std::deque<XmlElement> m_elements; // in document order
};
