// The authentications and ciphers that the vendor's part of a profile can name: the word that stands in the profile, the
// value behind it, and the names under which a person sees it. What is added here is read, written, shown and offered.
#pragma once

#include "values/WideText.h"

#include <algorithm>
#include <iterator>

inline constexpr DWORD authOpen = 1;
inline constexpr DWORD authCckm = 0x80000001u; // lies in the vendors' range
inline constexpr DWORD cipherNone = 0;
inline constexpr DWORD cipherWep = 5;

namespace CCXSecurityTokens
{
struct Authentication
{
    const WCHAR* szToken;
    DWORD value;
    const WCHAR* szName;
};
// A profile with several of them means the one that stands first here.
inline constexpr Authentication authentication[] = {
    {OLESTR("open"), authOpen, OLESTR("Open (CCX)")},
    {OLESTR("cckm"), authCckm, OLESTR("CCKM")},
    {OLESTR("wpa"), 3, OLESTR("(WPA)")},
    {OLESTR("wpa2"), 6, OLESTR("(WPA2)")},
};

struct Cipher
{
    const WCHAR* szToken;
    DWORD value;
    const WCHAR* szName;
    const WCHAR* szQualifiedName;
    bool bOffered; // among the choices; those that are not stand behind those that are
};
// The choices are shown in this order, and the last of them is the one that a profile without a cipher gets.
inline constexpr Cipher cipher[] = {
    {OLESTR("WEP"), cipherWep, OLESTR("WEP"), OLESTR("WEP (CCX)"), true},
    {OLESTR("TKIP"), 2, OLESTR("TKIP"), OLESTR("TKIP (MFP)"), true},
    {OLESTR("AES"), 4, OLESTR("AES"), OLESTR("AES (MFP)"), true},
    {OLESTR("None"), cipherNone, OLESTR("None"), OLESTR("None (CCX)"), false},
};

// The row of a value; null when there is none.
template <class Row, std::size_t nRows>
const Row* Find(const Row (&rows)[nRows], DWORD value)
{
    const auto* pRow = std::find_if(std::begin(rows), std::end(rows), [&](const Row& row) { return row.value == value; });
    return pRow == std::end(rows) ? nullptr : pRow;
}
} // namespace CCXSecurityTokens
