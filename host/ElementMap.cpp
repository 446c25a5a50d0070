#include "host/ElementMap.h"

#include "host/HostError.h"

CElementMap::CElementMap(CWideView text) : m_text(text)
{
    CXmlScanner scanner(m_text);
    std::vector<XmlElement*> open;
    for (XmlToken token; scanner.Next(token);)
    {
        if (token.kind == XmlTokenKind::EndTag)
        {
            if (open.empty())
                throw CHostError("an end tag has no start tag");
            open.back()->nContentEnd = token.nBegin;
            open.back()->nEnd = token.nEnd;
            open.pop_back();
        }
        else if (token.kind != XmlTokenKind::Text)
        {
            m_elements.push_back({open.empty() ? nullptr : open.back(), token, token.nEnd, token.nEnd});
            if (token.kind == XmlTokenKind::StartTag)
                open.push_back(&m_elements.back());
        }
    }
    if (m_elements.empty() || !open.empty())
        throw CHostError("a start tag has no end tag");
}

std::vector<const XmlElement*> CElementMap::Children(const XmlElement& parent) const
{
    std::vector<const XmlElement*> children;
    for (const XmlElement& element : m_elements)
        if (element.pParent == &parent)
            children.push_back(&element);
    return children;
}

const XmlElement* CElementMap::Child(const XmlElement* pParent, CWideView localName) const
{
    for (const XmlElement& element : m_elements)
        if (pParent && element.pParent == pParent && LocalNameOf(element.Name()) == localName)
            return &element;
    return nullptr;
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
