// A file that a handle stands for.
#pragma once

#include "platform/kernel32/Handles.h"
#include "platform/kernel32/KernelCall.h"
#include "platform/kernel32/OpenFiles.h"

#include <condition_variable>
#include <mutex>
#include <optional>

namespace platform
{
class CFileObject final : public CKernelObject
{
public:
    CFileObject(CDescriptor descriptor, const OpenRequest& request);
    ~CFileObject() override;

    int Descriptor() const noexcept
    {
        return m_descriptor.Get();
    }
    DWORD Access() const noexcept
    {
        return m_dwAccess;
    }

    // Both throw Failure. A handle has one lock at a time: a second one, of whatever bytes, has to wait for the first to go.
    void Lock(off_t begin, off_t cb, bool bExclusive, bool bWait);
    void Unlock(off_t begin, off_t cb);

private:
    const CDescriptor m_descriptor;
    const DWORD m_dwAccess;
    std::optional<CNameHold> m_nameHold;
    std::mutex m_lock;
    std::condition_variable m_unlocked;
    std::optional<std::pair<off_t, off_t>> m_held; // the lock that is taken or about to be taken through this handle
};

// The file that a handle stands for. The access, when it is not 0, is one that the handle must have been opened for.
inline std::shared_ptr<CFileObject> FileOf(HANDLE hFile, DWORD dwAccess = 0)
{
    auto file = ObjectOfKind<CFileObject>(hFile);
    Require(file != nullptr, ERROR_INVALID_HANDLE);
    Require(dwAccess == 0 || (file->Access() & dwAccess) != 0, ERROR_ACCESS_DENIED);
    return file;
}
} // namespace platform
