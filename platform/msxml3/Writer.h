// The text form of a document or of an element. No white space is added but the line end after each node of the document's
// top level; line ends within the text are CR LF.
#pragma once

#include "Library.h"

namespace platform::msxml3
{
std::u16string WriteElement(xmlNode& element);
// The XML declaration loses its encoding.
std::u16string WriteDocument(const xmlDoc& document);
} // namespace platform::msxml3
