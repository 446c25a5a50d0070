#include "NodeList.h"

#include "Edge.h"
#include "NodeObject.h"

namespace platform::msxml3
{
CNodeList::CNodeList(std::shared_ptr<CTree> tree, std::vector<Node*> nodes) noexcept
    : m_tree(std::move(tree)), m_nodes(std::move(nodes))
{
}

STDMETHODIMP CNodeList::get_item(LONG lIndex, IXMLDOMNode** ppNode)
{
    return Answer("get_item", ppNode, [&] { return GiveItem(m_tree, m_nodes, lIndex, ppNode); });
}

STDMETHODIMP CNodeList::get_length(LONG* plLength)
{
    return Answer("get_length", plLength, [&] { return *plLength = static_cast<LONG>(m_nodes.size()), S_OK; });
}

HRESULT GiveItem(const std::shared_ptr<CTree>& tree, const std::vector<Node*>& nodes, LONG lIndex, IXMLDOMNode** ppNode)
{
    if (lIndex < 0 || static_cast<std::size_t>(lIndex) >= nodes.size())
        return S_FALSE;
    *ppNode = NewNodeObject(tree, *nodes[static_cast<std::size_t>(lIndex)]);
    return S_OK;
}
} // namespace platform::msxml3
