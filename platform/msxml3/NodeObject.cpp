#include "NodeObject.h"

namespace platform::msxml3
{
namespace
{
// Texts, comments and whatever else has no interface of its own here.
class CPlainNodeObject final : public CNodeObject<IXMLDOMNode>
{
public:
    using CNodeObject::CNodeObject;
};
} // namespace

IXMLDOMNode* NewNodeObject(const std::shared_ptr<CTree>& tree, Node& node)
{
    if (node.type == NODE_ELEMENT)
        return NewElementObject(tree, node);
    if (node.type == NODE_DOCUMENT)
        return NewDocumentObject(tree);
    return new CPlainNodeObject(tree, node);
}
} // namespace platform::msxml3
