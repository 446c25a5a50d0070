#include "host/XmlScanner.h"

#include "host/HostError.h"

namespace
{
// The forms of markup that are no tags: told by their first characters, and ending at a fixed text.
struct Delimited
{
    CWideView opening;
    CWideView closing;
};
constexpr Delimited delimited[] = {
    {OLESTR("<!--"), OLESTR("-->")}, {OLESTR("<![CDATA["), OLESTR("]]>")}, {OLESTR("<?"), OLESTR("?>")}};
constexpr const WCHAR* endOfName = OLESTR(" \t\r\n/>");

bool IsQuote(WCHAR ch)
{
    return ch == OLESTR('"') || ch == OLESTR('\'');
}

std::size_t Behind(CWideView text, CWideView closing, std::size_t nPosition)
{
    const std::size_t nFound = text.find(closing, nPosition);
    if (nFound == CWideView::npos)
        throw CHostError("a piece of markup does not end");
    return nFound + closing.size();
}

// A quoted value may hold the closing character.
std::size_t EndOfTag(CWideView text, std::size_t nPosition)
{
    for (;; ++nPosition)
    {
        while (nPosition < text.size() && text[nPosition] != OLESTR('>') && !IsQuote(text[nPosition]))
            ++nPosition;
        if (nPosition >= text.size() || text[nPosition] == OLESTR('>'))
            return Behind(text, OLESTR(">"), nPosition);
        nPosition = Behind(text, text.substr(nPosition, 1), nPosition + 1) - 1;
    }
}
} // namespace

bool CXmlScanner::Next(XmlToken& token)
{
    if (m_nPosition == m_text.size())
        return false;
    token = XmlToken{};
    token.nBegin = m_nPosition;
    if (m_text[m_nPosition] == OLESTR('<'))
    {
        ScanMarkup(token);
    }
    else
    {
        const std::size_t nMarkup = m_text.find(OLESTR('<'), m_nPosition);
        token.nEnd = nMarkup == CWideView::npos ? m_text.size() : nMarkup;
    }
    m_nPosition = token.nEnd;
    return true;
}

void CXmlScanner::ScanMarkup(XmlToken& token) const
{
    const CWideView rest = m_text.substr(m_nPosition);
    for (const Delimited& form : delimited)
        if (rest.starts_with(form.opening))
        {
            token.nEnd = Behind(m_text, form.closing, m_nPosition + form.opening.size());
            return;
        }
    const bool bEndTag = rest.starts_with(OLESTR("</"));
    const std::size_t nName = m_nPosition + (bEndTag ? 2 : 1);
    token.nEnd = EndOfTag(m_text, nName);
    token.name = m_text.substr(nName, m_text.find_first_of(endOfName, nName) - nName);
    if (bEndTag)
        token.kind = XmlTokenKind::EndTag;
    else
        token.kind = m_text[token.nEnd - 2] == OLESTR('/') ? XmlTokenKind::EmptyTag : XmlTokenKind::StartTag;
}

std::vector<XmlAttribute> ScanAttributes(CWideView inner)
{
    std::vector<XmlAttribute> attributes;
    for (std::size_t nPosition = 0;;)
    {
        XmlAttribute attribute;
        attribute.nBegin = nPosition;
        const std::size_t nName = inner.find_first_not_of(xmlWhiteSpace, nPosition);
        const std::size_t nEquals = nName == CWideView::npos ? nName : inner.find(OLESTR('='), nName);
        if (nEquals == CWideView::npos)
            return attributes;
        attribute.name = inner.substr(nName, nEquals - nName);
        attribute.name = attribute.name.substr(0, attribute.name.find_first_of(xmlWhiteSpace));
        const std::size_t nQuote = inner.find_first_not_of(xmlWhiteSpace, nEquals + 1);
        if (nQuote == CWideView::npos || !IsQuote(inner[nQuote]))
            return attributes;
        const std::size_t nClosing = inner.find(inner[nQuote], nQuote + 1);
        if (nClosing == CWideView::npos)
            return attributes;
        attribute.value = inner.substr(nQuote + 1, nClosing - nQuote - 1);
        attribute.nEnd = nPosition = nClosing + 1;
        attributes.push_back(attribute);
    }
}

std::vector<XmlAttribute> AttributesOf(CWideView text, const XmlToken& tag)
{
    const std::size_t nInner = tag.nBegin + 1 + tag.name.size();
    return ScanAttributes(text.substr(nInner, tag.nEnd - 1 - nInner));
}

CWideView PrefixOf(CWideView name)
{
    const std::size_t nColon = name.find(OLESTR(':'));
    return nColon == CWideView::npos ? CWideView{} : name.substr(0, nColon);
}

CWideView LocalNameOf(CWideView name)
{
    return name.substr(name.find(OLESTR(':')) + 1);
}
