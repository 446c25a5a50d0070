// An element's attributes.
#pragma once

#include "DispatchObject.h"
#include "NodeHolder.h"

namespace platform::msxml3
{
// Shows the attributes as they are at each call, namespace declarations among them.
class CAttributeMap final : public CDispatchObject<IXMLDOMNamedNodeMap, IID_IXMLDOMNamedNodeMap>
{
public:
    CAttributeMap(std::shared_ptr<CTree> tree, Node& element) noexcept;

    STDMETHODIMP getNamedItem(BSTR bstrName, IXMLDOMNode** ppNode) override;
    STDMETHODIMP get_item(LONG lIndex, IXMLDOMNode** ppNode) override;
    STDMETHODIMP get_length(LONG* plLength) override;

private:
    std::shared_ptr<CTree> m_tree;
    Node& m_element;
};
} // namespace platform::msxml3
