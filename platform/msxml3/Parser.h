// From text to nodes.
#pragma once

#include "Library.h"

#include <msxml2.h>

namespace platform::msxml3
{
// Why a text did not load; empty when it did.
struct LoadError
{
    std::u16string reason;
    LONG lLine = 0; // 0 where none is to blame
};

// The document; none, with the error, for a text that does not load. A byte-order mark and white space at the start are
// skipped, the declared encoding is ignored (the text is UTF-16 whatever it says), and nothing outside the text is ever read.
// A text with a document type is refused, and so are thousands of attributes of one element and hundreds of thousands of tags.
// Texts of white space alone are dropped unless bPreserveSpace or xml:space keeps them.
DocumentPtr ReadXml(std::u16string_view text, bool bPreserveSpace, LoadError& error);
} // namespace platform::msxml3
