#include "platform/kernel32/FileObject.h"
#include "platform/kernel32/HostError.h"
#include "platform/kernel32/KernelCall.h"

#include <algorithm>
#include <cerrno>
#include <limits>

#include <fcntl.h>

namespace platform
{
namespace
{
constexpr auto offsetMax = static_cast<std::uint64_t>(std::numeric_limits<off_t>::max());

// Locks of the open file description: they exclude other handles of this process as well as other processes, and end
// with this handle, not with any handle to the same file.
int ChangeLock(int fd, int nCommand, short nType, const ByteRange& range)
{
    struct flock request = {};
    request.l_type = nType;
    request.l_whence = SEEK_SET;
    request.l_start = static_cast<off_t>(range.begin);
    // A length of 0 means "to the end of all files" here.
    request.l_len = range.end > offsetMax ? 0 : static_cast<off_t>(range.end - range.begin);
    for (;;)
    {
        if (fcntl(fd, nCommand, &request) == 0)
            return nCommand == F_OFD_GETLK && request.l_type != F_UNLCK ? EAGAIN : 0;
        if (errno != EINTR)
            return errno;
    }
}

ByteRange RangeOf(const OVERLAPPED& overlapped, DWORD cbLow, DWORD cbHigh)
{
    const std::uint64_t begin = (std::uint64_t{overlapped.OffsetHigh} << 32) | overlapped.Offset;
    const std::uint64_t size = (std::uint64_t{cbHigh} << 32) | cbLow;
    return {begin, begin + std::min(size, std::numeric_limits<std::uint64_t>::max() - begin)};
}
} // namespace

bool CFileObject::ConflictsWithOwn(const ByteRange& range, bool bExclusive) const
{
    return std::ranges::any_of(m_held,
                               [&](const Held& held) { return held.range.Overlaps(range) && (bExclusive || held.bExclusive); });
}

void CFileObject::Forget(const ByteRange& range)
{
    const std::lock_guard lock(m_lock);
    m_held.erase(std::ranges::find(m_held, range, &Held::range));
    m_unlocked.notify_all();
}

DWORD CFileObject::Lock(ByteRange range, bool bExclusive, bool bWait)
{
    {
        // The system lets a file description lock over its own lock; the platform does not.
        std::unique_lock lock(m_lock);
        if (!bWait && ConflictsWithOwn(range, bExclusive))
            return ERROR_LOCK_VIOLATION;
        m_unlocked.wait(lock, [&] { return !ConflictsWithOwn(range, bExclusive); });
        m_held.push_back({range, bExclusive});
    }
    if (range.begin == range.end)
        return ERROR_SUCCESS;
    const int nErrno = ChangeLock(Descriptor(), bWait ? F_OFD_SETLKW : F_OFD_SETLK, bExclusive ? F_WRLCK : F_RDLCK, range);
    if (nErrno == 0)
        return ERROR_SUCCESS;
    Forget(range);
    return nErrno == EACCES ? ERROR_LOCK_VIOLATION : ErrorFromErrno(nErrno);
}

DWORD CFileObject::Unlock(ByteRange range)
{
    const std::lock_guard lock(m_lock);
    const auto found = std::ranges::find(m_held, range, &Held::range);
    if (found == m_held.end())
        return ERROR_NOT_LOCKED;
    m_held.erase(found);
    m_unlocked.notify_all();

    // Other shared locks of this handle may cover parts of the range: only what none of them covers is let go.
    std::ranges::sort(m_held, {}, [](const Held& held) { return held.range.begin; });
    std::uint64_t begin = range.begin;
    const auto release = [&](std::uint64_t end) {
        return begin >= end ? 0 : ChangeLock(Descriptor(), F_OFD_SETLK, F_UNLCK, {begin, end});
    };
    int nErrno = 0;
    for (const Held& held : m_held)
    {
        if (nErrno == 0 && held.range.Overlaps(range))
        {
            nErrno = release(held.range.begin);
            begin = std::max(begin, held.range.end);
        }
    }
    if (nErrno == 0)
        nErrno = release(range.end);
    return nErrno == 0 ? ERROR_SUCCESS : ErrorFromErrno(nErrno);
}

bool CFileObject::IsLockedByOthers(ByteRange range, bool bForWriting) const
{
    if (range.begin == range.end || range.begin > offsetMax)
        return false;
    return ChangeLock(Descriptor(), F_OFD_GETLK, bForWriting ? F_WRLCK : F_RDLCK, range) == EAGAIN;
}
} // namespace platform

using namespace platform;

BOOL WINAPI LockFileEx(HANDLE hFile, DWORD dwFlags, DWORD dwReserved, DWORD cbLow, DWORD cbHigh, LPOVERLAPPED pOverlapped)
{
    return KernelCall(
        "LockFileEx", ERROR_LOCK_VIOLATION, FALSE,
        [&]
        {
            const auto file = ObjectOfKind<CFileObject>(hFile);
            if (!file)
                return FailWith(ERROR_INVALID_HANDLE, FALSE);
            if (!pOverlapped || dwReserved != 0 || (dwFlags & ~(LOCKFILE_FAIL_IMMEDIATELY | LOCKFILE_EXCLUSIVE_LOCK)) != 0)
                return FailWith(ERROR_INVALID_PARAMETER, FALSE);
            if (!file->Grants(GENERIC_READ | GENERIC_WRITE))
                return FailWith(ERROR_ACCESS_DENIED, FALSE);
            const ByteRange range = RangeOf(*pOverlapped, cbLow, cbHigh);
            if (range.begin > offsetMax)
                return FailWith(ERROR_NOT_SUPPORTED, FALSE);
            const DWORD dwError =
                file->Lock(range, (dwFlags & LOCKFILE_EXCLUSIVE_LOCK) != 0, (dwFlags & LOCKFILE_FAIL_IMMEDIATELY) == 0);
            return dwError == ERROR_SUCCESS ? TRUE : FailWith(dwError, FALSE);
        });
}

BOOL WINAPI UnlockFileEx(HANDLE hFile, DWORD dwReserved, DWORD cbLow, DWORD cbHigh, LPOVERLAPPED pOverlapped)
{
    return GiveBackCall("UnlockFileEx", ERROR_NOT_LOCKED,
                        [&]
                        {
                            const auto file = ObjectOfKind<CFileObject>(hFile);
                            if (!file)
                                return FailWith(ERROR_INVALID_HANDLE, FALSE);
                            if (!pOverlapped || dwReserved != 0)
                                return FailWith(ERROR_INVALID_PARAMETER, FALSE);
                            const DWORD dwError = file->Unlock(RangeOf(*pOverlapped, cbLow, cbHigh));
                            return dwError == ERROR_SUCCESS ? TRUE : FailWith(dwError, FALSE);
                        });
}
