#include "host/SafeFile.h"

#include "host/HostError.h"
#include "trace/Unique.h"

#include <string>

namespace
{
[[noreturn]] void Refuse(const char* szWhat)
{
    throw CHostError(std::string(szWhat) + ": " + std::system_category().message(static_cast<int>(GetLastError())));
}

// A file that goes away again unless it is renamed.
class CTemporaryFile
{
public:
    explicit CTemporaryFile(const std::filesystem::path& target)
    {
        // The number only has to be free; whoever else writes the same file has taken another.
        for (DWORD dwNumber = GetCurrentProcessId();; ++dwNumber)
        {
            m_name = target;
            m_name += "." + std::to_string(dwNumber) + ".tmp";
            m_file.Reset(CreateFileW(m_name.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
            if (m_file)
                return;
            if (GetLastError() != ERROR_FILE_EXISTS)
                Refuse("cannot be written, its folder takes no new file");
        }
    }
    ~CTemporaryFile()
    {
        m_file.Reset();
        if (!m_bRenamed)
            DeleteFileW(m_name.c_str());
    }
    CTemporaryFile(const CTemporaryFile&) = delete;
    CTemporaryFile& operator=(const CTemporaryFile&) = delete;

    void Write(std::string_view bytes)
    {
        DWORD cbWritten = 0;
        if (!WriteFile(m_file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &cbWritten, nullptr) ||
            cbWritten != bytes.size())
            Refuse("cannot be written");
        if (!FlushFileBuffers(m_file.Get()))
            Refuse("cannot be brought to the disk");
        m_file.Reset();
    }
    // ReplaceFileW carries the attributes and the access rights of the old file over to the new one.
    void RenameTo(const std::filesystem::path& target, bool bExists)
    {
        const BOOL bDone = bExists ? ReplaceFileW(target.c_str(), m_name.c_str(), nullptr, 0, nullptr, nullptr)
                                   : MoveFileExW(m_name.c_str(), target.c_str(), MOVEFILE_WRITE_THROUGH);
        if (!bDone)
            Refuse("cannot be replaced");
        m_bRenamed = true;
    }

private:
    std::filesystem::path m_name;
    CUniqueFile m_file;
    bool m_bRenamed = false;
};
} // namespace

void WriteSafely(const std::filesystem::path& target, std::string_view bytes)
{
    NamingFile(target,
               [&]
               {
                   std::error_code error;
                   const std::filesystem::path real = std::filesystem::weakly_canonical(target, error);
                   if (error)
                       throw CHostError("cannot be written: " + error.message());
                   const DWORD dwAttributes = GetFileAttributesW(real.c_str());
                   const bool bExists = dwAttributes != INVALID_FILE_ATTRIBUTES;
                   if (bExists && (dwAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
                       throw CHostError("cannot be written: it is not a regular file");
                   if (bExists && (dwAttributes & FILE_ATTRIBUTE_READONLY) != 0)
                       throw CHostError("cannot be written: it is write-protected");

                   CTemporaryFile temporary(real);
                   temporary.Write(bytes);
                   temporary.RenameTo(real, bExists);
               });
}
