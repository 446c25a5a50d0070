// One document as the library holds it.
#pragma once

#include "Library.h"

namespace platform::msxml3
{
// Puts a node before a child of the parent, or at the end when that is null. The library's own functions for this merge text
// with text and free the one of them, which a client may hold.
inline void Move(xmlNode& node, xmlNode& parent, xmlNode* pBefore) noexcept
{
    xmlUnlinkNode(&node);
    node.parent = &parent;
    node.next = pBefore;
    node.prev = pBefore ? pBefore->prev : parent.last;
    (node.prev ? node.prev->next : parent.children) = &node;
    (pBefore ? pBefore->prev : parent.last) = &node;
}

// Owns the document with every node that was ever made for it: a node outside of it, just made or taken out, stands below
// a fragment of its own, and so stays valid for whoever holds it. For one thread at a time.
class CTree
{
public:
    // An empty document when given none.
    CTree(DocumentPtr document, bool bPreservesSpace)
        : m_document(document ? std::move(document) : DocumentPtr(&Require(xmlNewDoc(nullptr)))),
          m_outside(&Require(xmlNewDocFragment(m_document.get()))), m_bPreservesSpace(bPreservesSpace)
    {
    }

    xmlDoc* Document() const noexcept
    {
        return m_document.get();
    }
    bool PreservesSpace() const noexcept
    {
        return m_bPreservesSpace;
    }
    // Takes a new node, or one out of the document.
    void PutOutside(xmlNode& node) noexcept
    {
        Move(node, *m_outside, nullptr);
    }

private:
    DocumentPtr m_document;
    LibraryPtr<xmlNode, xmlFreeNode> m_outside;
    bool m_bPreservesSpace;
};
} // namespace platform::msxml3
