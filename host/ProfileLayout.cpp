#include "host/ProfileLayout.h"

namespace
{
constexpr CWideView lineEndCharacters = OLESTR("\r\n");

CWideView FirstLineEnd(CWideView text)
{
    const std::size_t nBegin = text.find_first_of(lineEndCharacters);
    if (nBegin == CWideView::npos)
        return {};
    return text.substr(nBegin, text.substr(nBegin).starts_with(lineEndCharacters) ? 2 : 1);
}

CWideView IndentOf(CWideView strBreak)
{
    return strBreak.substr(FirstLineEnd(strBreak).size());
}
} // namespace

CWideString QualifiedName(CWideView prefix, CWideView localName)
{
    return prefix.empty() ? CWideString(localName) : CWideString(prefix) + OLESTR(":") + CWideString(localName);
}

CProfileLayout::CProfileLayout(const CElementMap& map) : m_map(map), m_lineEnd(FirstLineEnd(map.Text()))
{
    const auto children = map.Children(map.Root());
    if (children.empty())
        return;
    const CWideView outer = IndentOf(BreakBefore(map.Root()));
    const CWideView inner = IndentOf(BreakBefore(*children.front()));
    m_strIndent = inner.substr(inner.starts_with(outer) ? outer.size() : 0);
}

CWideString CProfileLayout::Insert(const XmlElement& parent, const XmlElement* pAfter,
                                   const std::vector<NewElement>& children) const
{
    const auto siblings = m_map.Children(parent);
    const CWideString strBreak =
        siblings.empty() ? Deeper(BreakBefore(parent)) : CWideString(BreakBefore(pAfter ? *pAfter : *siblings.front()));
    CWideString strNew;
    for (const NewElement& child : children)
    {
        strNew += strBreak;
        Write(child, strBreak, strNew);
    }
    const bool bNothingInside = m_map.Content(parent).empty();
    if (bNothingInside && !strBreak.empty())
        strNew += BreakBefore(parent);

    CWideString strText(m_map.Text());
    if (!parent.IsEmptyTag())
        return strText.insert(pAfter ? pAfter->nEnd : parent.ContentBegin(), strNew);

    strNew += OLESTR("</") + CWideString(parent.Name()) + OLESTR(">");
    strText.insert(parent.nEnd, strNew);
    return strText.erase(parent.nEnd - 2, 1); // the slash of the empty tag
}

CWideString CProfileLayout::WithOwnLineEnds(CWideView text) const
{
    CWideString strText;
    while (!text.empty())
    {
        const std::size_t nLine = text.find_first_of(lineEndCharacters);
        strText += text.substr(0, nLine);
        if (nLine == CWideView::npos)
            break;
        const CWideView lineEnd = FirstLineEnd(text);
        strText += m_lineEnd.empty() ? lineEnd : m_lineEnd;
        text.remove_prefix(nLine + lineEnd.size());
    }
    return strText;
}

// The line end and the indentation right before the element; empty when it does not begin its line.
CWideView CProfileLayout::BreakBefore(const XmlElement& element) const
{
    const CWideView before = m_map.Text().substr(0, element.Begin());
    std::size_t nBegin = before.find_last_not_of(OLESTR(" \t"));
    if (nBegin == CWideView::npos || lineEndCharacters.find(before[nBegin]) == CWideView::npos)
        return {};
    if (nBegin > 0 && before.substr(nBegin - 1).starts_with(lineEndCharacters))
        --nBegin;
    return before.substr(nBegin);
}

CWideString CProfileLayout::Deeper(CWideView strBreak) const
{
    return strBreak.empty() ? CWideString() : CWideString(strBreak) + m_strIndent;
}

void CProfileLayout::Write(const NewElement& element, CWideView strBreak, CWideString& strText) const
{
    if (element.strName.empty())
    {
        strText += element.strText;
        return;
    }
    strText += OLESTR("<") + element.strName + OLESTR(">") + element.strText;
    const CWideString strInner = Deeper(strBreak);
    for (const NewElement& child : element.children)
    {
        strText += strInner;
        Write(child, strInner, strText);
    }
    if (!element.children.empty())
        strText += strBreak;
    strText += OLESTR("</") + element.strName + OLESTR(">");
}
