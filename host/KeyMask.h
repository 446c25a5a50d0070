// Keys out of sight: the one place that knows where a profile's text holds them.
#pragma once

#include "values/WideText.h"

// What stands in place of a key.
inline constexpr CWideView keyMask = OLESTR("********");

// Whether what an element of the name holds is a key; the name may have a prefix.
bool IsKeyName(CWideView name);

// The text with asterisks, of one number whatever they hide, in place of every key in it: what elements of the names
// sharedKey, keyMaterial and Password hold and what attributes are written on them, the names in any case and with any
// prefix. The same holds for these names where they are no markup of the text itself: in comments, processing instructions,
// character data however escaped, and for attributes of these names with all behind them in their tags. Of a key of the usual
// form the elements in it and their layout stay; where such names are no markup, everything up to the last end tag of one is
// hidden, or up to the end of the comment or text. The text need not be XML.
CWideString WithoutKeys(CWideView text);
