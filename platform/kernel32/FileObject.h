// A file that a handle stands for.
#pragma once

#include "platform/kernel32/Handles.h"
#include "platform/kernel32/OpenFiles.h"

#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <vector>

namespace platform
{
// A byte range [begin, end) of a file.
struct ByteRange
{
    std::uint64_t begin;
    std::uint64_t end;

    bool operator==(const ByteRange&) const = default;
    bool Overlaps(const ByteRange& other) const
    {
        return begin < other.end && other.begin < end;
    }
};

class CFileObject final : public CKernelObject
{
public:
    CFileObject(OpenedFile opened, DWORD dwAccess);
    ~CFileObject() override;

    int Descriptor() const noexcept
    {
        return m_opened.descriptor.Get();
    }
    bool Grants(DWORD dwAccess) const noexcept
    {
        return (m_dwAccess & dwAccess) != 0;
    }

    // Both return ERROR_SUCCESS or the code of the failure.
    DWORD Lock(ByteRange range, bool bExclusive, bool bWait);
    DWORD Unlock(ByteRange range);

    // Whether a lock of part of the range, by another opening or one that keeps everybody out, forbids reading or writing it.
    bool IsLockedAgainst(ByteRange range, bool bForWriting) const;

private:
    struct Held
    {
        ByteRange range;
        bool bExclusive;

        bool operator==(const Held&) const = default;
    };

    // All with m_lock held.
    bool Overlaps(const ByteRange& range) const;
    // The strongest lock that is held on the part, as the system names it.
    short TypeHeld(const ByteRange& part) const;
    // The range cut up so that each part lies in or outside of every lock as a whole.
    std::vector<ByteRange> PartsOf(const ByteRange& range) const;
    // Leaves what other locks of this handle hold; 0 or the errno value of the failure.
    int LetGo(const Held& held);

    const OpenedFile m_opened;
    const DWORD m_dwAccess;
    mutable std::mutex m_lock;
    std::condition_variable m_unlocked;
    std::vector<Held> m_held; // locks taken or about to be taken through this handle
};
} // namespace platform
