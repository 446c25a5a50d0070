#include "simulator/Text.h"

#include <cstdint>

namespace simulator
{
namespace
{
constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";
constexpr std::uint32_t firstSurrogate = 0xD800;
constexpr std::uint32_t firstLowSurrogate = 0xDC00;
constexpr std::uint32_t afterSurrogates = 0xE000;
constexpr std::uint32_t firstSupplementary = 0x10000;

bool IsHighSurrogate(std::uint32_t unit)
{
    return unit >= firstSurrogate && unit < firstLowSurrogate;
}

bool IsLowSurrogate(std::uint32_t unit)
{
    return unit >= firstLowSurrogate && unit < afterSurrogates;
}

void AppendUtf8(std::string& bytes, std::uint32_t character)
{
    const auto append = [&](std::uint32_t value) { bytes.push_back(static_cast<char>(static_cast<unsigned char>(value))); };
    if (character < 0x80)
        return append(character);
    if (character < 0x800)
        append(0xC0 | (character >> 6));
    else
    {
        if (character < firstSupplementary)
            append(0xE0 | (character >> 12));
        else
        {
            append(0xF0 | (character >> 18));
            append(0x80 | ((character >> 12) & 0x3F));
        }
        append(0x80 | ((character >> 6) & 0x3F));
    }
    append(0x80 | (character & 0x3F));
}

// One row per length of a sequence: how its first byte looks and the smallest character that needs that length.
struct SequenceForm
{
    unsigned char mask;
    unsigned char mark;
    std::size_t cbTail;
    std::uint32_t smallest;
};
constexpr SequenceForm sequenceForms[] = {
    {0x80, 0x00, 0, 0},
    {0xE0, 0xC0, 1, 0x80},
    {0xF0, 0xE0, 2, 0x800},
    {0xF8, 0xF0, 3, firstSupplementary},
};

std::optional<std::uint32_t> TakeCharacter(std::string_view& bytes)
{
    const auto lead = static_cast<unsigned char>(bytes.front());
    for (const SequenceForm& form : sequenceForms)
    {
        if ((lead & form.mask) != form.mark)
            continue;
        if (bytes.size() <= form.cbTail)
            return std::nullopt;
        std::uint32_t character = lead & static_cast<unsigned char>(~form.mask);
        for (std::size_t i = 1; i <= form.cbTail; ++i)
        {
            const auto tail = static_cast<unsigned char>(bytes[i]);
            if ((tail & 0xC0) != 0x80)
                return std::nullopt;
            character = (character << 6) | (tail & 0x3Fu);
        }
        const bool bSurrogate = character >= firstSurrogate && character < afterSurrogates;
        if (character < form.smallest || bSurrogate || character > 0x10FFFF)
            return std::nullopt;
        bytes.remove_prefix(form.cbTail + 1);
        return character;
    }
    return std::nullopt;
}

std::optional<WideText> FromUtf16(std::string_view bytes, std::size_t lowByte)
{
    if (bytes.size() % 2 != 0)
        return std::nullopt;
    WideText text;
    text.reserve(bytes.size() / 2);
    for (std::size_t i = 0; i < bytes.size(); i += 2)
    {
        const unsigned low = static_cast<unsigned char>(bytes[i + lowByte]);
        const unsigned high = static_cast<unsigned char>(bytes[i + 1 - lowByte]);
        text.push_back(static_cast<WCHAR>(low | (high << 8)));
    }
    return text;
}
} // namespace

std::optional<std::string> ToUtf8(WideView text)
{
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        std::uint32_t character = text[i];
        if (IsLowSurrogate(character))
            return std::nullopt;
        if (IsHighSurrogate(character))
        {
            if (++i == text.size() || !IsLowSurrogate(text[i]))
                return std::nullopt;
            character = firstSupplementary + ((character - firstSurrogate) << 10) + (text[i] - firstLowSurrogate);
        }
        AppendUtf8(bytes, character);
    }
    return bytes;
}

std::optional<WideText> FromUtf8(std::string_view bytes)
{
    WideText text;
    text.reserve(bytes.size());
    while (!bytes.empty())
    {
        const auto character = TakeCharacter(bytes);
        if (!character)
            return std::nullopt;
        if (*character < firstSupplementary)
        {
            text.push_back(static_cast<WCHAR>(*character));
            continue;
        }
        const std::uint32_t offset = *character - firstSupplementary;
        text.push_back(static_cast<WCHAR>(firstSurrogate + (offset >> 10)));
        text.push_back(static_cast<WCHAR>(firstLowSurrogate + (offset & 0x3FF)));
    }
    return text;
}

std::optional<WideText> DecodeFile(std::string_view bytes)
{
    if (bytes.starts_with(utf8Mark))
        return FromUtf8(bytes.substr(utf8Mark.size()));
    if (bytes.starts_with("\xFF\xFE"))
        return FromUtf16(bytes.substr(2), 0);
    if (bytes.starts_with("\xFE\xFF"))
        return FromUtf16(bytes.substr(2), 1);
    // A document begins with an ASCII character, whose other half is the zero that UTF-8 text never has.
    if (bytes.size() >= 2 && bytes[0] != '\0' && bytes[1] == '\0')
        return FromUtf16(bytes, 0);
    if (bytes.size() >= 2 && bytes[0] == '\0' && bytes[1] != '\0')
        return FromUtf16(bytes, 1);
    return FromUtf8(bytes);
}

std::optional<std::string> EncodeFile(WideView text)
{
    auto bytes = ToUtf8(text);
    // A mark that belongs to the text gets one before it that belongs to the file.
    if (bytes && bytes->starts_with(utf8Mark))
        bytes->insert(0, utf8Mark);
    return bytes;
}
} // namespace simulator
