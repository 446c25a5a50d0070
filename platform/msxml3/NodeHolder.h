// A node that a client holds, and what can be done to it whatever kind it is.
#pragma once

#include "Tree.h"

#include <memory>

namespace platform::msxml3
{
// Keeps the whole tree alive, so that a document may be released before its nodes. Results and arguments are those of
// the interface methods with the same names.
class CNodeHolder
{
public:
    CNodeHolder(std::shared_ptr<CTree> tree, Node& node) noexcept : m_tree(std::move(tree)), m_node(node)
    {
    }

    CTree& Tree() const noexcept
    {
        return *m_tree;
    }
    const std::shared_ptr<CTree>& SharedTree() const noexcept
    {
        return m_tree;
    }
    Node& Held() const noexcept
    {
        return m_node;
    }

    HRESULT Value(VARIANT* pvarValue) const;
    // S_FALSE for no node. The object handed out is new: two of them may stand for one node.
    HRESULT Give(Node* pNode, IXMLDOMNode** ppNode) const;
    HRESULT Attributes(IXMLDOMNamedNodeMap** ppAttributes) const;
    HRESULT OwnerDocument(IXMLDOMDocument** ppDocument) const;
    HRESULT BaseName(BSTR* pbstrName) const;
    HRESULT NamespaceUri(BSTR* pbstrUri) const;

    HRESULT InsertBefore(IXMLDOMNode* pNewChild, const VARIANT& varRefChild, IXMLDOMNode** ppNewChild);
    HRESULT Append(IXMLDOMNode* pNewChild, IXMLDOMNode** ppNewChild);
    HRESULT Remove(IXMLDOMNode* pChild, IXMLDOMNode** ppOldChild);

    std::u16string Text() const;
    HRESULT PutText(std::u16string_view text);

    HRESULT Select(std::u16string_view query, IXMLDOMNode** ppNode) const;
    HRESULT SelectAll(std::u16string_view query, IXMLDOMNodeList** ppNodes) const;

protected:
    virtual ~CNodeHolder() = default;

private:
    HRESULT Insert(IXMLDOMNode* pNewChild, Node* pBefore, IXMLDOMNode** ppNewChild);
    Node* OwnNode(IXMLDOMNode* pNode) const noexcept;
    bool MayHold(const Node& child) const noexcept;

    std::shared_ptr<CTree> m_tree;
    Node& m_node;
};
} // namespace platform::msxml3
