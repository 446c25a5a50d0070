// The module's language files, as they lie beside the program.
#pragma once

#include "resources/resource.h"
#include "tests/support/ModuleUnderTest.h"
#include "values/Unique.h"
#include "values/Utf8Text.h"

#include <sstream>

namespace tests
{
// Fails the case for a file that does not load.
inline CUniqueLibrary LoadLanguage(const std::string& strLanguage)
{
    const auto file = PlatformNameOf(BuildFolder() / strLanguage / "korihvui.dll.mui");
    CUniqueLibrary library(LoadLibraryExW(file.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE));
    EXPECT_NE(nullptr, library.Get()) << strLanguage;
    return library;
}

inline std::vector<std::string> Languages()
{
    std::istringstream names(LANGUAGES);
    return {std::istream_iterator<std::string>(names), {}};
}

inline CWideString StringOf(HMODULE hModule, UINT uId)
{
    WCHAR szText[512] = {};
    LoadStringW(hModule, uId, szText, 512);
    return szText;
}
} // namespace tests
