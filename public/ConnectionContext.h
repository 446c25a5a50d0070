// The host's connection context: the record that every profile operation receives right after the profile text.
//
// Its layout belongs to the platform; four fields of it are read here, by byte position. The record stays the host's
// and is only looked at while the operation that received it runs. C++17.
#pragma once

#include <windows.h>

#include <array>
#include <cstddef>
#include <cstring>

// Capacity of the profile name within the context, in UTF-16 code units.
inline constexpr std::size_t connectionContextNameCapacity = 256;

// The connection kind under which a security property keeps to its plain names.
inline constexpr DWORD connectionKindPlain = 1;

// The record as a host fills it that has none from the platform: with connectionKindPlain, and zeros in what is not read.
struct Dot11ExtUIConnectionContext
{
    BYTE rgbNotRead[8];
    DWORD connectionKind;
    BYTE rgbNotReadEither[12];
    WCHAR profileName[connectionContextNameCapacity]; // of the stored wireless profile; zero-terminated when shorter
    DWORD profileFlags;                               // with which that profile is stored again, as the WLAN service takes them
    GUID interfaceGuid;                               // of the adapter
};

namespace ConnectionContextOffset
{
inline constexpr std::size_t connectionKind = offsetof(Dot11ExtUIConnectionContext, connectionKind);
inline constexpr std::size_t profileName = offsetof(Dot11ExtUIConnectionContext, profileName);
inline constexpr std::size_t profileFlags = offsetof(Dot11ExtUIConnectionContext, profileFlags);
inline constexpr std::size_t interfaceGuid = offsetof(Dot11ExtUIConnectionContext, interfaceGuid);
inline constexpr std::size_t end = sizeof(Dot11ExtUIConnectionContext);
} // namespace ConnectionContextOffset
static_assert(ConnectionContextOffset::connectionKind == 8 && ConnectionContextOffset::profileName == 24 &&
                  ConnectionContextOffset::profileFlags == 536 && ConnectionContextOffset::interfaceGuid == 540 &&
                  ConnectionContextOffset::end == 556,
              "the platform's layout");

// Reads the fields. The address need not be aligned; it must be followed by ConnectionContextOffset::end readable bytes.
class CConnectionContextReader
{
public:
    // pContext is borrowed and must not be null.
    explicit CConnectionContextReader(const void* pContext) : m_pContext(static_cast<const BYTE*>(pContext))
    {
    }

    DWORD ConnectionKind() const
    {
        return Read<DWORD>(ConnectionContextOffset::connectionKind);
    }

    // The name, terminated here also when the host filled all its code units.
    std::array<WCHAR, connectionContextNameCapacity + 1> ProfileName() const
    {
        std::array<WCHAR, connectionContextNameCapacity + 1> name{};
        std::memcpy(name.data(), m_pContext + ConnectionContextOffset::profileName,
                    connectionContextNameCapacity * sizeof(WCHAR));
        return name;
    }

    DWORD ProfileFlags() const
    {
        return Read<DWORD>(ConnectionContextOffset::profileFlags);
    }

    GUID InterfaceGuid() const
    {
        return Read<GUID>(ConnectionContextOffset::interfaceGuid);
    }

private:
    template <class Field>
    Field Read(std::size_t cbOffset) const
    {
        Field field;
        std::memcpy(&field, m_pContext + cbOffset, sizeof(field));
        return field;
    }

    const BYTE* m_pContext;
};
