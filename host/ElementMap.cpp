#include "host/ElementMap.h"

#include "host/HostError.h"

CElementMap::CElementMap(CWideView text) : m_text(text)
{
    struct Open
    {
        XmlElement* pElement;
        XmlElement* pLastChild = nullptr;
    };
    CXmlScanner scanner(m_text);
    std::vector<Open> open;
    for (XmlToken token; scanner.Next(token);)
    {
        if (token.kind == XmlTokenKind::EndTag)
        {
            if (open.empty())
                throw CHostError("an end tag has no start tag");
            open.back().pElement->nContentEnd = token.nBegin;
            open.back().pElement->nEnd = token.nEnd;
            open.pop_back();
        }
        else if (token.kind != XmlTokenKind::Text)
        {
            m_elements.push_back({open.empty() ? nullptr : open.back().pElement, token, token.nEnd, token.nEnd});
            XmlElement* const pElement = &m_elements.back();
            if (!open.empty())
            {
                Open& parent = open.back();
                (parent.pLastChild ? parent.pLastChild->pNext : parent.pElement->pFirstChild) = pElement;
                parent.pLastChild = pElement;
            }
            if (token.kind == XmlTokenKind::StartTag)
                open.push_back({pElement});
        }
    }
    if (m_elements.empty() || !open.empty())
        throw CHostError("a start tag has no end tag");
}

std::vector<const XmlElement*> CElementMap::Children(const XmlElement& parent) const
{
    std::vector<const XmlElement*> children;
    for (const XmlElement* pChild = parent.pFirstChild; pChild; pChild = pChild->pNext)
        children.push_back(pChild);
    return children;
}

const XmlElement* CElementMap::Child(const XmlElement* pParent, CWideView localName) const
{
    const XmlElement* pChild = pParent ? pParent->pFirstChild : nullptr;
    while (pChild && LocalNameOf(pChild->Name()) != localName)
        pChild = pChild->pNext;
    return pChild;
}

CWideView CElementMap::NamespaceOf(const XmlElement& element) const
{
    const CWideView prefix = PrefixOf(element.Name());
    const CWideString strDeclaration = OLESTR("xmlns") + (prefix.empty() ? CWideString() : OLESTR(":") + CWideString(prefix));
    for (const XmlElement* pScope = &element; pScope; pScope = pScope->pParent)
        for (const XmlAttribute& attribute : AttributesOf(m_text, pScope->openingTag))
            if (attribute.name == strDeclaration)
                return attribute.value;
    return {};
}
