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

    // Whether another opening of the file has locked part of the range against reading or writing it.
    bool IsLockedByOthers(ByteRange range, bool bForWriting) const;

private:
    struct Held
    {
        ByteRange range;
        bool bExclusive;
    };

    bool ConflictsWithOwn(const ByteRange& range, bool bExclusive) const;
    void Forget(const ByteRange& range);

    const OpenedFile m_opened;
    const DWORD m_dwAccess;
    std::mutex m_lock;
    std::condition_variable m_unlocked;
    std::vector<Held> m_held; // locks taken or about to be taken through this handle
};
} // namespace platform
