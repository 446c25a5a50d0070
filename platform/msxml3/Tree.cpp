#include "Tree.h"

#include <algorithm>

namespace platform::msxml3
{
CTree::CTree()
{
    m_root.type = NODE_DOCUMENT;
    m_root.name = u"#document";
}

Node* CTree::RootElement() noexcept
{
    Node* pNode = m_root.pFirst;
    while (pNode && pNode->type != NODE_ELEMENT)
        pNode = pNode->pNext;
    return pNode;
}

Node& CTree::NewNode(DOMNodeType type, std::u16string_view name, std::u16string_view value)
{
    Node& node = m_nodes.emplace_back();
    node.type = type;
    node.name = name;
    node.value = value;
    return node;
}

void CTree::Clear(bool bNodesHeld) noexcept
{
    UnlinkChildren(m_root);
    if (!bNodesHeld)
        m_nodes.clear();
}

void Link(Node& parent, Node& child, Node* pBefore) noexcept
{
    child.pParent = &parent;
    child.pNext = pBefore;
    child.pPrevious = pBefore ? pBefore->pPrevious : parent.pLast;
    (child.pPrevious ? child.pPrevious->pNext : parent.pFirst) = &child;
    (pBefore ? pBefore->pPrevious : parent.pLast) = &child;
}

void Unlink(Node& child) noexcept
{
    if (!child.pParent)
        return;
    (child.pPrevious ? child.pPrevious->pNext : child.pParent->pFirst) = child.pNext;
    (child.pNext ? child.pNext->pPrevious : child.pParent->pLast) = child.pPrevious;
    child.pParent = child.pPrevious = child.pNext = nullptr;
}

void UnlinkChildren(Node& parent) noexcept
{
    while (parent.pFirst)
        Unlink(*parent.pFirst);
}

bool IsWithin(const Node& node, const Node& top) noexcept
{
    const Node* pNode = &node;
    while (pNode && pNode != &top)
        pNode = pNode->pParent;
    return pNode != nullptr;
}

Node* FindAttribute(const Node& element, std::u16string_view name) noexcept
{
    const auto found = std::find_if(element.attributes.begin(), element.attributes.end(),
                                    [name](const Node* pAttribute) { return pAttribute->name == name; });
    return found == element.attributes.end() ? nullptr : *found;
}

Node* NextInOrder(const Node& node, const Node& top, bool bDescend) noexcept
{
    if (bDescend && node.pFirst)
        return node.pFirst;
    const Node* pNode = &node;
    while (pNode != &top && !pNode->pNext)
        pNode = pNode->pParent;
    return pNode == &top ? nullptr : pNode->pNext;
}
} // namespace platform::msxml3
