#include "tests/support/TestFolder.h"

#include <atomic>
#include <fstream>
#include <sstream>

namespace tests
{
CTestFolder::CTestFolder()
{
    static std::atomic<unsigned> uCount = 0;
    const auto name = "korihvui-test-" + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(++uCount);
    m_path = std::filesystem::temp_directory_path() / name;
    std::filesystem::remove_all(m_path);
    std::filesystem::create_directories(m_path);
}

CTestFolder::~CTestFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

CWideString CTestFolder::PlatformName(CWideView file) const
{
    CWideString name = PlatformNameOf(m_path);
    if (!file.empty())
        name.append(1, static_cast<WCHAR>(std::filesystem::path::preferred_separator)).append(file);
    return name;
}

CWideString PlatformNameOf(const std::filesystem::path& path)
{
    const auto text = path.u16string();
    return CWideString(text.begin(), text.end());
}

std::string ReadBytes(const std::filesystem::path& path, std::size_t cbSkipped)
{
    std::ifstream file(path, std::ios::binary);
    file.seekg(static_cast<std::streamoff>(cbSkipped));
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return std::move(bytes).str();
}

void WriteBytes(const std::filesystem::path& path, std::string_view bytes)
{
    std::ofstream(path, std::ios::binary) << bytes;
}

CWideString Widen(std::string_view text)
{
    return CWideString(text.begin(), text.end());
}

std::string Narrow(CWideView text)
{
    std::string narrow;
    for (const WCHAR ch : text)
        narrow += ch < 0x80 ? static_cast<char>(ch) : '?';
    return narrow;
}
} // namespace tests
