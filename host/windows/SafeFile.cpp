#include "host/SafeFile.h"

#include "host/HostError.h"
#include "host/Leftovers.h"
#include "values/Unique.h"

#include <algorithm>
#include <string>
#include <vector>

namespace
{
[[noreturn]] void Refuse(const char* szWhat)
{
    throw CHostError(std::string(szWhat) + ": " + std::system_category().message(static_cast<int>(GetLastError())));
}

// Takes away what writers of the same file left when they were killed. A writer that lives shares its file with nobody, so
// that it cannot be deleted.
void RemoveLeftovers(const std::filesystem::path& target)
{
    ForEachLeftover(target, [](const std::filesystem::path& leftover) { DeleteFileW(leftover.c_str()); });
}

// The attributes and the access rights of the file that is replaced; else what a new file gets.
class CPermissions
{
public:
    CPermissions(const std::filesystem::path& target, DWORD dwAttributes)
    {
        if (dwAttributes == INVALID_FILE_ATTRIBUTES)
            return;
        constexpr DWORD kept = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE;
        m_dwAttributes = (dwAttributes & kept) != 0 ? dwAttributes & kept : FILE_ATTRIBUTE_NORMAL;
        // Without the size there are no rights here to be kept: not every file system has them.
        DWORD cbDescriptor = 0;
        GetFileSecurityW(target.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &cbDescriptor);
        m_descriptor.resize(cbDescriptor);
        if (cbDescriptor != 0 &&
            !GetFileSecurityW(target.c_str(), DACL_SECURITY_INFORMATION, m_descriptor.data(), cbDescriptor, &cbDescriptor))
            Refuse("cannot be written, its access rights cannot be read");
        m_attributes.lpSecurityDescriptor = m_descriptor.empty() ? nullptr : m_descriptor.data();
    }
    CPermissions(const CPermissions&) = delete;
    CPermissions& operator=(const CPermissions&) = delete;

    SECURITY_ATTRIBUTES* Rights()
    {
        return &m_attributes;
    }
    DWORD Attributes() const
    {
        return m_dwAttributes;
    }

private:
    DWORD m_dwAttributes = FILE_ATTRIBUTE_NORMAL;
    std::vector<BYTE> m_descriptor;
    SECURITY_ATTRIBUTES m_attributes{sizeof(SECURITY_ATTRIBUTES), nullptr, FALSE};
};

// A file that goes away again unless it is renamed. It is held open, and so is nobody else's, until it has its last name.
class CTemporaryFile
{
public:
    CTemporaryFile(const std::filesystem::path& target, CPermissions& permissions)
    {
        // The number only has to be free; whoever else writes the same file has taken another.
        for (DWORD dwNumber = GetCurrentProcessId();; ++dwNumber)
        {
            m_name = target;
            m_name += temporaryMark + std::to_string(dwNumber);
            m_file.Reset(CreateFileW(m_name.c_str(), GENERIC_WRITE | DELETE, 0, permissions.Rights(), CREATE_NEW,
                                     permissions.Attributes(), nullptr));
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

    void Write(std::string_view bytes) const
    {
        // A disk that fills up may take a part first, and says only then what is wrong.
        while (!bytes.empty())
        {
            DWORD cbWritten = 0;
            if (!WriteFile(m_file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &cbWritten, nullptr))
                Refuse("cannot be written");
            if (cbWritten == 0)
                throw CHostError("cannot be written, the disk takes no more");
            bytes.remove_prefix(cbWritten);
        }
        if (!FlushFileBuffers(m_file.Get()))
            Refuse("cannot be brought to the disk");
    }
    // One step for the file system. ReplaceFileW, which would keep the permissions by itself, takes several, and a process
    // killed between them leaves no file of the name.
    void RenameTo(const std::filesystem::path& target)
    {
        const std::wstring& strTarget = target.native();
        const std::size_t cbTarget = strTarget.size() * sizeof(wchar_t);
        std::vector<BYTE> buffer(sizeof(FILE_RENAME_INFO) + cbTarget);
        auto* pRename = reinterpret_cast<FILE_RENAME_INFO*>(buffer.data());
        pRename->ReplaceIfExists = TRUE;
        pRename->FileNameLength = static_cast<DWORD>(cbTarget);
        std::copy(strTarget.begin(), strTarget.end(), pRename->FileName);
        if (!SetFileInformationByHandle(m_file.Get(), FileRenameInfo, pRename, static_cast<DWORD>(buffer.size())))
            Refuse("cannot be replaced");
        m_bRenamed = true;
        m_file.Reset();
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
                   const std::filesystem::path real = std::filesystem::weakly_canonical(absolute(target), error);
                   if (error)
                       throw CHostError("cannot be written: " + error.message());
                   const DWORD dwAttributes = GetFileAttributesW(real.c_str());
                   const bool bExists = dwAttributes != INVALID_FILE_ATTRIBUTES;
                   if (bExists && (dwAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
                       throw CHostError("cannot be written: it is not a regular file");
                   if (bExists && (dwAttributes & FILE_ATTRIBUTE_READONLY) != 0)
                       throw CHostError("cannot be written: it is write-protected");

                   // First, for their room may be needed.
                   RemoveLeftovers(real);
                   CPermissions permissions(real, dwAttributes);
                   CTemporaryFile temporary(real, permissions);
                   temporary.Write(bytes);
                   temporary.RenameTo(real);
               });
}
