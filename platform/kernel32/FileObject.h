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
    bool Grants(DWORD dwAccess) const noexcept
    {
        return (m_dwAccess & dwAccess) != 0;
    }

    // Both return ERROR_SUCCESS or the code of the failure. A handle has one lock at a time: a second one, of whatever
    // bytes, has to wait for the first to go.
    DWORD Lock(off_t begin, off_t cb, bool bExclusive, bool bWait);
    DWORD Unlock(off_t begin, off_t cb);

private:
    const CDescriptor m_descriptor;
    const DWORD m_dwAccess;
    std::optional<CNameHold> m_nameHold;
    std::mutex m_lock;
    std::condition_variable m_unlocked;
    std::optional<std::pair<off_t, off_t>> m_held; // the lock that is taken or about to be taken through this handle
};

// A kernel function that takes the handle of a file; the body is called with the file. The access, when it is not 0, is
// one that the handle must have been opened for.
template <class Result, class Body>
Result FileCall(const char* szFunction, DWORD dwFaultError, Result failure, HANDLE hFile, DWORD dwAccess, Body&& body) noexcept
{
    return KernelCall(szFunction, dwFaultError, failure,
                      [&]
                      {
                          const auto file = ObjectOfKind<CFileObject>(hFile);
                          if (!file)
                              return FailWith(ERROR_INVALID_HANDLE, failure);
                          if (dwAccess != 0 && !file->Grants(dwAccess))
                              return FailWith(ERROR_ACCESS_DENIED, failure);
                          return body(*file);
                      });
}
} // namespace platform
