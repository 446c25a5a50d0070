#include "platform/kernel32/OpenFiles.h"

#include "platform/kernel32/MachineError.h"

#include <algorithm>
#include <cerrno>
#include <list>
#include <mutex>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform
{
namespace
{
struct OpenFileTable
{
    std::mutex lock;
    std::list<const COpenFileEntry*> entries;
};

OpenFileTable& OpenFiles()
{
    static auto* const pTable = new OpenFileTable;
    return *pTable;
}

DWORD SharingNeededFor(DWORD dwAccess)
{
    return ((dwAccess & GENERIC_READ) != 0 ? FILE_SHARE_READ : 0u) | ((dwAccess & GENERIC_WRITE) != 0 ? FILE_SHARE_WRITE : 0u);
}

bool IsSame(const COpenFileEntry& entry, const struct stat& status)
{
    return entry.m_device == status.st_dev && entry.m_inode == status.st_ino;
}

// An opening for neither reading nor writing is in nobody's way, whatever it says that it shares.
bool TakesPart(DWORD dwAccess)
{
    return (dwAccess & (GENERIC_READ | GENERIC_WRITE)) != 0;
}

// Each of two openings must allow what the other does.
bool Conflicts(const COpenFileEntry& entry, const OpenRequest& request)
{
    if (!TakesPart(entry.m_dwAccess) || !TakesPart(request.dwAccess))
        return false;
    return (SharingNeededFor(request.dwAccess) & ~entry.m_dwShareMode) != 0 ||
           (SharingNeededFor(entry.m_dwAccess) & ~request.dwShareMode) != 0;
}

bool IsHeldAgainst(const struct stat& status, const OpenRequest& request)
{
    const std::lock_guard lock(OpenFiles().lock);
    return std::ranges::any_of(OpenFiles().entries,
                               [&](const auto* pEntry) { return IsSame(*pEntry, status) && Conflicts(*pEntry, request); });
}

int CreationFlags(DWORD dwDisposition)
{
    switch (dwDisposition)
    {
    case CREATE_NEW:
        return O_CREAT | O_EXCL;
    case CREATE_ALWAYS:
    case OPEN_ALWAYS:
        return O_CREAT;
    default:
        return 0;
    }
}

int OpenRetrying(const std::filesystem::path& hostPath, int nFlags, mode_t mode)
{
    for (;;)
    {
        const int fd = open(hostPath.c_str(), nFlags | O_CLOEXEC | O_NOCTTY, mode);
        if (fd >= 0 || errno != EINTR)
            return fd;
    }
}

// Opens for reading and writing where that is granted, whatever access was asked for: a shared lock needs a readable
// descriptor here and an exclusive one a writable, while the platform's locks need just one of the two rights.
int OpenWidely(const std::filesystem::path& hostPath, const OpenRequest& request, int nCreation)
{
    const mode_t mode = request.bReadOnly ? 0444 : 0666;
    const int fd = OpenRetrying(hostPath, nCreation | O_RDWR, mode);
    if (fd >= 0 || (errno != EACCES && errno != EPERM && errno != EROFS && errno != ETXTBSY))
        return fd;
    const bool bRead = (request.dwAccess & GENERIC_READ) != 0;
    const bool bWrite = (request.dwAccess & GENERIC_WRITE) != 0;
    if (bRead && bWrite)
        return fd;
    return OpenRetrying(hostPath, nCreation | (bWrite ? O_WRONLY : O_RDONLY), mode);
}

OpenedFile Failed(DWORD dwError)
{
    OpenedFile result;
    result.dwError = dwError;
    return result;
}
} // namespace

CDescriptor::~CDescriptor()
{
    if (m_fd >= 0)
        close(m_fd);
}

COpenFileEntry::COpenFileEntry(dev_t device, ino_t inode, DWORD dwAccess, DWORD dwShareMode)
    : m_device(device), m_inode(inode), m_dwAccess(dwAccess), m_dwShareMode(dwShareMode)
{
    const std::lock_guard lock(OpenFiles().lock);
    OpenFiles().entries.push_back(this);
}

COpenFileEntry::~COpenFileEntry()
{
    const std::lock_guard lock(OpenFiles().lock);
    OpenFiles().entries.remove(this);
}

OpenedFile OpenHostFile(const std::filesystem::path& hostPath, const OpenRequest& request)
{
    const bool bReplaces = request.dwDisposition == CREATE_ALWAYS || request.dwDisposition == TRUNCATE_EXISTING;
    struct stat status = {};
    const bool bExisted = stat(hostPath.c_str(), &status) == 0;
    if (bExisted)
    {
        if (request.dwDisposition == CREATE_NEW)
            return Failed(ERROR_FILE_EXISTS);
        if (S_ISDIR(status.st_mode))
            return Failed(ERROR_ACCESS_DENIED);
        // Looked at even where this user may write to everything.
        if ((bReplaces || (request.dwAccess & GENERIC_WRITE) != 0) && (status.st_mode & 0222) == 0)
            return Failed(ERROR_ACCESS_DENIED);
        if (IsHeldAgainst(status, request))
            return Failed(ERROR_SHARING_VIOLATION);
    }

    CDescriptor descriptor(OpenWidely(hostPath, request, CreationFlags(request.dwDisposition)));
    if (descriptor.Get() < 0)
        return Failed(errno == EEXIST ? ERROR_FILE_EXISTS : PathError(errno, hostPath));
    if (fstat(descriptor.Get(), &status) != 0)
        return Failed(ErrorFromErrno(errno));
    // Truncated only now that nothing speaks against it.
    if (bExisted && bReplaces && ftruncate(descriptor.Get(), 0) != 0)
        return Failed(ErrorFromErrno(errno));

    OpenedFile result{ERROR_SUCCESS, bExisted, std::move(descriptor), nullptr};
    result.entry = std::make_unique<COpenFileEntry>(status.st_dev, status.st_ino, request.dwAccess, request.dwShareMode);
    return result;
}

template <class Predicate>
bool IsOpenSuchThat(const std::filesystem::path& hostPath, Predicate&& isSuch)
{
    struct stat status = {};
    if (lstat(hostPath.c_str(), &status) != 0)
        return false;
    const std::lock_guard lock(OpenFiles().lock);
    return std::ranges::any_of(OpenFiles().entries,
                               [&](const auto* pEntry) { return IsSame(*pEntry, status) && isSuch(*pEntry); });
}

bool IsHeldWithoutDeleteSharing(const std::filesystem::path& hostPath)
{
    return IsOpenSuchThat(hostPath, [](const COpenFileEntry& entry)
                          { return TakesPart(entry.m_dwAccess) && (entry.m_dwShareMode & FILE_SHARE_DELETE) == 0; });
}

bool IsOpen(const std::filesystem::path& hostPath)
{
    return IsOpenSuchThat(hostPath, [](const COpenFileEntry&) { return true; });
}
} // namespace platform
