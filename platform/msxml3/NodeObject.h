// The nodes that clients hold.
#pragma once

#include "Tree.h"

#include <msxml2.h>

namespace platform::msxml3
{
// A new object for the node: two of them may stand for one node. S_FALSE for no node. An object keeps the whole tree alive, so
// that a document may be released before its nodes. An element is expected where its interface is asked for.
HRESULT GiveNode(const std::shared_ptr<CTree>& tree, xmlNode* pNode, IXMLDOMNode** ppNode);
HRESULT GiveNode(const std::shared_ptr<CTree>& tree, xmlNode* pNode, IXMLDOMElement** ppElement);
} // namespace platform::msxml3
