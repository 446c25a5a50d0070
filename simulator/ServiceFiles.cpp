#include "simulator/ServiceFiles.h"

#include "simulator/ServiceError.h"
#include "simulator/Text.h"

#include <system_error>
#include <vector>

namespace simulator
{
namespace
{
namespace fs = std::filesystem;

constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr const char* temporarySuffix = ".tmp";

WideText Wide(const fs::path& path)
{
    return path.string<WCHAR>();
}
} // namespace

CFile::CFile(const fs::path& path, DWORD dwAccess, DWORD dwDisposition)
    : m_hFile(CreateFileW(Wide(path).c_str(), dwAccess, shareAll, nullptr, dwDisposition, FILE_ATTRIBUTE_NORMAL, nullptr))
{
    if (m_hFile == INVALID_HANDLE_VALUE)
        ThrowLastError("a file cannot be opened");
}

CFile::~CFile()
{
    CloseHandle(m_hFile);
}

std::string CFile::ReadAll() const
{
    std::string bytes;
    char buffer[8192];
    for (DWORD cbRead = sizeof(buffer); cbRead != 0;)
    {
        if (!ReadFile(m_hFile, buffer, sizeof(buffer), &cbRead, nullptr))
            ThrowLastError("a file cannot be read");
        bytes.append(buffer, cbRead);
    }
    return bytes;
}

void CFile::Write(std::string_view bytes) const
{
    while (!bytes.empty())
    {
        DWORD cbWritten = 0;
        if (!WriteFile(m_hFile, bytes.data(), static_cast<DWORD>(bytes.size()), &cbWritten, nullptr))
            ThrowLastError("a file cannot be written");
        if (cbWritten == 0)
            throw CServiceError(ERROR_DISK_FULL, "a file cannot be written");
        bytes.remove_prefix(cbWritten);
    }
}

void CFile::Flush() const
{
    if (!FlushFileBuffers(m_hFile))
        ThrowLastError("a file cannot be flushed");
}

void CFile::SeekEnd() const
{
    // The low half of a position may look like the failure value; only the last error tells them apart.
    LONG lHigh = 0;
    SetLastError(NO_ERROR);
    if (SetFilePointer(m_hFile, 0, &lHigh, FILE_END) == INVALID_SET_FILE_POINTER && GetLastError() != NO_ERROR)
        ThrowLastError("the end of a file cannot be found");
}

void CFile::Lock(bool bExclusive) const
{
    // A locked byte cannot be read by others on the platform: take one that no file here reaches.
    OVERLAPPED overlapped{};
    overlapped.Offset = 0x7FFFFFFE;
    if (!LockFileEx(m_hFile, bExclusive ? LOCKFILE_EXCLUSIVE_LOCK : 0, 0, 1, 0, &overlapped))
        ThrowLastError("a file cannot be locked");
}

std::optional<std::string> ReadFileIfPresent(const fs::path& path)
{
    if (!IsFile(path))
        return std::nullopt;
    return CFile(path, GENERIC_READ, OPEN_EXISTING).ReadAll();
}

CStagedFile::CStagedFile(const fs::path& target, std::string_view bytes) : m_target(target), m_temporary(target)
{
    m_temporary += temporarySuffix;
    try
    {
        const CFile file(m_temporary, GENERIC_WRITE, CREATE_ALWAYS);
        file.Write(bytes);
        file.Flush();
    }
    catch (...)
    {
        DeleteFileW(Wide(m_temporary).c_str());
        throw;
    }
}

CStagedFile::~CStagedFile()
{
    if (m_bCommitted)
        return;
    std::error_code ignored;
    fs::remove(m_temporary, ignored);
}

void CStagedFile::Commit()
{
    if (!MoveFileExW(Wide(m_temporary).c_str(), Wide(m_target).c_str(), MOVEFILE_REPLACE_EXISTING))
        ThrowLastError("a file cannot be put in place");
    m_bCommitted = true;
}

void RemoveLeftovers(const fs::path& folder)
{
    std::vector<fs::path> leftovers;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error))
    {
        if (entry->path().extension() == temporarySuffix)
            leftovers.push_back(entry->path());
    }
    for (const fs::path& leftover : leftovers)
        fs::remove(leftover, error);
}

void EnsureFolder(const fs::path& folder)
{
    if (!CreateDirectoryW(Wide(folder).c_str(), nullptr) && GetLastError() != ERROR_ALREADY_EXISTS)
        ThrowLastError("a folder cannot be made");
}

void RemoveFile(const fs::path& path)
{
    if (!DeleteFileW(Wide(path).c_str()))
        ThrowLastError("a file cannot be deleted");
}

bool IsFile(const fs::path& path)
{
    std::error_code ignored;
    return fs::is_regular_file(path, ignored);
}
} // namespace simulator
