#include "platform/kernel32/Handles.h"
#include "platform/kernel32/KernelCall.h"
#include "platform/testing/Accounts.h"

#include <atomic>
#include <cerrno>
#include <thread>

#include <pthread.h>

namespace platform
{
namespace
{
using testing::Account;

// A robust mutex of the system: a thread that ends as its owner abandons it.
class CMutexObject final : public CKernelObject
{
public:
    CMutexObject() : m_pMutex(std::make_unique<pthread_mutex_t>())
    {
        pthread_mutexattr_t attributes;
        pthread_mutexattr_init(&attributes);
        pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE);
        pthread_mutexattr_setrobust(&attributes, PTHREAD_MUTEX_ROBUST);
        pthread_mutex_init(m_pMutex.get(), &attributes);
        pthread_mutexattr_destroy(&attributes);
        testing::ChangeAccount(Account::MutexHandle, +1);
    }
    ~CMutexObject() override
    {
        testing::ChangeAccount(Account::MutexHandle, -1);
        if (Take(pthread_mutex_trylock) == WAIT_TIMEOUT)
        {
            static_cast<void>(m_pMutex.release()); // its owner's end still looks at it
            return;
        }
        while (Release())
        {
        }
        pthread_mutex_destroy(m_pMutex.get());
    }

    // WAIT_OBJECT_0, WAIT_ABANDONED (owned by the caller in both cases) or WAIT_TIMEOUT. The function is the system's that
    // waits or does not.
    DWORD Take(int (*pfnTake)(pthread_mutex_t*))
    {
        switch (pfnTake(m_pMutex.get()))
        {
        case 0:
            m_owner = std::this_thread::get_id();
            ++m_uDepth;
            return WAIT_OBJECT_0;
        case EOWNERDEAD:
            pthread_mutex_consistent(m_pMutex.get());
            m_owner = std::this_thread::get_id();
            m_uDepth = 1;
            return WAIT_ABANDONED;
        default:
            return WAIT_TIMEOUT;
        }
    }

    // False when the caller is not the owner.
    bool Release()
    {
        if (m_owner != std::this_thread::get_id())
            return false;
        if (--m_uDepth == 0)
            m_owner = std::thread::id();
        return pthread_mutex_unlock(m_pMutex.get()) == 0;
    }

private:
    std::unique_ptr<pthread_mutex_t> m_pMutex;
    std::atomic<std::thread::id> m_owner;
    unsigned m_uDepth = 0; // the owner's alone
};
} // namespace
} // namespace platform

using namespace platform;

HANDLE WINAPI CreateMutexW(LPSECURITY_ATTRIBUTES pAttributes, BOOL bInitialOwner, LPCWSTR szName)
{
    return KernelCall("CreateMutexW", ERROR_NOT_ENOUGH_MEMORY, HANDLE{nullptr},
                      [&]
                      {
                          // Names, security and a first owner serve nobody here.
                          Require(!pAttributes && !bInitialOwner && !szName, ERROR_NOT_SUPPORTED);
                          return OpenHandle(std::make_shared<CMutexObject>());
                      });
}

BOOL WINAPI ReleaseMutex(HANDLE hMutex)
{
    return GiveBackCall("ReleaseMutex", ERROR_NOT_OWNER,
                        [&]
                        {
                            const auto mutex = ObjectOfKind<CMutexObject>(hMutex);
                            Require(mutex != nullptr, ERROR_INVALID_HANDLE);
                            Require(mutex->Release(), ERROR_NOT_OWNER);
                        });
}

DWORD WINAPI WaitForSingleObject(HANDLE hObject, DWORD dwMilliseconds)
{
    const DWORD dwResult = KernelCall("WaitForSingleObject", ERROR_INVALID_HANDLE, WAIT_FAILED,
                                      [&]
                                      {
                                          // Mutexes are the only objects to wait for, without a limit or not at all.
                                          const auto mutex = ObjectOfKind<CMutexObject>(hObject);
                                          Require(mutex != nullptr, ERROR_INVALID_HANDLE);
                                          Require(dwMilliseconds == 0 || dwMilliseconds == INFINITE, ERROR_NOT_SUPPORTED);
                                          return mutex->Take(dwMilliseconds == 0 ? pthread_mutex_trylock : pthread_mutex_lock);
                                      });
    // A planned time-out is an outcome of its own, not an error.
    return dwResult == WAIT_FAILED && GetLastError() == WAIT_TIMEOUT ? WAIT_TIMEOUT : dwResult;
}
