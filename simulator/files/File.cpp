#include "simulator/files/File.h"

CFileError::CFileError(const char* szWhat, DWORD dwCode)
    : std::runtime_error(szWhat), m_dwCode(dwCode != ERROR_SUCCESS ? dwCode : DWORD{ERROR_GEN_FAILURE})
{
}

CUniqueFile OpenFile(const std::filesystem::path& path, DWORD dwAccess, DWORD dwDisposition)
{
    return CUniqueFile(CreateFileW(path.string<WCHAR>().c_str(), dwAccess, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                   nullptr, dwDisposition, FILE_ATTRIBUTE_NORMAL, nullptr));
}

CFile::CFile(const std::filesystem::path& path, DWORD dwAccess, DWORD dwDisposition)
    : CFile(OpenFile(path, dwAccess, dwDisposition))
{
}

CFile::CFile(CUniqueFile file) : m_file(std::move(file))
{
    if (!m_file)
        throw CFileError("cannot be opened");
}

std::string CFile::ReadAll() const
{
    std::string bytes;
    char buffer[8192];
    for (DWORD cbRead = sizeof(buffer); cbRead != 0;)
    {
        if (!ReadFile(m_file.Get(), buffer, sizeof(buffer), &cbRead, nullptr))
            throw CFileError("cannot be read");
        bytes.append(buffer, cbRead);
    }
    return bytes;
}

void CFile::Write(std::string_view bytes) const
{
    // A disk that fills up may take a part first, and says only then what is wrong.
    while (!bytes.empty())
    {
        DWORD cbWritten = 0;
        if (!WriteFile(m_file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &cbWritten, nullptr))
            throw CFileError("cannot be written");
        if (cbWritten == 0)
            throw CFileError("cannot be written", ERROR_DISK_FULL);
        bytes.remove_prefix(cbWritten);
    }
}

void CFile::Flush() const
{
    if (!FlushFileBuffers(m_file.Get()))
        throw CFileError("cannot be brought to the disk");
}

void CFile::SeekEnd() const
{
    if (SetFilePointer(m_file.Get(), 0, nullptr, FILE_END) == INVALID_SET_FILE_POINTER)
        throw CFileError("the end cannot be found");
}

bool CFile::Lock(bool bWait) const
{
    // A locked byte cannot be read by others on the platform: take one that no file here reaches.
    OVERLAPPED overlapped{};
    overlapped.Offset = 0x7FFFFFFE;
    const DWORD dwFlags = LOCKFILE_EXCLUSIVE_LOCK | (bWait ? 0 : LOCKFILE_FAIL_IMMEDIATELY);
    if (LockFileEx(m_file.Get(), dwFlags, 0, 1, 0, &overlapped))
        return true;
    if (bWait)
        throw CFileError("cannot be locked");
    return false;
}
