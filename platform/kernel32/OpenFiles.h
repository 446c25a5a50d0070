// Opening real files the way the platform does: dispositions, share modes between this process's own openings, and no
// directory ever opened as a file.
#pragma once

#include <windows.h>

#include <filesystem>
#include <memory>

#include <sys/types.h>

namespace platform
{
// A file descriptor with its owner.
class CDescriptor
{
public:
    explicit CDescriptor(int fd = -1) noexcept : m_fd(fd)
    {
    }
    CDescriptor(CDescriptor&& other) noexcept : m_fd(other.Detach())
    {
    }
    CDescriptor& operator=(CDescriptor&&) = delete;
    ~CDescriptor();

    int Get() const noexcept
    {
        return m_fd;
    }
    int Detach() noexcept
    {
        const int fd = m_fd;
        m_fd = -1;
        return fd;
    }

private:
    int m_fd;
};

struct OpenRequest
{
    DWORD dwAccess;         // GENERIC_READ, GENERIC_WRITE, both or neither
    DWORD dwShareMode;      // FILE_SHARE_*
    DWORD dwDisposition;    // CREATE_NEW ... TRUNCATE_EXISTING
    bool bReadOnly = false; // a file that is created gets no write permission
};

// One entry of the table of open files; leaves the table when it is destroyed.
class COpenFileEntry
{
public:
    COpenFileEntry(dev_t device, ino_t inode, DWORD dwAccess, DWORD dwShareMode);
    COpenFileEntry(const COpenFileEntry&) = delete;
    COpenFileEntry& operator=(const COpenFileEntry&) = delete;
    ~COpenFileEntry();

    const dev_t m_device;
    const ino_t m_inode;
    const DWORD m_dwAccess;
    const DWORD m_dwShareMode;
};

struct OpenedFile
{
    DWORD dwError = ERROR_SUCCESS;
    bool bExisted = false;
    CDescriptor descriptor;                // open when dwError is ERROR_SUCCESS
    std::unique_ptr<COpenFileEntry> entry; // keeps the share mode in force
};

OpenedFile OpenHostFile(const std::filesystem::path& hostPath, const OpenRequest& request);

// Whether this process holds the file open in a way that forbids renaming or deleting it.
bool IsHeldWithoutDeleteSharing(const std::filesystem::path& hostPath);

// Whether this process has the file open in any way: no other file takes its name then.
bool IsOpen(const std::filesystem::path& hostPath);
} // namespace platform
