// Between the platform's UTF-16 and UTF-8, which the command line, the output and most files use.
#pragma once

#include "values/WideText.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

// Appends the bytes' text. The offset of the first ill-formed sequence (overlong forms and surrogates are ill-formed
// too) when there is one; strText then holds what came before it.
std::optional<std::size_t> AppendUtf8(std::string_view bytes, CWideString& strText);

// The bytes' text, with U+FFFD for each byte that is no part of well-formed UTF-8.
CWideString WideOf(std::string_view bytes);

// A lone surrogate becomes U+FFFD.
std::string Utf8Of(CWideView text);

std::string NameOf(const std::filesystem::path& file);
std::filesystem::path PathOf(const std::string& strUtf8);

// The code point that begins at the position; moves the position behind it. A lone surrogate comes back as itself.
char32_t NextCodePoint(CWideView text, std::size_t& nPosition);

void AppendCodePoint(char32_t codePoint, CWideString& strText);
