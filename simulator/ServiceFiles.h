// Reading, replacing and locking the files of a service folder.
#pragma once

#include <windows.h>

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace simulator
{
class CFile
{
public:
    // Shared with every other opener, so that a person's editor and other processes are never shut out. Throws
    // CServiceError with the platform's code.
    CFile(const std::filesystem::path& path, DWORD dwAccess, DWORD dwDisposition);
    ~CFile();
    CFile(const CFile&) = delete;
    CFile& operator=(const CFile&) = delete;

    std::string ReadAll() const;
    void Write(std::string_view bytes) const;
    void Flush() const;
    void SeekEnd() const;
    // Waits for the lock; it ends with the object or the process.
    void Lock(bool bExclusive) const;

private:
    HANDLE m_hFile;
};

// Nothing when there is no such file.
std::optional<std::string> ReadFileIfPresent(const std::filesystem::path& path);

// New content for a file: complete and on the disk under a temporary name until Commit puts it in place in one step.
// Without Commit the temporary file is taken away again. All operations throw CServiceError with the platform's code.
class CStagedFile
{
public:
    CStagedFile(const std::filesystem::path& target, std::string_view bytes);
    ~CStagedFile();
    CStagedFile(const CStagedFile&) = delete;
    CStagedFile& operator=(const CStagedFile&) = delete;

    void Commit();

private:
    std::filesystem::path m_target;
    std::filesystem::path m_temporary;
    bool m_bCommitted = false;
};

// Takes away what writers that were killed have left in the folder. Only for the holder of the exclusive lock.
void RemoveLeftovers(const std::filesystem::path& folder);

void EnsureFolder(const std::filesystem::path& folder);
void RemoveFile(const std::filesystem::path& path);
bool IsFile(const std::filesystem::path& path);
} // namespace simulator
