// That the COM run-time counts what its callers begin and end; the product ends only what it began.
#include <windows.h>

#include <objbase.h>

#include <gtest/gtest.h>

#include <thread>

namespace
{
constexpr CLSID unknownClass = {0x5A1D0C77, 0x0B11, 0x4E0C, {0x9A, 0x11, 0x6B, 0x30, 0x52, 0x1E, 0x77, 0x01}};

HRESULT Activate()
{
    void* pv = &pv;
    const HRESULT hr = CoCreateInstance(unknownClass, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, &pv);
    EXPECT_EQ(pv, nullptr);
    return hr;
}

TEST(Com, InitialisationsOfAThreadAreCounted)
{
    // A thread of its own, because a thread keeps its apartment.
    std::thread(
        []
        {
            EXPECT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
            EXPECT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_FALSE);
            EXPECT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), RPC_E_CHANGED_MODE);
            CoUninitialize();
            EXPECT_EQ(Activate(), REGDB_E_CLASSNOTREG);
            CoUninitialize();
            EXPECT_EQ(Activate(), CO_E_NOTINITIALIZED);
            EXPECT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
            CoUninitialize();
        })
        .join();
}
} // namespace
