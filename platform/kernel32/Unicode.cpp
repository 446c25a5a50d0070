#include "platform/kernel32/Unicode.h"

#include <algorithm>
#include <clocale>
#include <cstddef>
#include <cwctype>

namespace platform
{
namespace
{
constexpr char32_t replacement = 0xFFFD;

constexpr bool IsHighSurrogate(char16_t unit)
{
    return unit >= 0xD800 && unit < 0xDC00;
}
constexpr bool IsLowSurrogate(char16_t unit)
{
    return unit >= 0xDC00 && unit < 0xE000;
}

void AppendUtf8(std::string& text, char32_t point)
{
    const auto append = [&text](char32_t byte) { text.push_back(static_cast<char>(byte)); };
    const auto appendTail = [&](unsigned uShift) { append(0x80 | ((point >> uShift) & 0x3F)); };
    if (point < 0x80)
        return append(point);
    if (point < 0x800)
        append(0xC0 | (point >> 6));
    else if (point < 0x10000)
    {
        append(0xE0 | (point >> 12));
        appendTail(6);
    }
    else
    {
        append(0xF0 | (point >> 18));
        appendTail(12);
        appendTail(6);
    }
    appendTail(0);
}

void AppendUtf16(std::u16string& text, char32_t point)
{
    if (point < 0x10000)
        return text.push_back(static_cast<char16_t>(point));
    text.push_back(static_cast<char16_t>(0xD800 + ((point - 0x10000) >> 10)));
    text.push_back(static_cast<char16_t>(0xDC00 + ((point - 0x10000) & 0x3FF)));
}

// What a lead byte announces: the number of tail bytes, its own bits, and the range of the first tail byte (narrower
// than 80..BF where a longer form than needed, a surrogate or a point beyond U+10FFFF would begin).
struct Lead
{
    unsigned uTails;
    char32_t bits;
    unsigned char low;
    unsigned char high;
};

constexpr Lead LeadOf(unsigned char byte)
{
    if (byte >= 0xC2 && byte <= 0xDF)
        return {1, byte & 0x1Fu, 0x80, 0xBF};
    if (byte >= 0xE0 && byte <= 0xEF)
        return {2, byte & 0x0Fu, static_cast<unsigned char>(byte == 0xE0 ? 0xA0 : 0x80),
                static_cast<unsigned char>(byte == 0xED ? 0x9F : 0xBF)};
    if (byte >= 0xF0 && byte <= 0xF4)
        return {3, byte & 0x07u, static_cast<unsigned char>(byte == 0xF0 ? 0x90 : 0x80),
                static_cast<unsigned char>(byte == 0xF4 ? 0x8F : 0xBF)};
    return {0, 0, 0, 0};
}

constexpr bool IsTail(unsigned char byte)
{
    return byte >= 0x80 && byte <= 0xBF;
}

// Takes one code point from the front of the text; an ill-formed sequence is taken up to its first wrong byte. A first
// tail byte that only says that the form is not allowed belongs to its lead byte.
char32_t TakePoint(std::string_view& text, bool& bWellFormed)
{
    const auto byteAt = [&text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char first = byteAt(0);
    std::size_t cbTaken = 1;
    char32_t point = first;
    if (first >= 0x80)
    {
        Lead lead = LeadOf(first);
        point = lead.bits;
        unsigned uMissing = lead.uTails;
        while (uMissing > 0 && cbTaken < text.size() && byteAt(cbTaken) >= lead.low && byteAt(cbTaken) <= lead.high)
        {
            point = (point << 6) | (byteAt(cbTaken) & 0x3Fu);
            lead.low = 0x80;
            lead.high = 0xBF;
            ++cbTaken;
            --uMissing;
        }
        if (lead.uTails == 0 || uMissing > 0)
        {
            if (lead.uTails > 1 && cbTaken == 1 && text.size() > 1 && IsTail(byteAt(1)))
                ++cbTaken;
            bWellFormed = false;
            point = replacement;
        }
    }
    text.remove_prefix(cbTaken);
    return point;
}

char16_t FoldUnit(char16_t unit)
{
    // The process's own locale must not decide which names are the same.
    static const locale_t unicode = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    if (unit < 0x80 || !unicode)
        return UpperOf(unit);
    const auto folded = static_cast<char32_t>(towupper_l(static_cast<wint_t>(unit), unicode));
    // Nothing outside the basic letters is the same as one of them: no dotless i, no long s.
    return folded >= 0x80 && folded <= 0xFFFF ? static_cast<char16_t>(folded) : unit;
}
} // namespace

std::u16string FoldCase(std::u16string_view name)
{
    std::u16string folded(name);
    std::ranges::transform(folded, folded.begin(), FoldUnit);
    return folded;
}

std::string ToUtf8(std::u16string_view text, bool* pbWellFormed)
{
    bool bWellFormed = true;
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        const char16_t unit = text[i];
        if (IsHighSurrogate(unit) && i + 1 < text.size() && IsLowSurrogate(text[i + 1]))
        {
            ++i;
            AppendUtf8(result, 0x10000u + ((unit - 0xD800u) << 10) + (text[i] - 0xDC00u));
        }
        else if (IsHighSurrogate(unit) || IsLowSurrogate(unit))
        {
            bWellFormed = false;
            AppendUtf8(result, replacement);
        }
        else
            AppendUtf8(result, unit);
    }
    if (pbWellFormed)
        *pbWellFormed = bWellFormed;
    return result;
}

std::u16string FromUtf8(std::string_view text, bool* pbWellFormed)
{
    bool bWellFormed = true;
    std::u16string result;
    result.reserve(text.size());
    while (!text.empty())
        AppendUtf16(result, TakePoint(text, bWellFormed));
    if (pbWellFormed)
        *pbWellFormed = bWellFormed;
    return result;
}
} // namespace platform
