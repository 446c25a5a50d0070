#include "simulator/files/StagedFile.h"

#include <algorithm>
#include <atomic>

namespace
{
namespace fs = std::filesystem;

// What a temporary file's name has behind the target's; after it come the process and a number, which make it its own.
constexpr std::string_view temporaryMark = ".unfinished-";

bool IsNumber(std::string_view text)
{
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

// Exactly such a name, for others have something of their own beside the target, too; of any target when none is given.
bool IsTemporaryName(std::string_view name, std::string_view target)
{
    const std::size_t nMark = name.rfind(temporaryMark);
    if (nMark == std::string_view::npos || (!target.empty() && name.substr(0, nMark) != target))
        return false;
    const std::string_view own = name.substr(nMark + temporaryMark.size());
    const std::size_t nLine = std::min(own.find('-'), own.size());
    return IsNumber(own.substr(0, nLine)) && nLine < own.size() && IsNumber(own.substr(nLine + 1));
}

bool IsThere(const fs::path& file)
{
    std::error_code ignored;
    return fs::exists(fs::symlink_status(file, ignored));
}

fs::path FollowedToItsEnd(const fs::path& target)
{
    std::error_code error;
    const fs::path real = fs::weakly_canonical(absolute(target), error);
    if (!error && IsThere(target) && !fs::exists(target, error))
        throw CFileError("is a link that leads to no file", ERROR_FILE_NOT_FOUND);
    if (error)
        throw CFileError("cannot be written", ERROR_PATH_NOT_FOUND);
    // Not everybody whom the protection is meant for is also stopped by it.
    const DWORD dwAttributes = GetFileAttributesW(real.string<WCHAR>().c_str());
    if (dwAttributes != INVALID_FILE_ATTRIBUTES && (dwAttributes & FILE_ATTRIBUTE_READONLY) != 0)
        throw CFileError("cannot be written, it is write-protected", ERROR_ACCESS_DENIED);
    // By the name that was given: the system may forbid to follow a link that somebody else has put there.
    if (IsThere(real) && !OpenFile(target, GENERIC_WRITE, OPEN_EXISTING))
        throw CFileError("cannot be written");
    return real;
}
} // namespace

CStagedFile::CStagedFile(const fs::path& target, std::string_view bytes)
    : m_target(FollowedToItsEnd(target)), m_replaced(m_target)
{
    // First, for their room may be needed.
    RemoveLeftovers(m_target.parent_path(), m_target.filename());
    // Until it is locked, another writer may take the file for a leftover: then there has to be another. No name comes twice,
    // or whoever has just found a leftover of it would take the new file away.
    static std::atomic<unsigned> uLast = 0;
    while (!m_file)
    {
        m_temporary = m_target;
        m_temporary += std::string(temporaryMark) + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(++uLast);
        CUniqueFile file = m_replaced.MakeSuccessor(m_temporary);
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
    const auto strFrom = m_temporary.string<WCHAR>();
    const auto strTo = m_target.string<WCHAR>();
    // What came to the name of a new file meanwhile is not this writer's to replace.
    const BOOL bMoved = m_replaced.Exists() ? MoveFileExW(strFrom.c_str(), strTo.c_str(), MOVEFILE_REPLACE_EXISTING)
                                            : MoveFileW(strFrom.c_str(), strTo.c_str());
    if (!bMoved)
        throw CFileError("cannot be put in place");
    m_bCommitted = true;
    BringFolderToDisk(m_target.parent_path());
}

void RemoveLeftovers(const fs::path& folder, const fs::path& target)
{
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error))
    {
        if (!IsTemporaryName(entry->path().filename().string(), target.string()) || !IsOwnFile(entry->path()))
            continue;
        CUniqueFile file = OpenFile(entry->path(), GENERIC_READ | GENERIC_WRITE, OPEN_EXISTING);
        if (!file)
            continue;
        const CFile leftover(std::move(file));
        std::error_code ignored;
        if (leftover.Lock(false))
            fs::remove(entry->path(), ignored);
    }
}
