#include "answers/FileFixture.h"

#include "answers/Wording.h"
#include "tests/support/TestFolder.h"
#include "values/Unique.h"

#include <algorithm>
#include <vector>

namespace answers
{
namespace fs = std::filesystem;

CFileFixture::CFileFixture(const fs::path& folder) : m_path(folder / "f")
{
    fs::create_directories(m_path / "folder");
    fs::create_directories(m_path / "full");
    for (const char* const szName : {"file", "other", "full/inner"})
        tests::WriteBytes(m_path / szName, "0123456789");
    m_folderName = FolderName(m_path);
    DWORD cbWritten = 0;
    const CUniqueFile readOnly(
        CreateFileW(Place(OLESTR("readonly")), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_READONLY, nullptr));
    WriteFile(readOnly.Get(), "0123", 4, &cbWritten, nullptr);
}

CFileFixture::~CFileFixture()
{
    std::error_code ignored;
    // Some platforms delete no file that is read-only.
    for (const auto& entry : fs::recursive_directory_iterator(m_path, ignored))
        fs::permissions(entry.path(), fs::perms::owner_write, fs::perm_options::add, ignored);
    fs::remove_all(m_path, ignored);
}

const WCHAR* CFileFixture::Place(const WCHAR* szName)
{
    if (!szName || !*szName)
        return szName;
    m_uNext = 1 - m_uNext;
    m_places[m_uNext] = m_folderName + OLESTR("\\") + szName;
    return m_places[m_uNext].c_str();
}

std::string CFileFixture::Shown() const
{
    std::vector<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(m_path))
    {
        const auto name = entry.path().lexically_relative(m_path).generic_u16string();
        const std::string shown = answers::Shown(CWideString(name.begin(), name.end()));
        names.push_back(shown + (entry.is_directory() ? "/" : "=" + std::to_string(entry.file_size())));
    }
    std::ranges::sort(names);
    std::string all;
    for (const auto& name : names)
        all += (all.empty() ? "" : " ") + name;
    return all;
}
} // namespace answers
