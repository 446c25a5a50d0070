// From a class identifier to an object.
#include <objbase.h>

#include "platform/advapi32/ValueText.h"
#include "platform/msxml3/DocumentClass.h"
#include "platform/ole32/Apartment.h"
#include "platform/ole32/ClassTable.h"
#include "platform/ole32/ResultFault.h"
#include "platform/ole32/ServerModules.h"
#include "platform/rpcrt4/GuidText.h"

#include <new>

namespace
{
// Holds one reference.
template <class Interface>
class CReference
{
public:
    explicit CReference(Interface* pObject = nullptr) : m_pObject(pObject)
    {
    }
    ~CReference()
    {
        if (m_pObject)
            m_pObject->Release();
    }
    CReference(const CReference&) = delete;
    CReference& operator=(const CReference&) = delete;

    explicit operator bool() const
    {
        return m_pObject != nullptr;
    }
    Interface* operator->() const
    {
        return m_pObject;
    }
    void** Put()
    {
        return reinterpret_cast<void**>(&m_pObject);
    }

private:
    Interface* m_pObject;
};

HRESULT GetRegisteredServerClassObject(REFCLSID rclsid, void** ppv)
{
    const std::u16string subKey = u"CLSID\\{" + platform::GuidToText(rclsid) + u"}\\InprocServer32";
    const auto path = platform::registry::ReadText(HKEY_CLASSES_ROOT, subKey.c_str(), nullptr);
    if (!path || path->empty())
        return REGDB_E_CLASSNOTREG;
    return platform::GetServerClassObject(*path, rclsid, IID_IClassFactory, ppv);
}

// What the process registered for itself comes first, then the built-in class, then the registry.
HRESULT GetFactory(REFCLSID rclsid, void** ppv)
{
    if (const CReference classObject(platform::FindClassObject(rclsid)); classObject)
        return classObject->QueryInterface(IID_IClassFactory, ppv);
    if (rclsid == platform::documentClass)
        return platform::GetDocumentClassObject(IID_IClassFactory, ppv);
    return GetRegisteredServerClassObject(rclsid, ppv);
}

HRESULT CreateObject(REFCLSID rclsid, IUnknown* pUnkOuter, REFIID riid, void** ppv)
{
    CReference<IClassFactory> factory;
    if (const HRESULT hr = GetFactory(rclsid, factory.Put()); FAILED(hr))
        return hr;
    if (!factory)
        return E_NOINTERFACE;
    return factory->CreateInstance(pUnkOuter, riid, ppv);
}
} // namespace

HRESULT WINAPI CoCreateInstance(REFCLSID rclsid, LPUNKNOWN pUnkOuter, DWORD dwClsContext, REFIID riid, LPVOID* ppv)
{
    if (!ppv)
        return E_POINTER;
    *ppv = nullptr;
    if (const auto hrFault = platform::ResultFault("CoCreateInstance", REGDB_E_CLASSNOTREG))
        return *hrFault;
    if (!platform::IsComInitialised())
        return CO_E_NOTINITIALIZED;
    if ((dwClsContext & CLSCTX_INPROC_SERVER) == 0) // the only servers here
        return E_INVALIDARG;
    try
    {
        const HRESULT hr = CreateObject(rclsid, pUnkOuter, riid, ppv);
        if (FAILED(hr))
            *ppv = nullptr;
        return hr;
    }
    catch (const std::bad_alloc&)
    {
        return E_OUTOFMEMORY;
    }
}
