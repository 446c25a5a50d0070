// The two text forms of an SSID.
//
// On success the bytes stand in rgbSsid and their number in *plLength. On failure *plLength is not written; rgbSsid may
// hold the bytes before the failing character.
#pragma once

#include "values/WideText.h"

inline constexpr std::size_t maxSsidLength = 32;

// Pairs of hexadecimal digits. False for an odd number of characters, more than 32 pairs, or any other character.
bool HexToSsid(CWideView text, BYTE (&rgbSsid)[maxSsidLength], LONG* plLength);

// Printable ASCII. False for more than 32 characters, or any character outside blank to tilde.
bool NameToSsid(CWideView text, BYTE (&rgbSsid)[maxSsidLength], LONG* plLength);
