// What the product relies on from the COM run-time and its strings.
#include <windows.h>

#include <objbase.h>
#include <oleauto.h>

#include <gtest/gtest.h>

#include <atomic>
#include <cstring>
#include <string>
#include <thread>

namespace
{
using Text = std::basic_string<WCHAR>;

constexpr CLSID unknownClass = {0x5A1D0C77, 0x0B11, 0x4E0C, {0x9A, 0x11, 0x6B, 0x30, 0x52, 0x1E, 0x77, 0x01}};
constexpr CLSID ownClass = {0x5A1D0C77, 0x0B11, 0x4E0C, {0x9A, 0x11, 0x6B, 0x30, 0x52, 0x1E, 0x77, 0x02}};

// A class whose only instance is its factory, and whose creation fails for every other interface.
class CSelfFactory final : public IClassFactory
{
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppvObject) override
    {
        const bool bKnown = IsEqualGUID(riid, IID_IUnknown) || IsEqualGUID(riid, IID_IClassFactory);
        *ppvObject = bKnown ? this : nullptr;
        if (!bKnown)
            return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override
    {
        return static_cast<ULONG>(++m_lReferences);
    }
    ULONG STDMETHODCALLTYPE Release() override
    {
        return static_cast<ULONG>(--m_lReferences);
    }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID riid, void** ppvObject) override
    {
        if (IsEqualGUID(riid, IID_IUnknown))
            return QueryInterface(riid, ppvObject);
        *ppvObject = this; // a careless server
        return CLASS_E_NOAGGREGATION;
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override
    {
        return E_NOTIMPL;
    }

    std::atomic<long> m_lReferences{1};
};

HRESULT Activate(REFCLSID rclsid, REFIID riid, void** ppv)
{
    return CoCreateInstance(rclsid, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_INPROC_HANDLER, riid, ppv);
}

// Every apartment case has a thread of its own, because a thread keeps its apartment.
template <class Body>
void OnThread(Body&& body)
{
    std::thread(std::forward<Body>(body)).join();
}

TEST(Com, ActivationNeedsInitialisation)
{
    OnThread(
        []
        {
            void* pv = &pv;
            EXPECT_EQ(Activate(unknownClass, IID_IUnknown, &pv), CO_E_NOTINITIALIZED);
            EXPECT_EQ(pv, nullptr);
        });
}

TEST(Com, InitialisationsOfAThreadAreCounted)
{
    OnThread(
        []
        {
            void* pv = nullptr;
            EXPECT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
            EXPECT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_FALSE);
            EXPECT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), RPC_E_CHANGED_MODE);
            CoUninitialize();
            EXPECT_EQ(Activate(unknownClass, IID_IUnknown, &pv), REGDB_E_CLASSNOTREG);
            CoUninitialize();
            EXPECT_EQ(Activate(unknownClass, IID_IUnknown, &pv), CO_E_NOTINITIALIZED);
            EXPECT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
            CoUninitialize();
        });
}

TEST(Com, AMultithreadedApartmentServesThreadsThatDidNotInitialise)
{
    OnThread(
        []
        {
            ASSERT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
            OnThread(
                []
                {
                    void* pv = &pv;
                    EXPECT_EQ(Activate(unknownClass, IID_IUnknown, &pv), REGDB_E_CLASSNOTREG);
                    EXPECT_EQ(pv, nullptr);
                });
            CoUninitialize();
        });
}

TEST(Com, RegisteredClassObjectServesUntilRevokedAndKeepsNoReference)
{
    OnThread(
        []
        {
            ASSERT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
            CSelfFactory factory;
            DWORD dwCookie = 0;
            ASSERT_EQ(CoRegisterClassObject(ownClass, &factory, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &dwCookie), S_OK);

            void* pv = nullptr;
            ASSERT_EQ(Activate(ownClass, IID_IUnknown, &pv), S_OK);
            EXPECT_EQ(pv, static_cast<IUnknown*>(&factory));
            static_cast<IUnknown*>(pv)->Release();

            // The failure of the class comes through, and nothing else does.
            EXPECT_EQ(Activate(ownClass, IID_IClassFactory, &pv), CLASS_E_NOAGGREGATION);
            EXPECT_EQ(pv, nullptr);

            EXPECT_EQ(CoRevokeClassObject(dwCookie), S_OK);
            EXPECT_EQ(factory.m_lReferences, 1);
            EXPECT_EQ(Activate(ownClass, IID_IUnknown, &pv), REGDB_E_CLASSNOTREG);
            CoUninitialize();
        });
}

TEST(Strings, HoldTextLengthAndTerminator)
{
    const struct
    {
        const char* szName;
        BSTR (*pMake)();
        Text expected;
    } rows[] = {
        {"text", [] { return SysAllocString(OLESTR("CCKM")); }, OLESTR("CCKM")},
        {"empty", [] { return SysAllocString(OLESTR("")); }, OLESTR("")},
        {"part of a text", [] { return SysAllocStringLen(OLESTR("CCKM"), 2); }, OLESTR("CC")},
        {"terminator inside", [] { return SysAllocStringLen(OLESTR("a\0b"), 3); }, Text(OLESTR("a\0b"), 3)},
    };
    for (const auto& row : rows)
    {
        SCOPED_TRACE(row.szName);
        const BSTR bstr = row.pMake();
        ASSERT_NE(bstr, nullptr);
        EXPECT_EQ(Text(bstr, SysStringLen(bstr)), row.expected);
        EXPECT_EQ(bstr[row.expected.size()], WCHAR{});
        DWORD cb = 0;
        std::memcpy(&cb, reinterpret_cast<const char*>(bstr) - sizeof cb, sizeof cb);
        EXPECT_EQ(cb, row.expected.size() * sizeof(WCHAR));
        SysFreeString(bstr);
    }
}

TEST(Strings, NullIsAStringOfItsOwn)
{
    EXPECT_EQ(SysAllocString(nullptr), nullptr);
    EXPECT_EQ(SysStringLen(nullptr), 0u);
    SysFreeString(nullptr);

    const BSTR bstr = SysAllocStringLen(nullptr, 3); // room without a text
    ASSERT_NE(bstr, nullptr);
    EXPECT_EQ(SysStringLen(bstr), 3u);
    EXPECT_EQ(bstr[3], WCHAR{});
    SysFreeString(bstr);
}

TEST(Variants, ClearReleasesWhatTheyHold)
{
    CSelfFactory object;
    object.AddRef();
    VARIANT variant;
    VariantInit(&variant);
    EXPECT_EQ(variant.vt, VT_EMPTY);
    variant.vt = VT_UNKNOWN;
    variant.punkVal = &object;
    EXPECT_EQ(VariantClear(&variant), S_OK);
    EXPECT_EQ(variant.vt, VT_EMPTY);
    EXPECT_EQ(object.m_lReferences, 1);

    variant.vt = VT_BSTR;
    variant.bstrVal = SysAllocString(OLESTR("text"));
    EXPECT_EQ(VariantClear(&variant), S_OK);
    EXPECT_EQ(variant.vt, VT_EMPTY);
}
} // namespace
