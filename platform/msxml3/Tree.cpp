#include "Tree.h"

namespace platform::msxml3
{
CTree::CTree(DocumentPtr document, bool bPreservesSpace)
    : m_document(document ? std::move(document) : DocumentPtr(&Require(xmlNewDoc(nullptr)))),
      m_outside(&Require(xmlNewDocFragment(m_document.get()))), m_bPreservesSpace(bPreservesSpace)
{
}

void CTree::PutOutside(xmlNode& node) noexcept
{
    Move(node, *m_outside, nullptr);
}

void Move(xmlNode& node, xmlNode& parent, xmlNode* pBefore) noexcept
{
    xmlUnlinkNode(&node);
    node.parent = &parent;
    node.next = pBefore;
    node.prev = pBefore ? pBefore->prev : parent.last;
    (node.prev ? node.prev->next : parent.children) = &node;
    (pBefore ? pBefore->prev : parent.last) = &node;
}
} // namespace platform::msxml3
