#include "host/Utf8.h"

namespace
{
constexpr char32_t replacementCharacter = 0xFFFD;

// How the first byte of a sequence announces it, and the least code point that needs the length.
struct LeadByte
{
    unsigned char mask;
    unsigned char mark;
    std::size_t cbSequence;
    char32_t least;
};
constexpr LeadByte leadBytes[] = {
    {0x80, 0x00, 1, 0},
    {0xE0, 0xC0, 2, 0x80},
    {0xF0, 0xE0, 3, 0x800},
    {0xF8, 0xF0, 4, 0x10000},
};

bool IsSurrogate(char32_t codePoint)
{
    return codePoint >= 0xD800 && codePoint <= 0xDFFF;
}

// Zero when the sequence at the position is ill-formed, else its length.
std::size_t DecodeSequence(std::string_view bytes, std::size_t nPosition, char32_t& codePoint)
{
    const auto byteAt = [&](std::size_t n) { return static_cast<unsigned char>(bytes[n]); };
    const unsigned char lead = byteAt(nPosition);
    for (const LeadByte& form : leadBytes)
    {
        if ((lead & form.mask) != form.mark)
            continue;
        if (bytes.size() - nPosition < form.cbSequence)
            return 0;
        codePoint = lead & static_cast<unsigned char>(~form.mask);
        for (std::size_t n = 1; n < form.cbSequence; ++n)
        {
            const unsigned char next = byteAt(nPosition + n);
            if ((next & 0xC0) != 0x80)
                return 0;
            codePoint = (codePoint << 6) | (next & 0x3Fu);
        }
        const bool bAllowed = codePoint >= form.least && codePoint <= 0x10FFFF && !IsSurrogate(codePoint);
        return bAllowed ? form.cbSequence : 0;
    }
    return 0;
}
} // namespace

std::optional<std::size_t> AppendUtf8(std::string_view bytes, CWideString& strText)
{
    for (std::size_t nPosition = 0; nPosition < bytes.size();)
    {
        char32_t codePoint = 0;
        const std::size_t cbSequence = DecodeSequence(bytes, nPosition, codePoint);
        if (cbSequence == 0)
            return nPosition;
        AppendCodePoint(codePoint, strText);
        nPosition += cbSequence;
    }
    return std::nullopt;
}

CWideString WideOf(std::string_view bytes)
{
    CWideString strText;
    while (const auto nIllFormed = AppendUtf8(bytes, strText))
    {
        AppendCodePoint(replacementCharacter, strText);
        bytes.remove_prefix(*nIllFormed + 1);
    }
    return strText;
}

std::string Utf8Of(CWideView text)
{
    std::string strBytes;
    strBytes.reserve(text.size());
    const auto append = [&](char32_t value) { strBytes.push_back(static_cast<char>(static_cast<unsigned char>(value))); };
    for (std::size_t nPosition = 0; nPosition < text.size();)
    {
        char32_t codePoint = NextCodePoint(text, nPosition);
        if (IsSurrogate(codePoint))
            codePoint = replacementCharacter;
        if (codePoint < 0x80)
        {
            append(codePoint);
            continue;
        }
        if (codePoint < 0x800)
        {
            append(0xC0 | (codePoint >> 6));
        }
        else if (codePoint < 0x10000)
        {
            append(0xE0 | (codePoint >> 12));
            append(0x80 | ((codePoint >> 6) & 0x3F));
        }
        else
        {
            append(0xF0 | (codePoint >> 18));
            append(0x80 | ((codePoint >> 12) & 0x3F));
            append(0x80 | ((codePoint >> 6) & 0x3F));
        }
        append(0x80 | (codePoint & 0x3F));
    }
    return strBytes;
}

std::string NameOf(const std::filesystem::path& file)
{
    const std::u8string strName = file.u8string();
    return std::string(strName.begin(), strName.end());
}

std::filesystem::path PathOf(const std::string& strUtf8)
{
    return std::filesystem::path(std::u8string(strUtf8.begin(), strUtf8.end()));
}

char32_t NextCodePoint(CWideView text, std::size_t& nPosition)
{
    const char32_t first = text[nPosition++];
    if (first < 0xD800 || first > 0xDBFF || nPosition == text.size())
        return first;
    const char32_t second = text[nPosition];
    if (second < 0xDC00 || second > 0xDFFF)
        return first;
    ++nPosition;
    return 0x10000 + ((first - 0xD800) << 10) + (second - 0xDC00);
}

void AppendCodePoint(char32_t codePoint, CWideString& strText)
{
    if (codePoint >= 0x10000)
    {
        strText.push_back(static_cast<WCHAR>(0xD800 + ((codePoint - 0x10000) >> 10)));
        codePoint = 0xDC00 + (codePoint & 0x3FF);
    }
    strText.push_back(static_cast<WCHAR>(codePoint));
}
