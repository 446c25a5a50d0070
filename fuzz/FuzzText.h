// What the fuzz targets have in common: texts out of bytes, documents, and properties that end the program when they do not
// hold.
#pragma once

#include "profile/XmlDocument.h"
#include "values/Utf8Text.h"

#include <objbase.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

inline void Require(bool bHolds, const char* szProperty)
{
    if (bHolds)
        return;
    std::fprintf(stderr, "property does not hold: %s\n", szProperty);
    std::abort();
}

// The bytes as a text: well-formed UTF-8 as the characters it stands for, anything else as 16-bit units as they lie there,
// so that lone surrogates and every control are reached too. Ends at the first zero, as texts do.
inline CWideString TextFrom(const std::uint8_t* pData, std::size_t cbData)
{
    const std::string_view bytes(reinterpret_cast<const char*>(pData), cbData);
    const CWideString text = WideOfUtf8(bytes).value_or(WideOfUtf16(bytes, UnicodeForm::Utf16LittleEndian));
    return text.substr(0, text.find(WCHAR{}));
}

// Takes COM up for the process, once.
inline void PrepareProcess()
{
    static const HRESULT hr = CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    Require(SUCCEEDED(hr), "COM starts");
}

inline bool IsWellFormed(const WCHAR* szText)
{
    CXmlDocument document;
    return document.Load(szText) && document.Root();
}
