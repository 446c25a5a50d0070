// The module as a host meets it: a file that is loaded, its exports, its objects.
#pragma once

#include "host/Library.h"
#include "public/Dot11ExtUI.h"
#include "tests/support/TestFolder.h"
#include "values/Bstr.h"
#include "values/ComRef.h"

#include <gtest/gtest.h>

namespace tests
{
// The folder of the build, where the module and its neighbours lie.
std::filesystem::path BuildFolder();

// Loads the module and, unless told otherwise, registers it for activation until the object is gone.
class CModuleUnderTest
{
public:
    enum class Registration
    {
        Registered,
        None,
    };

    explicit CModuleUnderTest(Registration registration = Registration::Registered);
    ~CModuleUnderTest();
    CModuleUnderTest(const CModuleUnderTest&) = delete;
    CModuleUnderTest& operator=(const CModuleUnderTest&) = delete;

    HMODULE Handle() const
    {
        return m_hModule;
    }
    template <class Function>
    Function* Export(const char* szName) const
    {
        return ::Export<Function*>(m_hModule, szName);
    }
    HRESULT CanUnloadNow() const
    {
        return Export<HRESULT WINAPI()>("DllCanUnloadNow")();
    }
    HRESULT GetClassObject(REFCLSID rclsid, REFIID riid, void** ppv) const
    {
        return Export<HRESULT WINAPI(REFCLSID, REFIID, void**)>("DllGetClassObject")(rclsid, riid, ppv);
    }

    // A new object of the class behind the interface, through the class factory.
    template <class Interface>
    CComRef<Interface> Create(REFIID riid) const
    {
        CComRef<IClassFactory> factory;
        CComRef<Interface> object;
        EXPECT_EQ(S_OK, GetClassObject(CLSID_ExtUI, IID_IClassFactory, factory.PutVoid()));
        EXPECT_EQ(S_OK, factory->CreateInstance(nullptr, riid, object.PutVoid()));
        return object;
    }

    // The root object's one property of a kind.
    CComRef<IDot11ExtUIProperty> Property(ULONG uKind) const;

    // Unloads the module before the object's end.
    void Unload();

private:
    HMODULE m_hModule = nullptr;
    bool m_bRegistered = false;
};

// A connection context as hosts make it.
class CConnectionContext
{
public:
    CConnectionContext(CWideView name, const GUID& interfaceGuid, DWORD dwFlags = 0, DWORD dwKind = 1);

    void* Get()
    {
        return m_bytes.data();
    }

private:
    std::array<BYTE, ConnectionContextOffset::end> m_bytes{};
};

// The text of a BSTR, "(null)" for none; for comparisons that print.
std::string TextOf(const CBstr& bstr);

// A written IHV profile without what is left to the document component: the namespace declaration, white space between
// elements, the two forms of an empty element.
std::string ProfileTree(const CBstr& bstrProfile);
} // namespace tests
