// The encoding that a document's XML declaration names.
#pragma once

#include <string_view>

namespace platform::msxml3
{
// Whether the name in the declaration at the text's very beginning, if there is one, is that of an encoding that exists.
// The text is UTF-16 whatever it says, but a component that never heard of the name does not load it.
bool KnowsDeclaredEncoding(std::u16string_view text);
} // namespace platform::msxml3
