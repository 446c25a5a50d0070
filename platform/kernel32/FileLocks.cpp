#include "platform/kernel32/FileObject.h"
#include "platform/kernel32/KernelCall.h"
#include "platform/kernel32/MachineError.h"

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

bool CFileObject::Overlaps(const ByteRange& range) const
{
    return std::ranges::any_of(m_held, [&](const Held& held) { return held.range.Overlaps(range); });
}

short CFileObject::TypeHeld(const ByteRange& part) const
{
    short nType = F_UNLCK;
    for (const Held& held : m_held)
    {
        if (held.range.Overlaps(part) && nType != F_WRLCK)
            nType = held.bExclusive ? F_WRLCK : F_RDLCK;
    }
    return nType;
}

std::vector<ByteRange> CFileObject::PartsOf(const ByteRange& range) const
{
    std::vector<std::uint64_t> borders{range.begin, range.end};
    for (const Held& held : m_held)
    {
        for (const std::uint64_t border : {held.range.begin, held.range.end})
        {
            if (border > range.begin && border < std::min(range.end, offsetMax))
                borders.push_back(border);
        }
    }
    std::ranges::sort(borders);
    std::vector<ByteRange> parts;
    for (std::size_t i = 1; i < borders.size(); ++i)
    {
        if (borders[i - 1] < borders[i])
            parts.push_back({borders[i - 1], borders[i]});
    }
    return parts;
}

int CFileObject::LetGo(const Held& held)
{
    m_held.erase(std::ranges::find(m_held, held));
    m_unlocked.notify_all();
    int nErrno = 0;
    for (const ByteRange& part : PartsOf(held.range))
    {
        const int nPartErrno = ChangeLock(Descriptor(), F_OFD_SETLK, TypeHeld(part), part);
        nErrno = nErrno == 0 ? nPartErrno : nErrno;
    }
    return nErrno;
}

DWORD CFileObject::Lock(ByteRange range, bool bExclusive, bool bWait)
{
    const Held wanted{range, bExclusive};
    std::vector<ByteRange> parts;
    {
        // The system lets a file description lock over its own lock. The platform does so for a shared lock alone, which
        // must not take an exclusive one away here.
        std::unique_lock lock(m_lock);
        if (!bWait && bExclusive && Overlaps(range))
            return ERROR_LOCK_VIOLATION;
        m_unlocked.wait(lock, [&] { return !bExclusive || !Overlaps(range); });
        parts = PartsOf(range);
        std::erase_if(parts, [this](const ByteRange& part) { return TypeHeld(part) == F_WRLCK; });
        m_held.push_back(wanted);
    }
    for (const ByteRange& part : parts)
    {
        const int nErrno = ChangeLock(Descriptor(), bWait ? F_OFD_SETLKW : F_OFD_SETLK, bExclusive ? F_WRLCK : F_RDLCK, part);
        if (nErrno == 0)
            continue;
        const std::lock_guard lock(m_lock);
        LetGo(wanted);
        return nErrno == EACCES ? ERROR_LOCK_VIOLATION : ErrorFromErrno(nErrno);
    }
    return ERROR_SUCCESS;
}

DWORD CFileObject::Unlock(ByteRange range)
{
    const std::lock_guard lock(m_lock);
    // Of two locks of the same range the exclusive one goes first.
    for (const bool bExclusive : {true, false})
    {
        const Held held{range, bExclusive};
        if (std::ranges::find(m_held, held) == m_held.end())
            continue;
        const int nErrno = LetGo(held);
        return nErrno == 0 ? ERROR_SUCCESS : ErrorFromErrno(nErrno);
    }
    return ERROR_NOT_LOCKED;
}

bool CFileObject::IsLockedAgainst(ByteRange range, bool bForWriting) const
{
    if (range.begin == range.end || range.begin > offsetMax)
        return false;
    const std::lock_guard lock(m_lock);
    // A shared lock keeps everybody from writing, its owner too.
    const auto isShared = [&](const Held& held) { return !held.bExclusive && held.range.Overlaps(range); };
    return (bForWriting && std::ranges::any_of(m_held, isShared)) ||
           ChangeLock(Descriptor(), F_OFD_GETLK, bForWriting ? F_WRLCK : F_RDLCK, range) == EAGAIN;
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
