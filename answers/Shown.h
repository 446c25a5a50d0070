// How answers are put in words: one line of printing 7-bit text each.
#pragma once

#include "values/WideText.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace answers
{
// Printing 7-bit characters as they are, all else, and the backslash, as \uXXXX.
std::string Shown(CWideView text);
std::string Shown(std::string_view bytes);
// "EF00", or "none".
std::string ShownBytes(std::string_view bytes);
// "0x80004005": results and masks.
std::string ShownHex(std::uint32_t uValue);
// "ok" or "error 2": functions that return their result.
std::string ShownStatus(LONG lStatus);
// "ok, more" or "failed, error 2": functions that leave their reason with GetLastError. Call at once.
std::string ShownSuccess(BOOL bSucceeded, const std::string& more = {});
// A buffer that was full of "#", up to the last unit that is not.
CWideView Touched(CWideView buffer);
} // namespace answers
