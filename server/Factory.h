// The class factory: three classes under the module's one class identifier, chosen by the interface asked for.
#pragma once

#include "com/ComObject.h"

class CFactory final : public CComObject<CFactory, IClassFactory, IID_IClassFactory, ModuleUse::NotCounted>
{
public:
    // CLASS_E_NOAGGREGATION for an outer object; E_NOINTERFACE, with ppvObject not written, for an interface that no
    // class is chosen by; E_OUTOFMEMORY.
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* pUnkOuter, REFIID riid, void** ppvObject) override;

    HRESULT STDMETHODCALLTYPE LockServer(BOOL fLock) override;
};
