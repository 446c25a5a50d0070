// The nodes of one document.
#pragma once

#include <msxml2.h>

#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace platform::msxml3
{
struct Node
{
    DOMNodeType type = NODE_INVALID;
    std::u16string name;  // as written, prefix included
    std::u16string value; // text, CDATA, comment, instruction, attribute; the whole declaration of a document type
    std::u16string namespaceUri;
    bool bDeclaresNamespace = false; // an attribute that declared a namespace when the document was read
    Node* pParent = nullptr;         // none for an attribute, as in the object model
    Node* pPrevious = nullptr;
    Node* pNext = nullptr;
    Node* pFirst = nullptr;
    Node* pLast = nullptr;
    std::vector<Node*> attributes; // in the order written
};

// Why a text did not load; code S_OK when it did or when nothing was loaded yet.
struct LoadError
{
    HRESULT code = S_OK;
    std::u16string reason;
    LONG lLine = 0;
};

// Owns every node that the document ever had: a node that was taken out stays valid for whoever holds it, and goes with
// the tree at the latest. For one thread at a time.
class CTree
{
public:
    CTree();
    CTree(const CTree&) = delete;
    CTree& operator=(const CTree&) = delete;

    Node& Root() noexcept
    {
        return m_root;
    }
    // The root element, or null.
    Node* RootElement() noexcept;

    Node& NewNode(DOMNodeType type, std::u16string_view name, std::u16string_view value = {});

    // Empties the document. The old nodes stay valid when bNodesHeld says that somebody has one.
    void Clear(bool bNodesHeld) noexcept;

    bool PreservesWhiteSpace() const noexcept
    {
        return m_bPreserveWhiteSpace;
    }
    void PreserveWhiteSpace(bool bPreserve) noexcept
    {
        m_bPreserveWhiteSpace = bPreserve;
    }
    const LoadError& LastLoad() const noexcept
    {
        return m_lastLoad;
    }
    void LastLoad(LoadError error) noexcept
    {
        m_lastLoad = std::move(error);
    }

private:
    Node m_root;
    std::deque<Node> m_nodes;
    bool m_bPreserveWhiteSpace = false;
    LoadError m_lastLoad;
};

// Puts a node without parent before the reference, a child of the parent, or at the end when there is none.
void Link(Node& parent, Node& child, Node* pBefore) noexcept;
// Takes a node out of its parent, if it has one.
void Unlink(Node& child) noexcept;
void UnlinkChildren(Node& parent) noexcept;

// True for the node itself, too.
bool IsWithin(const Node& node, const Node& top) noexcept;
Node* FindAttribute(const Node& element, std::u16string_view name) noexcept;

// What follows the node in document order below top; null at the end. Steps over the node's children unless told to
// descend.
Node* NextInOrder(const Node& node, const Node& top, bool bDescend = true) noexcept;
} // namespace platform::msxml3
