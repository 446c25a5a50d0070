// The nodes that a query found.
#pragma once

#include "DispatchObject.h"
#include "NodeHolder.h"

namespace platform::msxml3
{
// Holds what was found when the query ran; later edits of the document do not change it.
class CNodeList final : public CDispatchObject<IXMLDOMNodeList, IID_IXMLDOMNodeList>
{
public:
    CNodeList(std::shared_ptr<CTree> tree, std::vector<Node*> nodes) noexcept;

    STDMETHODIMP get_item(LONG lIndex, IXMLDOMNode** ppNode) override;
    STDMETHODIMP get_length(LONG* plLength) override;

private:
    std::shared_ptr<CTree> m_tree;
    std::vector<Node*> m_nodes;
};

// The node object at an index; S_FALSE outside the list.
HRESULT GiveItem(const std::shared_ptr<CTree>& tree, const std::vector<Node*>& nodes, LONG lIndex, IXMLDOMNode** ppNode);
} // namespace platform::msxml3
