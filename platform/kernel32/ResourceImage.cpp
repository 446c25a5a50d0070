#include "platform/kernel32/ResourceImage.h"

#include "platform/kernel32/Unicode.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>
#include <string_view>

namespace platform
{
namespace
{
using Bytes = std::span<const std::byte>;

// An empty record with this beginning tells the 32-bit form from an older one.
constexpr std::array<unsigned char, 16> firstRecord{0, 0, 0, 0, 0x20, 0, 0, 0, 0xFF, 0xFF, 0, 0, 0xFF, 0xFF, 0, 0};
constexpr WORD wOrdinalMark = 0xFFFF;
constexpr std::size_t cbAlignment = 4;

constexpr std::size_t AlignUp(std::size_t cb)
{
    return (cb + cbAlignment - 1) / cbAlignment * cbAlignment;
}

// Takes values from the front of a header; nothing more comes once one of them was not there.
class CHeaderReader
{
public:
    explicit CHeaderReader(Bytes header) : m_header(header)
    {
    }

    template <class Value>
    std::optional<Value> Take()
    {
        if (m_header.size() - m_cbTaken < sizeof(Value))
            return std::nullopt;
        Value value{};
        std::memcpy(&value, m_header.data() + m_cbTaken, sizeof(Value));
        m_cbTaken += sizeof(Value);
        return value;
    }

    std::optional<ResourceId> TakeId()
    {
        ResourceId id;
        auto unit = Take<WORD>();
        if (unit == wOrdinalMark)
        {
            const auto ordinal = Take<WORD>();
            if (!ordinal)
                return std::nullopt;
            id.wOrdinal = *ordinal;
            return id;
        }
        for (; unit && *unit != 0; unit = Take<WORD>())
            id.text.push_back(static_cast<char16_t>(*unit));
        return unit ? std::optional(std::move(id)) : std::nullopt;
    }

    void Align()
    {
        m_cbTaken = std::min(AlignUp(m_cbTaken), m_header.size());
    }

private:
    Bytes m_header;
    std::size_t m_cbTaken = 0;
};

// The record at the front of the image, which is shortened to what follows it.
std::optional<ResourceRecord> TakeRecord(Bytes& image)
{
    CHeaderReader sizes(image);
    const auto dataSize = sizes.Take<DWORD>();
    const auto headerSize = sizes.Take<DWORD>();
    if (!headerSize || *headerSize > image.size() || *dataSize > image.size() - *headerSize)
        return std::nullopt;

    CHeaderReader header(image.first(*headerSize));
    header.Take<DWORD>();
    header.Take<DWORD>();
    ResourceRecord record;
    auto type = header.TakeId();
    auto name = type ? header.TakeId() : std::nullopt;
    if (!name)
        return std::nullopt;
    header.Align();
    header.Take<DWORD>(); // version of the data
    header.Take<WORD>();  // memory flags, of old
    const auto language = header.Take<WORD>();
    if (!language)
        return std::nullopt;

    record.type = std::move(*type);
    record.name = std::move(*name);
    record.wLanguage = *language;
    record.data = image.subspan(*headerSize, *dataSize);
    image = image.subspan(std::min(AlignUp(std::size_t{*headerSize} + *dataSize), image.size()));
    return record;
}
} // namespace

ResourceId ResourceId::FromArgument(LPCWSTR szId)
{
    ResourceId id;
    if (IS_INTRESOURCE(szId))
    {
        id.wOrdinal = LOWORD(reinterpret_cast<ULONG_PTR>(szId));
        return id;
    }
    id.text = szId;
    const bool bNumber =
        id.text.size() > 1 && id.text.size() <= 6 && id.text[0] == u'#' &&
        std::all_of(id.text.begin() + 1, id.text.end(), [](char16_t unit) { return unit >= u'0' && unit <= u'9'; });
    if (!bNumber)
        return id;
    DWORD dwNumber = 0;
    for (const char16_t digit : std::u16string_view(id.text).substr(1))
        dwNumber = dwNumber * 10 + (digit - u'0');
    if (dwNumber <= 0xFFFF)
    {
        id.wOrdinal = static_cast<WORD>(dwNumber);
        id.text.clear();
    }
    return id;
}

bool ResourceId::operator==(const ResourceId& other) const
{
    return wOrdinal == other.wOrdinal && std::ranges::equal(text, other.text, {}, UpperOf, UpperOf);
}

bool HasResourceHeader(Bytes image)
{
    return image.size() >= firstRecord.size() && std::memcmp(image.data(), firstRecord.data(), firstRecord.size()) == 0;
}

std::vector<ResourceRecord> ReadResourceImage(Bytes image)
{
    std::vector<ResourceRecord> records;
    if (!HasResourceHeader(image))
        return records;
    if (!TakeRecord(image))
        return records;
    // A record takes at least its two sizes, so every turn shortens the image.
    while (!image.empty())
    {
        auto record = TakeRecord(image);
        if (!record)
            break;
        records.push_back(std::move(*record));
    }
    return records;
}
} // namespace platform
