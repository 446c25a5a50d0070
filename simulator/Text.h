// UTF-16 text of the service and its forms in files.
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <string_view>

namespace simulator
{
using WideText = std::basic_string<WCHAR>;
using WideView = std::basic_string_view<WCHAR>;

// Nothing when the text holds a lone surrogate: it has no UTF-8 form, and a substitute would alter it.
std::optional<std::string> ToUtf8(WideView text);

// Nothing when the bytes are not UTF-8 (overlong forms and encoded surrogates included).
std::optional<WideText> FromUtf8(std::string_view bytes);

// The text of a file that a person or a tool wrote: UTF-8 or UTF-16 of either byte order, with or without byte-order
// mark. Nothing when it is none of these.
std::optional<WideText> DecodeFile(std::string_view bytes);

// UTF-8, such that DecodeFile gives back exactly the text. Nothing when the text holds a lone surrogate.
std::optional<std::string> EncodeFile(WideView text);
} // namespace simulator
