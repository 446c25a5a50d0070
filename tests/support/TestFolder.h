// A temporary folder that is gone with the object, and the files in it.
#pragma once

#include "values/WideText.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace tests
{
class CTestFolder
{
public:
    CTestFolder();
    ~CTestFolder();
    CTestFolder(const CTestFolder&) = delete;
    CTestFolder& operator=(const CTestFolder&) = delete;

    const std::filesystem::path& Path() const
    {
        return m_path;
    }
    // The folder, or a file in it, as the platform's functions take it.
    CWideString PlatformName(CWideView file = {}) const;

private:
    std::filesystem::path m_path;
};

// A path as the platform's functions take it.
CWideString PlatformNameOf(const std::filesystem::path& path);

// What follows the first bytes of a file; "" for one that cannot be read.
std::string ReadBytes(const std::filesystem::path& path, std::size_t cbSkipped = 0);
void WriteBytes(const std::filesystem::path& path, std::string_view bytes);

// 7-bit text widened, and wide text with everything else as '?': for messages and literals.
CWideString Widen(std::string_view text);
std::string Narrow(CWideView text);
} // namespace tests
