// The node interface over a held node.
#pragma once

#include "DispatchObject.h"
#include "Edge.h"
#include "NodeHolder.h"
#include "Writer.h"

namespace platform::msxml3
{
// New objects, each with one reference; they throw when memory runs out.
IXMLDOMNode* NewNodeObject(const std::shared_ptr<CTree>& tree, Node& node);
IXMLDOMElement* NewElementObject(const std::shared_ptr<CTree>& tree, Node& element);
IXMLDOMDocument* NewDocumentObject(const std::shared_ptr<CTree>& tree);

template <class Interface, const IID&... identifiers>
class CNodeObject : public CDispatchObject<Interface, IID_IXMLDOMNode, identifiers...>, public CNodeHolder
{
public:
    using CNodeHolder::CNodeHolder;

    STDMETHODIMP get_nodeName(BSTR* pbstrName) override
    {
        return Answer("get_nodeName", pbstrName, [&] { return GiveText(Held().name, pbstrName); });
    }
    STDMETHODIMP get_nodeValue(VARIANT* pvarValue) override
    {
        return Answer("get_nodeValue", pvarValue, [&] { return Value(pvarValue); });
    }
    STDMETHODIMP get_nodeType(DOMNodeType* pType) override
    {
        return Answer("get_nodeType", pType, [&] { return *pType = Held().type, S_OK; });
    }
    STDMETHODIMP get_parentNode(IXMLDOMNode** ppParent) override
    {
        return Answer("get_parentNode", ppParent, [&] { return Give(Held().pParent, ppParent); });
    }
    STDMETHODIMP get_firstChild(IXMLDOMNode** ppChild) override
    {
        return Answer("get_firstChild", ppChild, [&] { return Give(Held().pFirst, ppChild); });
    }
    STDMETHODIMP get_nextSibling(IXMLDOMNode** ppSibling) override
    {
        return Answer("get_nextSibling", ppSibling, [&] { return Give(Held().pNext, ppSibling); });
    }
    STDMETHODIMP get_attributes(IXMLDOMNamedNodeMap** ppAttributes) override
    {
        return Answer("get_attributes", ppAttributes, [&] { return Attributes(ppAttributes); });
    }
    STDMETHODIMP insertBefore(IXMLDOMNode* pNewChild, VARIANT varRefChild, IXMLDOMNode** ppNewChild) override
    {
        if (ppNewChild)
            *ppNewChild = nullptr;
        return Perform("insertBefore", [&] { return InsertBefore(pNewChild, varRefChild, ppNewChild); });
    }
    STDMETHODIMP removeChild(IXMLDOMNode* pChild, IXMLDOMNode** ppOldChild) override
    {
        if (ppOldChild)
            *ppOldChild = nullptr;
        return Perform("removeChild", [&] { return Remove(pChild, ppOldChild); });
    }
    STDMETHODIMP appendChild(IXMLDOMNode* pNewChild, IXMLDOMNode** ppNewChild) override
    {
        if (ppNewChild)
            *ppNewChild = nullptr;
        return Perform("appendChild", [&] { return Append(pNewChild, ppNewChild); });
    }
    STDMETHODIMP hasChildNodes(VARIANT_BOOL* pbHasChild) override
    {
        return Answer("hasChildNodes", pbHasChild,
                      [&]
                      {
                          *pbHasChild = Held().pFirst ? VARIANT_TRUE : VARIANT_FALSE;
                          return Held().pFirst ? S_OK : S_FALSE;
                      });
    }
    STDMETHODIMP get_ownerDocument(IXMLDOMDocument** ppDocument) override
    {
        return Answer("get_ownerDocument", ppDocument, [&] { return OwnerDocument(ppDocument); });
    }
    STDMETHODIMP get_text(BSTR* pbstrText) override
    {
        return Answer("get_text", pbstrText, [&] { return GiveText(Text(), pbstrText); });
    }
    STDMETHODIMP put_text(BSTR bstrText) override
    {
        return Perform("put_text", [&] { return PutText(TextOf(bstrText)); });
    }
    STDMETHODIMP get_xml(BSTR* pbstrXml) override
    {
        return Answer("get_xml", pbstrXml, [&] { return GiveText(WriteXml(Held()), pbstrXml); });
    }
    STDMETHODIMP selectNodes(BSTR bstrQuery, IXMLDOMNodeList** ppNodes) override
    {
        return Answer("selectNodes", ppNodes, [&] { return bstrQuery ? SelectAll(TextOf(bstrQuery), ppNodes) : E_INVALIDARG; });
    }
    STDMETHODIMP selectSingleNode(BSTR bstrQuery, IXMLDOMNode** ppNode) override
    {
        return Answer("selectSingleNode", ppNode, [&] { return bstrQuery ? Select(TextOf(bstrQuery), ppNode) : E_INVALIDARG; });
    }
    STDMETHODIMP get_namespaceURI(BSTR* pbstrUri) override
    {
        return Answer("get_namespaceURI", pbstrUri, [&] { return NamespaceUri(pbstrUri); });
    }
    STDMETHODIMP get_baseName(BSTR* pbstrName) override
    {
        return Answer("get_baseName", pbstrName, [&] { return BaseName(pbstrName); });
    }
};
} // namespace platform::msxml3
