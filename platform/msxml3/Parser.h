// From text to nodes.
#pragma once

#include "Tree.h"

namespace platform::msxml3
{
// Fills an empty tree from the text; the result's code says whether it loaded, and the tree holds leftovers when not.
// A byte-order mark and white space at the start are skipped, the declared encoding is ignored (the text is UTF-16
// whatever it says). Nothing outside the text is ever read: a reference to an external entity stays a reference.
// Text nodes of only white space are dropped unless the tree or xml:space preserves them.
LoadError ReadXml(std::u16string_view text, CTree& tree);
} // namespace platform::msxml3
