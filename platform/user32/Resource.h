// A resource's bytes in place.
#pragma once

#include <windows.h>

#include <cstdint>
#include <span>

namespace platform::user32
{
// Empty, with a last error, when the module has no such resource.
inline std::span<const std::uint8_t> ResourceBytes(HINSTANCE hInstance, LPCWSTR szName, LPCWSTR szType)
{
    const HRSRC hResource = FindResourceW(hInstance, szName, szType);
    const HGLOBAL hData = hResource ? LoadResource(hInstance, hResource) : nullptr;
    const auto* pBytes = hData ? static_cast<const std::uint8_t*>(LockResource(hData)) : nullptr;
    return pBytes ? std::span(pBytes, SizeofResource(hInstance, hResource)) : std::span<const std::uint8_t>();
}
} // namespace platform::user32
