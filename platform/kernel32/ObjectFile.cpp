#include "platform/kernel32/ObjectFile.h"

#include <cstring>
#include <optional>

#include <link.h>

namespace platform
{
namespace
{
using Bytes = std::span<const std::byte>;
using Header = ElfW(Ehdr);
using Section = ElfW(Shdr);
using Segment = ElfW(Phdr);
using Symbol = ElfW(Sym);

// A structure at a place in the file, copied because nothing says that it is aligned there.
template <class Structure>
std::optional<Structure> StructureAt(Bytes object, std::size_t place)
{
    if (place > object.size() || object.size() - place < sizeof(Structure))
        return std::nullopt;
    Structure structure;
    std::memcpy(&structure, object.data() + place, sizeof(structure));
    return structure;
}

// The text at a place in the file, compared up to its terminator.
bool IsTextAt(Bytes object, std::size_t place, std::string_view text)
{
    if (place > object.size() || object.size() - place <= text.size())
        return false;
    return std::memcmp(object.data() + place, text.data(), text.size()) == 0 && object[place + text.size()] == std::byte{0};
}

// The address that an exported symbol has once the object is loaded, from the object's beginning.
std::optional<std::size_t> AddressOf(Bytes object, const Header& header, std::string_view name)
{
    for (std::size_t i = 0; i < header.e_shnum; ++i)
    {
        const auto section = StructureAt<Section>(object, header.e_shoff + i * header.e_shentsize);
        if (!section || section->sh_type != SHT_DYNSYM)
            continue;
        const auto names = StructureAt<Section>(object, header.e_shoff + std::size_t{section->sh_link} * header.e_shentsize);
        for (std::size_t offset = 0; names && offset < section->sh_size; offset += sizeof(Symbol))
        {
            const auto symbol = StructureAt<Symbol>(object, section->sh_offset + offset);
            if (!symbol)
                break;
            if (symbol->st_shndx != SHN_UNDEF && IsTextAt(object, names->sh_offset + symbol->st_name, name))
                return symbol->st_value;
        }
    }
    return std::nullopt;
}

// Where in the file the bytes lie that are loaded at these addresses.
Bytes LoadedBytes(Bytes object, const Header& header, std::size_t begin, std::size_t end)
{
    for (std::size_t i = 0; i < header.e_phnum; ++i)
    {
        const auto segment = StructureAt<Segment>(object, header.e_phoff + i * header.e_phentsize);
        if (!segment || segment->p_type != PT_LOAD || begin < segment->p_vaddr || end - segment->p_vaddr > segment->p_filesz)
            continue;
        const std::size_t place = segment->p_offset + (begin - segment->p_vaddr);
        if (place <= object.size() && object.size() - place >= end - begin)
            return object.subspan(place, end - begin);
    }
    return {};
}
} // namespace

Bytes BytesBetween(Bytes object, std::string_view begin, std::string_view end)
{
    const auto header = StructureAt<Header>(object, 0);
    if (!header || std::memcmp(header->e_ident, ELFMAG, SELFMAG) != 0)
        return {};
    const auto first = AddressOf(object, *header, begin);
    const auto last = AddressOf(object, *header, end);
    return first && last && *first < *last ? LoadedBytes(object, *header, *first, *last) : Bytes();
}
} // namespace platform
