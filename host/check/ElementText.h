// The text of an element, as a reader of the document gets it.
#pragma once

#include "host/ElementMap.h"

#include <optional>

// All text in the element and below it, references resolved; without comments and processing instructions. The text is of a
// well-formed document without a document type.
CWideString TextOf(const CElementMap& map, const XmlElement& element);

// The text that stands in the element itself, not in elements below it.
CWideString OwnTextOf(const CElementMap& map, const XmlElement& element);

// Whether a document may hold the character of which the unit is a part.
bool IsCharacter(CWideView text, std::size_t n);

// What a reference stands for that has the name between "&" and ";"; nothing for one that a document without a document type
// does not know.
std::optional<CWideString> ReferenceOf(CWideView name);

CWideView Trimmed(CWideView text);
