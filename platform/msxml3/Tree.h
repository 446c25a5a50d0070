// One document as the library holds it.
#pragma once

#include "Library.h"

namespace platform::msxml3
{
// Owns the document with every node that was ever made for it: a node outside of it, just made or taken out, stands below
// a fragment of its own, and so stays valid for whoever holds it. For one thread at a time.
class CTree
{
public:
    // An empty document when given none.
    CTree(DocumentPtr document, bool bPreservesSpace);

    xmlDoc* Document() const noexcept
    {
        return m_document.get();
    }
    bool PreservesSpace() const noexcept
    {
        return m_bPreservesSpace;
    }
    // Takes a new node, or one out of the document.
    void PutOutside(xmlNode& node) noexcept;

private:
    DocumentPtr m_document;
    LibraryPtr<xmlNode, xmlFreeNode> m_outside;
    bool m_bPreservesSpace;
};

// Puts a node before a child of the parent, or at the end when that is null. The library's own functions for this merge text
// with text and free the one of them, which a client may hold.
void Move(xmlNode& node, xmlNode& parent, xmlNode* pBefore) noexcept;
} // namespace platform::msxml3
