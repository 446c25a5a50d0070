#include "platform/ole32/Apartment.h"

#include <objbase.h>

#include "platform/ole32/ResultFault.h"

#include <atomic>

namespace
{
std::atomic<long> threadsInMultithreadedApartment{0};

// Of trivial type: a module that is unloaded when the thread's destructors have already run may still look at it.
struct ThreadApartment
{
    DWORD dwModel;
    unsigned uCount;
};
constinit thread_local ThreadApartment apartment{};

void Leave() noexcept
{
    if (apartment.dwModel == COINIT_MULTITHREADED)
        --threadsInMultithreadedApartment;
    apartment = {};
}

// A thread that ends without uninitialising leaves its apartment.
struct AtThreadEnd
{
    bool bArmed = false;

    ~AtThreadEnd()
    {
        if (apartment.uCount != 0)
            Leave();
    }
};
thread_local AtThreadEnd atThreadEnd;
} // namespace

namespace platform
{
bool IsComInitialised() noexcept
{
    return apartment.uCount != 0 || threadsInMultithreadedApartment != 0;
}
} // namespace platform

HRESULT WINAPI CoInitializeEx(LPVOID pReserved, DWORD dwCoInit)
{
    if (const auto hrFault = platform::ResultFault("CoInitializeEx", E_OUTOFMEMORY))
        return *hrFault;
    if (pReserved || (dwCoInit & ~COINIT_APARTMENTTHREADED) != 0)
        return E_INVALIDARG;
    if (apartment.uCount != 0)
    {
        if (apartment.dwModel != dwCoInit)
            return RPC_E_CHANGED_MODE;
        ++apartment.uCount;
        return S_FALSE;
    }
    atThreadEnd.bArmed = true; // the first use makes it
    apartment = {dwCoInit, 1};
    if (dwCoInit == COINIT_MULTITHREADED)
        ++threadsInMultithreadedApartment;
    return S_OK;
}

void WINAPI CoUninitialize()
{
    platform::testing::FaultFires("CoUninitialize"); // has no way to fail; the call is counted
    if (apartment.uCount == 0)
        return;
    if (apartment.uCount == 1)
        Leave();
    else
        --apartment.uCount;
}
