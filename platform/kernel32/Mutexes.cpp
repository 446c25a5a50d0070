#include "platform/kernel32/Handles.h"
#include "platform/kernel32/KernelCall.h"
#include "platform/testing/Accounts.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

namespace platform
{
namespace
{
using testing::Account;

class CMutexObject final : public CKernelObject
{
public:
    CMutexObject()
    {
        testing::ChangeAccount(Account::MutexHandle, +1);
    }
    ~CMutexObject() override
    {
        testing::ChangeAccount(Account::MutexHandle, -1);
    }

    // WAIT_OBJECT_0, WAIT_ABANDONED (owned by the caller in both cases) or WAIT_TIMEOUT.
    DWORD Wait(DWORD dwMilliseconds)
    {
        std::unique_lock lock(m_lock);
        const auto isFree = [this] { return !m_owner || *m_owner == std::this_thread::get_id(); };
        if (dwMilliseconds == INFINITE)
            m_released.wait(lock, isFree);
        else if (!m_released.wait_for(lock, std::chrono::milliseconds(dwMilliseconds), isFree))
            return WAIT_TIMEOUT;
        m_owner = std::this_thread::get_id();
        ++m_uDepth;
        return std::exchange(m_bAbandoned, false) ? WAIT_ABANDONED : WAIT_OBJECT_0;
    }

    // The depth that is left, nothing when the caller is not the owner.
    std::optional<unsigned> Release()
    {
        const std::lock_guard lock(m_lock);
        if (m_owner != std::this_thread::get_id())
            return std::nullopt;
        if (--m_uDepth == 0)
        {
            m_owner.reset();
            m_released.notify_one();
        }
        return m_uDepth;
    }

    // The calling thread ends as the owner.
    void Abandon()
    {
        const std::lock_guard lock(m_lock);
        if (m_owner != std::this_thread::get_id())
            return;
        m_owner.reset();
        m_uDepth = 0;
        m_bAbandoned = true;
        m_released.notify_one();
    }

private:
    std::mutex m_lock;
    std::condition_variable m_released;
    std::optional<std::thread::id> m_owner;
    unsigned m_uDepth = 0;
    bool m_bAbandoned = false;
};

// Set when the thread's list below is gone: a mutex taken even later in the thread's end is not noted any more.
thread_local bool t_bThreadEnds = false;

// The mutexes that the thread owns; what is left at its end is abandoned.
class COwnedMutexes
{
public:
    COwnedMutexes() = default;
    COwnedMutexes(const COwnedMutexes&) = delete;
    COwnedMutexes& operator=(const COwnedMutexes&) = delete;
    ~COwnedMutexes()
    {
        t_bThreadEnds = true;
        for (const auto& owned : m_owned)
        {
            if (const auto mutex = owned.lock())
                mutex->Abandon();
        }
    }

    void Add(const std::shared_ptr<CMutexObject>& mutex)
    {
        std::erase_if(m_owned, [&](const auto& owned) { return owned.expired() || owned.lock() == mutex; });
        m_owned.push_back(mutex);
    }
    void Remove(const std::shared_ptr<CMutexObject>& mutex)
    {
        std::erase_if(m_owned, [&](const auto& owned) { return owned.lock() == mutex; });
    }
    // Makes room beforehand, so that noting an ownership that was granted cannot fail.
    void Reserve()
    {
        m_owned.reserve(m_owned.size() + 1);
    }

private:
    std::vector<std::weak_ptr<CMutexObject>> m_owned;
};

thread_local COwnedMutexes t_owned;

DWORD WaitNoted(const std::shared_ptr<CMutexObject>& mutex, DWORD dwMilliseconds)
{
    if (t_bThreadEnds)
        return mutex->Wait(dwMilliseconds);
    t_owned.Reserve();
    const DWORD dwResult = mutex->Wait(dwMilliseconds);
    if (dwResult != WAIT_TIMEOUT)
        t_owned.Add(mutex);
    return dwResult;
}
} // namespace
} // namespace platform

using namespace platform;

HANDLE WINAPI CreateMutexW(LPSECURITY_ATTRIBUTES pAttributes, BOOL bInitialOwner, LPCWSTR szName)
{
    return KernelCall("CreateMutexW", ERROR_NOT_ENOUGH_MEMORY, HANDLE{nullptr},
                      [&]
                      {
                          if (szName)
                              return FailWith(ERROR_CALL_NOT_IMPLEMENTED, HANDLE{nullptr});
                          if (pAttributes && (pAttributes->lpSecurityDescriptor || pAttributes->bInheritHandle))
                              return FailWith(ERROR_NOT_SUPPORTED, HANDLE{nullptr});
                          const auto mutex = std::make_shared<CMutexObject>();
                          if (bInitialOwner)
                              WaitNoted(mutex, INFINITE);
                          const HANDLE hMutex = OpenHandle(mutex);
                          SetLastError(ERROR_SUCCESS);
                          return hMutex;
                      });
}

BOOL WINAPI ReleaseMutex(HANDLE hMutex)
{
    return GiveBackCall("ReleaseMutex", ERROR_NOT_OWNER,
                        [&]
                        {
                            const auto mutex = ObjectOfKind<CMutexObject>(hMutex);
                            if (!mutex)
                                return FailWith(ERROR_INVALID_HANDLE, FALSE);
                            const auto depth = mutex->Release();
                            if (!depth)
                                return FailWith(ERROR_NOT_OWNER, FALSE);
                            if (*depth == 0 && !t_bThreadEnds)
                                t_owned.Remove(mutex);
                            return TRUE;
                        });
}

DWORD WINAPI WaitForSingleObject(HANDLE hObject, DWORD dwMilliseconds)
{
    const DWORD dwResult = KernelCall("WaitForSingleObject", ERROR_INVALID_HANDLE, WAIT_FAILED,
                                      [&]
                                      {
                                          // Mutexes are the only objects to wait for.
                                          const auto mutex = ObjectOfKind<CMutexObject>(hObject);
                                          if (!mutex)
                                              return FailWith(ERROR_INVALID_HANDLE, DWORD{WAIT_FAILED});
                                          const DWORD dwOutcome = WaitNoted(mutex, dwMilliseconds);
                                          SetLastError(ERROR_SUCCESS);
                                          return dwOutcome;
                                      });
    // A planned time-out is an outcome of its own, not an error.
    return dwResult == WAIT_FAILED && GetLastError() == WAIT_TIMEOUT ? WAIT_TIMEOUT : dwResult;
}
