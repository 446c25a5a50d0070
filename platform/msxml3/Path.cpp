#include "Path.h"

#include "XmlText.h"

namespace platform::msxml3
{
std::optional<CPath> CPath::Parse(std::u16string_view query)
{
    CPath path;
    if (query.starts_with(u"//"))
        path.m_start = Start::Anywhere;
    else if (query.starts_with(u"/"))
        path.m_start = Start::Document;
    query.remove_prefix(path.m_start == Start::Anywhere ? 2 : path.m_start == Start::Document ? 1 : 0);

    for (;;)
    {
        const std::size_t slash = query.find(u'/');
        const std::u16string_view step = query.substr(0, slash);
        if (!IsQualifiedName(step))
            return std::nullopt;
        path.m_steps.emplace_back(step);
        if (slash == std::u16string_view::npos)
            return path;
        query.remove_prefix(slash + 1);
    }
}

Node* CPath::Next(CTree& tree, Node& context, const Node* pLast) const noexcept
{
    Node& top = m_start == Start::Context ? context : tree.Root();
    const Node* pNode = pLast ? pLast : &top;
    for (;;)
    {
        Node* pNext = NextInOrder(*pNode, top);
        if (!pNext || Matches(*pNext, top))
            return pNext;
        pNode = pNext;
    }
}

// Compares the steps from the last one upwards, so that one walk in document order serves all forms.
bool CPath::Matches(const Node& node, const Node& top) const noexcept
{
    const Node* pNode = &node;
    for (auto step = m_steps.rbegin(); step != m_steps.rend(); ++step)
    {
        if (!pNode || pNode == &top || pNode->type != NODE_ELEMENT || pNode->name != *step)
            return false;
        pNode = pNode->pParent;
    }
    return m_start == Start::Anywhere || pNode == &top;
}
} // namespace platform::msxml3
