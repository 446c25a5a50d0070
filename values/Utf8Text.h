// Between the platform's UTF-16 and the UTF-8 of files and programs. Where the memory does not suffice, std::bad_alloc is thrown.
#pragma once

#include "values/WideText.h"

#include <optional>

// Nothing when the bytes are not UTF-8 (overlong forms and encoded surrogates included); pnIllFormed, when given, is then set
// to where the first sequence begins that is none.
std::optional<CWideString> WideOfUtf8(std::string_view bytes, std::size_t* pnIllFormed = nullptr);

// Nothing when the text holds a lone surrogate: it has no UTF-8 form, and a substitute would alter it.
std::optional<std::string> Utf8OfWide(CWideView text);

// For showing: U+FFFD in place of what has no form on the other side.
CWideString WideOf(std::string_view bytes);
std::string Utf8Of(CWideView text);

// How the bytes of a text begin: with a byte-order mark, or with the zero in UTF-16's first character, which for a document
// is always one of ASCII.
enum class UnicodeForm
{
    Utf8,
    Utf16LittleEndian,
    Utf16BigEndian,
};
struct TextBeginning
{
    UnicodeForm form;
    std::size_t cbMark;
};
TextBeginning BeginningOf(std::string_view bytes);

// UTF-16 of either byte order; half a unit at the end is left out.
CWideString WideOfUtf16(std::string_view bytes, UnicodeForm form);
