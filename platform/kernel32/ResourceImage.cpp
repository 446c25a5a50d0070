#include "platform/kernel32/ResourceImage.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>

namespace platform
{
namespace
{
using Bytes = std::span<const std::byte>;

// An empty record with this beginning tells the 32-bit form from an older one.
constexpr std::array<unsigned char, 16> firstRecord{0, 0, 0, 0, 0x20, 0, 0, 0, 0xFF, 0xFF, 0, 0, 0xFF, 0xFF, 0, 0};
constexpr WORD wOrdinalMark = 0xFFFF;
constexpr std::size_t cbSizes = 2 * sizeof(DWORD);

template <class Value>
std::optional<Value> Take(Bytes& bytes)
{
    Value value{};
    if (bytes.size() < sizeof(value))
        return std::nullopt;
    std::memcpy(&value, bytes.data(), sizeof(value));
    bytes = bytes.subspan(sizeof(value));
    return value;
}

// A mark and a number, or a text up to its terminator.
std::optional<WORD> TakeId(Bytes& header)
{
    auto unit = Take<WORD>(header);
    if (unit == wOrdinalMark)
        return Take<WORD>(header);
    while (unit && *unit != 0)
        unit = Take<WORD>(header);
    return unit;
}

// The record at the front of the image, which is shortened to what follows it.
std::optional<ResourceRecord> TakeRecord(Bytes& image)
{
    Bytes rest = image;
    const auto dataSize = Take<DWORD>(rest);
    const auto headerSize = Take<DWORD>(rest);
    if (!headerSize || *headerSize < cbSizes || *headerSize > image.size() || *dataSize > image.size() - *headerSize)
        return std::nullopt;
    Bytes header = image.subspan(cbSizes, *headerSize - cbSizes);
    const auto type = TakeId(header);
    const auto name = type ? TakeId(header) : std::nullopt;
    if (!name)
        return std::nullopt;
    const std::size_t cbRecord = std::size_t{*headerSize} + *dataSize;
    const ResourceRecord record{*type, *name, image.subspan(*headerSize, *dataSize)};
    image = image.subspan(std::min((cbRecord + 3) / 4 * 4, image.size()));
    return record;
}
} // namespace

bool HasResourceHeader(Bytes image)
{
    return image.size() >= firstRecord.size() && std::memcmp(image.data(), firstRecord.data(), firstRecord.size()) == 0;
}

std::vector<ResourceRecord> ReadResourceImage(Bytes image)
{
    std::vector<ResourceRecord> records;
    if (!HasResourceHeader(image) || !TakeRecord(image))
        return records;
    // A record takes at least its two sizes, so every turn shortens the image.
    while (const auto record = TakeRecord(image))
        records.push_back(*record);
    return records;
}
} // namespace platform
