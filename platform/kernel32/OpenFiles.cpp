#include "platform/kernel32/OpenFiles.h"

#include "platform/kernel32/Failure.h"
#include "platform/kernel32/MachineError.h"

#include <cerrno>
#include <mutex>
#include <set>

#include <fcntl.h>

namespace platform
{
namespace
{
struct HeldNames
{
    std::mutex lock;
    std::multiset<std::pair<dev_t, ino_t>> files;
};

HeldNames& Held()
{
    static auto* const pHeld = new HeldNames;
    return *pHeld;
}

bool IsServed(const OpenRequest& request)
{
    constexpr DWORD dwAlwaysShared = FILE_SHARE_READ | FILE_SHARE_WRITE;
    const bool bAccess = request.dwAccess != 0 && (request.dwAccess & ~(GENERIC_READ | GENERIC_WRITE)) == 0;
    return bAccess && (request.dwShareMode & ~FILE_SHARE_DELETE) == dwAlwaysShared && request.dwDisposition >= CREATE_NEW &&
           request.dwDisposition <= OPEN_ALWAYS;
}

int OpenFlags(const OpenRequest& request)
{
    static constexpr int creations[] = {O_CREAT | O_EXCL, O_CREAT | O_TRUNC, 0, O_CREAT}; // from CREATE_NEW on
    const bool bWrite = (request.dwAccess & GENERIC_WRITE) != 0;
    const int nAccess = !bWrite ? O_RDONLY : (request.dwAccess & GENERIC_READ) != 0 ? O_RDWR : O_WRONLY;
    // Opening a pipe would wait for its other end.
    return creations[request.dwDisposition - CREATE_NEW] | nAccess | O_NONBLOCK | O_CLOEXEC | O_NOCTTY;
}
} // namespace

CDescriptor OpenRealFile(const std::filesystem::path& realPath, const OpenRequest& request)
{
    Require(IsServed(request), ERROR_INVALID_PARAMETER);
    struct stat status = {};
    if ((request.dwAccess & GENERIC_WRITE) != 0 || request.dwDisposition == CREATE_ALWAYS)
        Require(stat(realPath.c_str(), &status) != 0 || !IsReadOnly(status), ERROR_ACCESS_DENIED);
    CDescriptor descriptor(open(realPath.c_str(), OpenFlags(request), 0666));
    Require(descriptor.Get() >= 0 || errno != EEXIST, ERROR_FILE_EXISTS);
    RequireDone(descriptor.Get(), realPath);
    RequireDone(fstat(descriptor.Get(), &status));
    Require(!S_ISDIR(status.st_mode) && !S_ISFIFO(status.st_mode), ERROR_ACCESS_DENIED);
    return descriptor;
}

bool IsReadOnly(const struct stat& status) noexcept
{
    return (status.st_mode & 0222) == 0;
}

CNameHold::CNameHold(const CDescriptor& file)
{
    fstat(file.Get(), &m_status);
    const std::lock_guard lock(Held().lock);
    Held().files.emplace(m_status.st_dev, m_status.st_ino);
}

CNameHold::~CNameHold()
{
    const std::lock_guard lock(Held().lock);
    Held().files.erase(Held().files.find({m_status.st_dev, m_status.st_ino}));
}

bool IsNameHeld(const struct stat& status)
{
    const std::lock_guard lock(Held().lock);
    return Held().files.contains({status.st_dev, status.st_ino});
}
} // namespace platform
