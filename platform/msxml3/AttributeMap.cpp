#include "AttributeMap.h"

#include "Edge.h"
#include "NodeList.h"
#include "NodeObject.h"

namespace platform::msxml3
{
CAttributeMap::CAttributeMap(std::shared_ptr<CTree> tree, Node& element) noexcept : m_tree(std::move(tree)), m_element(element)
{
}

STDMETHODIMP CAttributeMap::getNamedItem(BSTR bstrName, IXMLDOMNode** ppNode)
{
    return Answer("getNamedItem", ppNode,
                  [&]
                  {
                      Node* const pAttribute = FindAttribute(m_element, TextOf(bstrName));
                      if (!pAttribute)
                          return S_FALSE;
                      *ppNode = NewNodeObject(m_tree, *pAttribute);
                      return S_OK;
                  });
}

STDMETHODIMP CAttributeMap::get_item(LONG lIndex, IXMLDOMNode** ppNode)
{
    return Answer("get_item", ppNode, [&] { return GiveItem(m_tree, m_element.attributes, lIndex, ppNode); });
}

STDMETHODIMP CAttributeMap::get_length(LONG* plLength)
{
    return Answer("get_length", plLength, [&] { return *plLength = static_cast<LONG>(m_element.attributes.size()), S_OK; });
}
} // namespace platform::msxml3
