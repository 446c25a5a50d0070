// A profile file's bytes as text, and back: what was decoded encodes to the very same bytes.
#pragma once

#include "values/WideText.h"

#include <optional>
#include <string>
#include <string_view>

enum class TextEncoding
{
    Utf8,
    Utf16LittleEndian,
    Utf16BigEndian,
    UsAscii,
    Iso8859_1,
    Windows1252,
};

struct ProfileText
{
    CWideString strText; // without the byte-order mark
    TextEncoding encoding = TextEncoding::Utf8;
    bool bByteOrderMark = false;
};

// A byte-order mark decides on the encoding; without one UTF-16 shows by its zero bytes, and everything else is what
// the XML declaration names (UTF-8 when it names nothing). A declared UTF-16 in plain 8-bit text reads as UTF-8, and an
// encoding that is not known here passes while every byte is ASCII.
// Throws CHostError for bytes that are not text in the encoding, naming the offset of the first.
ProfileText DecodeProfile(std::string_view bytes);

// A character that the encoding cannot hold is written as a character reference.
std::string EncodeProfile(const ProfileText& profile);

// Where the XML declaration names the encoding: from the white space before "encoding" to behind the closing quote.
struct EncodingDeclaration
{
    std::size_t nBegin;
    std::size_t nEnd;
    CWideView name;
};
std::optional<EncodingDeclaration> FindEncodingDeclaration(CWideView text);
