#include "host/ElementMap.h"

#include "host/HostError.h"

CElementMap::CElementMap(CWideView text, std::size_t nMaxDepth) : m_text(text)
{
    Count(nMaxDepth);
    Fill(nMaxDepth);
    if (m_elements.empty())
        throw CHostError("there is no root element");
}

// Makes room for all elements beforehand.
void CElementMap::Count(std::size_t nMaxDepth)
{
    CXmlScanner scanner(m_text);
    std::size_t nDepth = 0;
    std::size_t cElements = 0;
    for (XmlToken token; scanner.Next(token);)
    {
        if (token.kind == XmlTokenKind::EndTag && nDepth-- == 0)
            throw CHostError("an end tag has no start tag");
        if (token.kind != XmlTokenKind::StartTag && token.kind != XmlTokenKind::EmptyTag)
            continue;
        cElements += nDepth < nMaxDepth ? 1 : 0;
        nDepth += token.kind == XmlTokenKind::StartTag ? 1 : 0;
    }
    if (nDepth != 0)
        throw CHostError("a start tag has no end tag");
    m_elements.reserve(cElements);
}

void CElementMap::Fill(std::size_t nMaxDepth)
{
    CXmlScanner scanner(m_text);
    XmlElement* pOpen = nullptr;
    std::vector<XmlElement*> open;
    std::size_t nDepth = 0;
    for (XmlToken token; scanner.Next(token);)
    {
        const bool bOpens = token.kind == XmlTokenKind::StartTag;
        if ((bOpens || token.kind == XmlTokenKind::EmptyTag) && nDepth < nMaxDepth)
        {
            m_elements.push_back({token.name, pOpen, token, token.nEnd, token.nEnd});
            if (bOpens)
                open.push_back(pOpen = &m_elements.back());
        }
        nDepth += bOpens ? 1 : 0;
        if (token.kind != XmlTokenKind::EndTag)
            continue;
        if (--nDepth >= nMaxDepth)
            continue;
        pOpen->nContentEnd = token.nBegin;
        pOpen->nEnd = token.nEnd;
        open.pop_back();
        pOpen = open.empty() ? nullptr : open.back();
    }
}

const XmlElement* CElementMap::Child(const XmlElement& parent, CWideView localName) const
{
    for (const XmlElement& element : m_elements)
        if (element.pParent == &parent && LocalNameOf(element.name) == localName)
            return &element;
    return nullptr;
}

const XmlElement* CElementMap::FirstChild(const XmlElement& parent) const
{
    for (const XmlElement& element : m_elements)
        if (element.pParent == &parent)
            return &element;
    return nullptr;
}

const XmlElement* CElementMap::LastChild(const XmlElement& parent) const
{
    const XmlElement* pLast = nullptr;
    for (const XmlElement& element : m_elements)
        if (element.pParent == &parent)
            pLast = &element;
    return pLast;
}
