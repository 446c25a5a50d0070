#include "Path.h"

namespace platform::msxml3
{
namespace
{
// Of a large document's nodes, few have the name, and the namespace lies in another line of the processor's cache.
bool HasName(const xmlNode& node, const std::string& name) noexcept
{
    return node.type == XML_ELEMENT_NODE && xmlStrEqual(node.name, Units(name)) && (!node.ns || !node.ns->prefix);
}

// The next node in document order below the top; null at the end.
xmlNode* NextNode(xmlNode* pNode, const xmlNode* pTop) noexcept
{
    if (pNode->children)
        return pNode->children;
    while (pNode != pTop && !pNode->next)
        pNode = pNode->parent;
    return pNode == pTop ? nullptr : pNode->next;
}
} // namespace

std::optional<CPath> CPath::Parse(std::u16string_view query)
{
    CPath path;
    path.m_bFromNode = !query.starts_with(u'/');
    path.m_bAnywhere = query.starts_with(u"//");
    query.remove_prefix(path.m_bFromNode ? 0 : path.m_bAnywhere ? 2 : 1);
    for (;;)
    {
        const auto nSlash = query.find(u'/');
        auto step = ToPlainName(query.substr(0, nSlash));
        if (!step)
            return std::nullopt;
        path.m_steps.push_back(std::move(*step));
        if (nSlash == query.npos)
            return path;
        query.remove_prefix(nSlash + 1);
    }
}

xmlNode* CPath::FindFrom(xmlNode& node) const noexcept
{
    xmlNode* const pTop = m_bFromNode ? &node : reinterpret_cast<xmlNode*>(node.doc);
    xmlNode* pFound = pTop;
    do
        pFound = NextNode(pFound, pTop);
    while (pFound && !Matches(pFound, pTop));
    return pFound;
}

// Compares the steps from the last one upwards, so that one walk in document order serves all forms.
bool CPath::Matches(const xmlNode* pNode, const xmlNode* pTop) const noexcept
{
    for (auto step = m_steps.rbegin(); step != m_steps.rend(); ++step, pNode = pNode->parent)
    {
        if (pNode == pTop || !HasName(*pNode, *step))
            return false;
    }
    return m_bAnywhere || pNode == pTop;
}
} // namespace platform::msxml3
