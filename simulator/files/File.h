// Files through the platform's own functions, on both builds alike.
#pragma once

#include "values/Unique.h"

#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>

// An operation that failed: what did not work, and the platform's code for the reason.
class CFileError : public std::runtime_error
{
public:
    // Without a code that of the platform's function that failed last.
    explicit CFileError(const char* szWhat, DWORD dwCode = GetLastError());
    DWORD Code() const
    {
        return m_dwCode;
    }

private:
    DWORD m_dwCode;
};

// Shared with every other opener, so that a person's editor and other processes are never shut out.
CUniqueFile OpenFile(const std::filesystem::path& path, DWORD dwAccess, DWORD dwDisposition);

// These throw CFileError.
class CFile
{
public:
    CFile(const std::filesystem::path& path, DWORD dwAccess, DWORD dwDisposition);
    explicit CFile(CUniqueFile file);

    std::string ReadAll() const;
    void Write(std::string_view bytes) const;
    void Flush() const;
    void SeekEnd() const;
    // The lock ends with the object or the process. False, where it is not to be waited for, when another has it.
    bool Lock(bool bWait) const;

private:
    CUniqueFile m_file;
};
