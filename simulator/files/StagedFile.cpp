#include "simulator/files/StagedFile.h"

#include "simulator/files/AccessRights.h"

#include <atomic>

namespace
{
namespace fs = std::filesystem;

// What a temporary file's name has behind the target's; after it comes what makes the name its own.
constexpr const char* temporaryMark = ".unfinished-";

bool IsThere(const fs::path& file)
{
    std::error_code ignored;
    return fs::exists(fs::symlink_status(file, ignored));
}

fs::path FollowedToItsEnd(const fs::path& target)
{
    std::error_code error;
    const fs::path real = fs::weakly_canonical(absolute(target), error);
    if (error)
        throw CFileError("cannot be written", ERROR_PATH_NOT_FOUND);
    // Not everybody whom the protection is meant for is also stopped by it.
    const DWORD dwAttributes = GetFileAttributesW(real.string<WCHAR>().c_str());
    if (dwAttributes != INVALID_FILE_ATTRIBUTES && (dwAttributes & FILE_ATTRIBUTE_READONLY) != 0)
        throw CFileError("cannot be written, it is write-protected", ERROR_ACCESS_DENIED);
    if (IsThere(real) && !OpenFile(real, GENERIC_WRITE, OPEN_EXISTING))
        throw CFileError("cannot be written");
    return real;
}
} // namespace

CStagedFile::CStagedFile(const fs::path& target, std::string_view bytes) : m_target(FollowedToItsEnd(target))
{
    // First, for their room may be needed.
    RemoveLeftovers(m_target.parent_path(), m_target.filename());
    // Until it is locked, another writer may take the file for a leftover: then there has to be another. No name comes twice,
    // or whoever has just found a leftover of it would take the new file away.
    static std::atomic<unsigned> uLast = 0;
    while (!m_file)
    {
        m_temporary = m_target;
        m_temporary += temporaryMark + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(++uLast);
        CUniqueFile file = CreateWithRightsOf(m_target, m_temporary);
        if (file)
            m_file.emplace(std::move(file));
        else if (GetLastError() != ERROR_FILE_EXISTS && GetLastError() != ERROR_FILE_NOT_FOUND)
            throw CFileError("cannot be written, its folder takes no new file");
        if (m_file && (!m_file->Lock(false) || !IsThere(m_temporary)))
            m_file.reset();
    }
    try
    {
        m_file->Write(bytes);
        m_file->Flush();
    }
    catch (...)
    {
        fs::remove(m_temporary);
        throw;
    }
}

CStagedFile::~CStagedFile()
{
    std::error_code ignored;
    if (!m_bCommitted)
        fs::remove(m_temporary, ignored);
}

// One step for the file system. ReplaceFileW, which would keep the access rights by itself, takes several, and a process
// killed between them leaves no file of the name.
void CStagedFile::Commit()
{
    if (!MoveFileExW(m_temporary.string<WCHAR>().c_str(), m_target.string<WCHAR>().c_str(), MOVEFILE_REPLACE_EXISTING))
        throw CFileError("cannot be replaced");
    m_bCommitted = true;
    BringFolderToDisk(m_target.parent_path());
}

void RemoveLeftovers(const fs::path& folder, const fs::path& beginning)
{
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error))
    {
        const std::string strName = entry->path().filename().string();
        if (!strName.starts_with(beginning.string()) || strName.find(temporaryMark) == std::string::npos)
            continue;
        std::error_code ignored;
        CUniqueFile file;
        if (entry->symlink_status(ignored).type() == fs::file_type::regular)
            file = OpenFile(entry->path(), GENERIC_READ | GENERIC_WRITE, OPEN_EXISTING);
        if (!file)
            continue;
        const CFile leftover(std::move(file));
        if (leftover.Lock(false))
            fs::remove(entry->path(), ignored);
    }
}
