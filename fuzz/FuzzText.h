// What the fuzz targets have in common: texts out of bytes, and properties that end the program when they do not hold.
#pragma once

#include "values/Bstr.h"
#include "values/WideText.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>

// Takes COM up for the process, once.
void PrepareProcess();

// The bytes as a text: well-formed UTF-8 as the characters it stands for, anything else as 16-bit units as they lie there,
// so that lone surrogates and every control are reached too. Ends at the first zero, as texts do.
CWideString TextFrom(const std::uint8_t* pData, std::size_t cbData);

// Whether the document component loads the text.
bool IsWellFormed(const WCHAR* szText);

// The record as a profile, empty when it cannot be written.
template <class Settings>
CBstr Written(const Settings& settings)
{
    CBstr bstrProfile;
    *bstrProfile.Put() = settings.Serialise();
    return bstrProfile;
}

inline void Require(bool bHolds, const char* szProperty)
{
    if (bHolds)
        return;
    std::fprintf(stderr, "property does not hold: %s\n", szProperty);
    std::abort();
}
