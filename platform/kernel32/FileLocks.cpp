#include "platform/kernel32/FileObject.h"
#include "platform/kernel32/MachineError.h"

#include <cerrno>

#include <fcntl.h>

namespace platform
{
namespace
{
// Locks of the open file description: they exclude other handles of this process as well as other processes, and end
// with this handle, not with any handle to the same file.
void ChangeLock(int fd, int nCommand, short nType, off_t begin, off_t cb)
{
    struct flock request = {};
    request.l_type = nType;
    request.l_whence = SEEK_SET;
    request.l_start = begin;
    request.l_len = cb;
    while (fcntl(fd, nCommand, &request) != 0)
        RequireDone(errno == EINTR ? 0 : -1);
}

off_t OffsetOf(DWORD dwLow, DWORD dwHigh)
{
    return static_cast<off_t>((std::uint64_t{dwHigh} << 32) | dwLow);
}
} // namespace

void CFileObject::Lock(off_t begin, off_t cb, bool bExclusive, bool bWait)
{
    {
        // The system lets a file description lock over its own lock: another thread with the same handle waits here.
        std::unique_lock lock(m_lock);
        Require(!m_held || bWait, ERROR_LOCK_VIOLATION);
        m_unlocked.wait(lock, [this] { return !m_held; });
        m_held.emplace(begin, cb);
    }
    try
    {
        ChangeLock(Descriptor(), bWait ? F_OFD_SETLKW : F_OFD_SETLK, bExclusive ? F_WRLCK : F_RDLCK, begin, cb);
    }
    catch (const Failure&)
    {
        const std::lock_guard lock(m_lock);
        m_held.reset();
        m_unlocked.notify_one();
        throw;
    }
}

void CFileObject::Unlock(off_t begin, off_t cb)
{
    const std::lock_guard lock(m_lock);
    Require(m_held == std::pair(begin, cb), ERROR_NOT_LOCKED);
    m_held.reset();
    m_unlocked.notify_one();
    ChangeLock(Descriptor(), F_OFD_SETLK, F_UNLCK, begin, cb);
}
} // namespace platform

using namespace platform;

BOOL WINAPI LockFileEx(HANDLE hFile, DWORD dwFlags, DWORD dwReserved, DWORD cbLow, DWORD cbHigh, LPOVERLAPPED pOverlapped)
{
    return KernelCall("LockFileEx", ERROR_LOCK_VIOLATION, FALSE,
                      [&]
                      {
                          const auto file = FileOf(hFile, GENERIC_READ | GENERIC_WRITE);
                          const off_t cb = OffsetOf(cbLow, cbHigh);
                          Require(pOverlapped && dwReserved == 0 && cb > 0, ERROR_INVALID_PARAMETER);
                          file->Lock(OffsetOf(pOverlapped->Offset, pOverlapped->OffsetHigh), cb,
                                     (dwFlags & LOCKFILE_EXCLUSIVE_LOCK) != 0, (dwFlags & LOCKFILE_FAIL_IMMEDIATELY) == 0);
                      });
}

BOOL WINAPI UnlockFileEx(HANDLE hFile, DWORD dwReserved, DWORD cbLow, DWORD cbHigh, LPOVERLAPPED pOverlapped)
{
    return GiveBackCall("UnlockFileEx", ERROR_NOT_LOCKED,
                        [&]
                        {
                            const auto file = FileOf(hFile);
                            Require(pOverlapped && dwReserved == 0, ERROR_INVALID_PARAMETER);
                            file->Unlock(OffsetOf(pOverlapped->Offset, pOverlapped->OffsetHigh), OffsetOf(cbLow, cbHigh));
                        });
}
