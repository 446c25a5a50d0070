// IUnknown and IClassFactory.
#pragma once

#include "windef.h"
#include "winerror.h"

#define STDMETHODIMP HRESULT STDMETHODCALLTYPE
#define STDMETHODIMP_(type) type STDMETHODCALLTYPE
#define STDAPI extern "C" HRESULT WINAPI

class IUnknown
{
public:
    virtual HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppvObject) = 0;
    virtual ULONG STDMETHODCALLTYPE AddRef() = 0;
    virtual ULONG STDMETHODCALLTYPE Release() = 0;

protected:
    ~IUnknown() = default;
};
using LPUNKNOWN = IUnknown*;

class IClassFactory : public IUnknown
{
public:
    virtual HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* pUnkOuter, REFIID riid, void** ppvObject) = 0;
    virtual HRESULT STDMETHODCALLTYPE LockServer(BOOL fLock) = 0;

protected:
    ~IClassFactory() = default;
};

extern "C"
{
    extern const IID IID_IUnknown;
    extern const IID IID_IClassFactory;
}
