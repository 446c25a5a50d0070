// A value from outside (a file's name, a text of a profile, an adapter's description) as a person gets to see it.
#pragma once

#include "host/Escaped.h"
#include "host/KeyMask.h"
#include "values/Utf8Text.h"

// One line without keys.
inline std::string Shown(std::string_view text)
{
    return Escaped(Utf8Of(WithoutKeys(WideOf(text))));
}
