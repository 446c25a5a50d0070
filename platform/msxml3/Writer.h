// The text form of a document or of a node.
#pragma once

#include "Tree.h"

namespace platform::msxml3
{
// No white space is added but the line end after each node of the document's top level; line ends within the text are
// CR LF. The XML declaration loses its encoding. Namespaces that were in force where an element was read, and that its
// written surroundings do not declare, are declared on it; an element without namespace below a default one gets
// xmlns="".
std::u16string WriteXml(const Node& node);
} // namespace platform::msxml3
