#include "NodeObject.h"

#include "Boundary.h"
#include "CountedObject.h"
#include "Path.h"
#include "Writer.h"

namespace platform::msxml3
{
namespace
{
// As Answer, for an operation that hands its child on through an out parameter, which may be missing.
template <class Operation>
HRESULT Edit(const char* szFunction, IXMLDOMNode* pChild, IXMLDOMNode** ppChild, Operation operation) noexcept
{
    const HRESULT hr = Perform(szFunction, operation);
    if (ppChild)
        *ppChild = hr == S_OK ? pChild : nullptr;
    if (ppChild && *ppChild)
        pChild->AddRef();
    return hr;
}

// Every kind of node: elements have one operation more than the others, which do not show it.
class CNodeObject final : public CCountedObject<IXMLDOMElement, IID_IXMLDOMNode, IID_IXMLDOMElement>
{
public:
    CNodeObject(std::shared_ptr<CTree> tree, xmlNode& node) noexcept : m_tree(std::move(tree)), m_node(node)
    {
    }

    STDMETHODIMP QueryInterface(REFIID riid, void** ppvObject) override
    {
        if (ppvObject && riid == IID_IXMLDOMElement && m_node.type != XML_ELEMENT_NODE)
            return *ppvObject = nullptr, E_NOINTERFACE;
        return CCountedObject::QueryInterface(riid, ppvObject);
    }
    STDMETHODIMP get_nodeName(BSTR* pbstrName) override
    {
        return Answer("get_nodeName", pbstrName,
                      [&]
                      {
                          const bool bHasPrefix = m_node.type == XML_ELEMENT_NODE && m_node.ns && m_node.ns->prefix;
                          const auto prefix = bHasPrefix ? FromLibrary(m_node.ns->prefix) + u":" : std::u16string();
                          return GiveText(prefix + FromLibrary(m_node.name), pbstrName);
                      });
    }
    STDMETHODIMP get_baseName(BSTR* pbstrName) override
    {
        return Answer("get_baseName", pbstrName, [&] { return GiveText(FromLibrary(m_node.name), pbstrName); });
    }
    STDMETHODIMP get_nodeValue(VARIANT* pvarValue) override
    {
        return Answer("get_nodeValue", pvarValue,
                      [&]
                      {
                          pvarValue->vt = VT_NULL;
                          if (m_node.type == XML_ELEMENT_NODE)
                              return S_FALSE;
                          const HRESULT hr = GiveText(FromLibrary(m_node.content), &pvarValue->bstrVal);
                          pvarValue->vt = SUCCEEDED(hr) ? VT_BSTR : VT_EMPTY;
                          return hr;
                      });
    }
    STDMETHODIMP get_nodeType(DOMNodeType* pType) override
    {
        // The library numbers them the same way.
        return Answer("get_nodeType", pType, [&] { return *pType = static_cast<DOMNodeType>(m_node.type), S_OK; });
    }
    STDMETHODIMP get_firstChild(IXMLDOMNode** ppChild) override
    {
        return Answer("get_firstChild", ppChild, [&] { return GiveNode(m_tree, m_node.children, ppChild); });
    }
    STDMETHODIMP get_nextSibling(IXMLDOMNode** ppSibling) override
    {
        return Answer("get_nextSibling", ppSibling, [&] { return GiveNode(m_tree, m_node.next, ppSibling); });
    }
    STDMETHODIMP hasChildNodes(VARIANT_BOOL* pbHasChild) override
    {
        return Answer("hasChildNodes", pbHasChild,
                      [&]
                      {
                          *pbHasChild = m_node.children ? VARIANT_TRUE : VARIANT_FALSE;
                          return m_node.children ? S_OK : S_FALSE;
                      });
    }
    STDMETHODIMP insertBefore(IXMLDOMNode* pNewChild, VARIANT varRefChild, IXMLDOMNode** ppNewChild) override
    {
        return Edit("insertBefore", pNewChild, ppNewChild,
                    [&]
                    {
                        xmlNode* const pBefore = varRefChild.vt == VT_UNKNOWN ? OwnNode(varRefChild.punkVal) : nullptr;
                        return pBefore && pBefore->parent == &m_node ? Insert(pNewChild, pBefore) : E_FAIL;
                    });
    }
    STDMETHODIMP appendChild(IXMLDOMNode* pNewChild, IXMLDOMNode** ppNewChild) override
    {
        return Edit("appendChild", pNewChild, ppNewChild, [&] { return Insert(pNewChild, nullptr); });
    }
    STDMETHODIMP removeChild(IXMLDOMNode* pChild, IXMLDOMNode** ppOldChild) override
    {
        return Edit("removeChild", pChild, ppOldChild,
                    [&]
                    {
                        xmlNode* const pOwn = OwnNode(pChild);
                        if (!pOwn || pOwn->parent != &m_node)
                            return E_INVALIDARG;
                        m_tree->PutOutside(*pOwn);
                        return S_OK;
                    });
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
        return Answer("get_xml", pbstrXml,
                      [&]
                      {
                          // Below another element, namespaces would have to be declared that are in force there.
                          if (m_node.parent->type == XML_ELEMENT_NODE)
                              return E_NOTIMPL;
                          return GiveText(WriteElement(m_node), pbstrXml);
                      });
    }
    STDMETHODIMP selectSingleNode(BSTR bstrQuery, IXMLDOMNode** ppNode) override
    {
        return Answer("selectSingleNode", ppNode,
                      [&]
                      {
                          const auto path = CPath::Parse(TextOf(bstrQuery));
                          return path ? GiveNode(m_tree, path->FindFrom(m_node), ppNode) : E_FAIL;
                      });
    }
    STDMETHODIMP setAttribute(BSTR bstrName, VARIANT varValue) override
    {
        return Perform("setAttribute", [&] { return SetAttribute(TextOf(bstrName), varValue); });
    }

private:
    // White space at both ends counts for nothing unless it was asked for.
    std::u16string Text() const
    {
        const LibraryPtr<xmlChar, [](xmlChar* pText) { xmlFree(pText); }> content(xmlNodeGetContent(&m_node));
        std::u16string text = FromLibrary(content.get());
        if (m_tree->PreservesSpace() || xmlNodeGetSpacePreserve(&m_node) == 1)
            return text;
        constexpr const char16_t* szSpace = u" \t\r\n";
        text.erase(text.find_last_not_of(szSpace) + 1);
        return text.erase(0, text.find_first_not_of(szSpace));
    }

    HRESULT PutText(std::u16string_view text)
    {
        const auto content = ToLibrary(text);
        if (m_node.type != XML_ELEMENT_NODE || !content)
            return E_FAIL;
        xmlNode* const pText = content->empty() ? nullptr : &Require(xmlNewDocText(m_tree->Document(), Units(*content)));
        while (m_node.children)
            m_tree->PutOutside(*m_node.children);
        if (pText)
            Move(*pText, m_node, nullptr);
        return S_OK;
    }

    // A declaration set this way is a mere attribute: it changes no element's namespace. What was read as one cannot be set.
    HRESULT SetAttribute(std::u16string_view text, const VARIANT& varValue)
    {
        const auto name = ToPlainName(text);
        const auto value = varValue.vt == VT_BSTR ? ToLibrary(TextOf(varValue.bstrVal)) : std::nullopt;
        if (!name || !value || (m_node.nsDef && *name == "xmlns"))
            return E_FAIL;
        Require(xmlSetProp(&m_node, Units(*name), Units(*value)));
        return S_OK;
    }

    // An element without namespace that comes below a default one declares that it has none, as the platform's writer has it.
    HRESULT Insert(IXMLDOMNode* pNewChild, xmlNode* pBefore)
    {
        xmlNode* const pChild = OwnNode(pNewChild);
        if (!pChild || pChild->type != XML_ELEMENT_NODE || m_node.type != XML_ELEMENT_NODE || pChild == pBefore)
            return E_FAIL;
        for (const xmlNode* pAbove = &m_node; pAbove; pAbove = pAbove->parent)
        {
            if (pAbove == pChild)
                return E_FAIL;
        }
        const xmlNs* const pDefault = xmlSearchNs(m_tree->Document(), &m_node, nullptr);
        if (!pChild->ns && !pChild->nsDef && pDefault && *pDefault->href)
            Require(xmlNewNs(pChild, Units({}), nullptr));
        Move(*pChild, m_node, pBefore);
        return S_OK;
    }

    // Null for a node of another document or of another maker.
    xmlNode* OwnNode(IUnknown* pNode) const noexcept
    {
        const auto* pOwn = dynamic_cast<const CNodeObject*>(pNode);
        return pOwn && pOwn->m_tree == m_tree ? &pOwn->m_node : nullptr;
    }

    std::shared_ptr<CTree> m_tree;
    xmlNode& m_node;
};
} // namespace

HRESULT GiveNode(const std::shared_ptr<CTree>& tree, xmlNode* pNode, IXMLDOMNode** ppNode)
{
    IXMLDOMElement* pObject = nullptr;
    const HRESULT hr = GiveNode(tree, pNode, &pObject);
    *ppNode = pObject;
    return hr;
}

HRESULT GiveNode(const std::shared_ptr<CTree>& tree, xmlNode* pNode, IXMLDOMElement** ppElement)
{
    if (!pNode)
        return S_FALSE;
    *ppElement = new CNodeObject(tree, *pNode);
    return S_OK;
}
} // namespace platform::msxml3
