#include "NodeHolder.h"

#include "AttributeMap.h"
#include "Edge.h"
#include "NodeList.h"
#include "NodeObject.h"
#include "Path.h"
#include "XmlText.h"

#include <algorithm>

namespace platform::msxml3
{
namespace
{
bool HasOwnValue(DOMNodeType type) noexcept
{
    return type == NODE_TEXT || type == NODE_CDATA_SECTION || type == NODE_COMMENT || type == NODE_ATTRIBUTE ||
           type == NODE_PROCESSING_INSTRUCTION;
}

// What the nearest xml:space says.
bool KeepsSpace(const Node& node) noexcept
{
    for (const Node* pNode = &node; pNode; pNode = pNode->pParent)
        if (const Node* const pSpace = FindAttribute(*pNode, u"xml:space"))
            return pSpace->value == u"preserve";
    return false;
}

// S_OK and null when the variant names no node.
HRESULT NodeIn(const VARIANT& var, IXMLDOMNode** ppNode)
{
    *ppNode = nullptr;
    if (var.vt == VT_EMPTY || var.vt == VT_NULL)
        return S_OK;
    if (var.vt != VT_UNKNOWN && var.vt != VT_DISPATCH)
        return E_FAIL;
    IUnknown* const pUnknown = var.vt == VT_UNKNOWN ? var.punkVal : var.pdispVal;
    return pUnknown ? pUnknown->QueryInterface(IID_IXMLDOMNode, reinterpret_cast<void**>(ppNode)) : S_OK;
}
} // namespace

HRESULT CNodeHolder::Value(VARIANT* pvarValue) const
{
    return GiveValue(HasOwnValue(m_node.type) ? &m_node.value : nullptr, pvarValue);
}

HRESULT CNodeHolder::Give(Node* pNode, IXMLDOMNode** ppNode) const
{
    if (!pNode)
        return S_FALSE;
    *ppNode = NewNodeObject(m_tree, *pNode);
    return S_OK;
}

HRESULT CNodeHolder::Attributes(IXMLDOMNamedNodeMap** ppAttributes) const
{
    if (m_node.type != NODE_ELEMENT)
        return S_FALSE;
    *ppAttributes = new CAttributeMap(m_tree, m_node);
    return S_OK;
}

HRESULT CNodeHolder::OwnerDocument(IXMLDOMDocument** ppDocument) const
{
    if (m_node.type == NODE_DOCUMENT)
        return S_FALSE;
    *ppDocument = NewDocumentObject(m_tree);
    return S_OK;
}

HRESULT CNodeHolder::BaseName(BSTR* pbstrName) const
{
    const bool bNamed =
        m_node.type == NODE_ELEMENT || m_node.type == NODE_ATTRIBUTE || m_node.type == NODE_PROCESSING_INSTRUCTION;
    return bNamed ? GiveText(BaseOf(m_node.name), pbstrName) : S_FALSE;
}

HRESULT CNodeHolder::NamespaceUri(BSTR* pbstrUri) const
{
    return m_node.namespaceUri.empty() ? S_FALSE : GiveText(m_node.namespaceUri, pbstrUri);
}

HRESULT CNodeHolder::InsertBefore(IXMLDOMNode* pNewChild, const VARIANT& varRefChild, IXMLDOMNode** ppNewChild)
{
    IXMLDOMNode* pReference = nullptr;
    if (const HRESULT hr = NodeIn(varRefChild, &pReference); FAILED(hr))
        return hr;
    if (!pReference)
        return Insert(pNewChild, nullptr, ppNewChild);
    Node* const pBefore = OwnNode(pReference);
    pReference->Release(); // the tree keeps the node itself
    if (!pBefore || pBefore->pParent != &m_node)
        return E_FAIL;
    return Insert(pNewChild, pBefore, ppNewChild);
}

HRESULT CNodeHolder::Append(IXMLDOMNode* pNewChild, IXMLDOMNode** ppNewChild)
{
    return Insert(pNewChild, nullptr, ppNewChild);
}

HRESULT CNodeHolder::Insert(IXMLDOMNode* pNewChild, Node* pBefore, IXMLDOMNode** ppNewChild)
{
    if (!pNewChild)
        return E_INVALIDARG;
    Node* const pChild = OwnNode(pNewChild);
    if (!pChild || !MayHold(*pChild))
        return E_FAIL;
    if (pBefore != pChild)
    {
        Unlink(*pChild);
        Link(m_node, *pChild, pBefore);
    }
    if (ppNewChild)
    {
        *ppNewChild = pNewChild;
        pNewChild->AddRef();
    }
    return S_OK;
}

HRESULT CNodeHolder::Remove(IXMLDOMNode* pChild, IXMLDOMNode** ppOldChild)
{
    if (!pChild)
        return E_INVALIDARG;
    Node* const pNode = OwnNode(pChild);
    if (!pNode || pNode->pParent != &m_node)
        return E_INVALIDARG;
    Unlink(*pNode);
    if (ppOldChild)
    {
        *ppOldChild = pChild;
        pChild->AddRef();
    }
    return S_OK;
}

// White space at both ends counts for nothing unless it was asked for or stands in a CDATA section.
std::u16string CNodeHolder::Text() const
{
    if (HasOwnValue(m_node.type))
        return m_node.value;
    std::u16string text;
    std::size_t uFixedFrom = text.npos;
    std::size_t uFixedTo = 0;
    for (const Node* pNode = NextInOrder(m_node, m_node); pNode; pNode = NextInOrder(*pNode, m_node))
    {
        const bool bCData = pNode->type == NODE_CDATA_SECTION;
        if (!bCData && pNode->type != NODE_TEXT)
            continue;
        if (bCData)
            uFixedFrom = std::min(uFixedFrom, text.size());
        text += pNode->value;
        if (bCData)
            uFixedTo = text.size();
    }
    if (m_tree->PreservesWhiteSpace() || KeepsSpace(m_node))
        return text;
    while (text.size() > uFixedTo && IsXmlSpace(text.back()))
        text.pop_back();
    std::size_t uLeading = 0;
    while (uLeading < std::min(uFixedFrom, text.size()) && IsXmlSpace(text[uLeading]))
        ++uLeading;
    return text.substr(uLeading);
}

HRESULT CNodeHolder::PutText(std::u16string_view text)
{
    if (FindIllegal(text) != text.npos)
        return E_INVALIDARG;
    switch (m_node.type)
    {
    case NODE_ATTRIBUTE:
    case NODE_TEXT:
        m_node.value = text;
        return S_OK;
    case NODE_ELEMENT:
    {
        Node* const pText = text.empty() ? nullptr : &m_tree->NewNode(NODE_TEXT, u"#text", text);
        UnlinkChildren(m_node);
        if (pText)
            Link(m_node, *pText, nullptr);
        return S_OK;
    }
    default:
        return E_FAIL;
    }
}

HRESULT CNodeHolder::Select(std::u16string_view query, IXMLDOMNode** ppNode) const
{
    const auto path = CPath::Parse(query);
    return path ? Give(path->Next(*m_tree, m_node, nullptr), ppNode) : E_FAIL;
}

HRESULT CNodeHolder::SelectAll(std::u16string_view query, IXMLDOMNodeList** ppNodes) const
{
    const auto path = CPath::Parse(query);
    if (!path)
        return E_FAIL;
    std::vector<Node*> nodes;
    for (Node* pNode = nullptr; (pNode = path->Next(*m_tree, m_node, pNode)) != nullptr;)
        nodes.push_back(pNode);
    *ppNodes = new CNodeList(m_tree, std::move(nodes));
    return S_OK;
}

// Null for a node of another document or of another maker.
Node* CNodeHolder::OwnNode(IXMLDOMNode* pNode) const noexcept
{
    const auto* pHolder = dynamic_cast<const CNodeHolder*>(pNode);
    return pHolder && pHolder->m_tree == m_tree ? &pHolder->m_node : nullptr;
}

bool CNodeHolder::MayHold(const Node& child) const noexcept
{
    if (child.type == NODE_ATTRIBUTE || child.type == NODE_DOCUMENT || &child == &m_node)
        return false;
    // Only a child with children can be above; building downwards must not climb up at each step.
    if (child.pFirst && IsWithin(m_node, child))
        return false;
    if (m_node.type == NODE_ELEMENT)
        return child.type != NODE_DOCUMENT_TYPE;
    if (m_node.type != NODE_DOCUMENT)
        return false;
    if (child.type == NODE_ELEMENT)
    {
        const Node* const pRoot = m_tree->RootElement();
        return !pRoot || pRoot == &child;
    }
    return child.type == NODE_COMMENT || child.type == NODE_PROCESSING_INSTRUCTION;
}
} // namespace platform::msxml3
