// The three IUnknown operations, once for every class of the module.
#pragma once

#include "com/ModuleState.h"

#include <objbase.h>

#include <atomic>
#include <new>

// Whether an object keeps the module loaded.
enum class ModuleUse
{
    Counted,
    NotCounted,
};

// Object is the class itself, Interface and iid the one interface that it answers beside IUnknown. An object starts with
// one reference, its maker's, and ends with the last.
template <class Object, class Interface, const IID& iid, ModuleUse moduleUse = ModuleUse::Counted>
class CComObject : public Interface
{
public:
    CComObject()
    {
        if constexpr (moduleUse == ModuleUse::Counted)
            ModuleState::IncrementObjectCount();
    }
    CComObject(const CComObject&) = delete;
    CComObject& operator=(const CComObject&) = delete;

    // S_OK with a reference added; E_NOINTERFACE with a null *ppvObject; E_POINTER for a null ppvObject.
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppvObject) override
    {
        if (!ppvObject)
            return E_POINTER;
        *ppvObject = nullptr;
        if (!IsEqualGUID(riid, IID_IUnknown) && !IsEqualGUID(riid, iid))
            return E_NOINTERFACE;
        *ppvObject = static_cast<Interface*>(this);
        this->AddRef();
        return S_OK;
    }

    ULONG STDMETHODCALLTYPE AddRef() override
    {
        return static_cast<ULONG>(++m_lReferences);
    }

    ULONG STDMETHODCALLTYPE Release() override
    {
        const LONG lLeft = --m_lReferences;
        if (lLeft == 0)
            delete static_cast<Object*>(this);
        return static_cast<ULONG>(lLeft);
    }

protected:
    ~CComObject()
    {
        if constexpr (moduleUse == ModuleUse::Counted)
            ModuleState::DecrementObjectCount();
    }

private:
    std::atomic<LONG> m_lReferences = 1;
};

// Makes an object and hands it out by the wanted interface: on success the caller holds the only reference.
// E_OUTOFMEMORY when it cannot be made, else the result of its QueryInterface.
template <class Object>
HRESULT CreateComObject(REFIID riid, void** ppvObject)
{
    auto* pObject = new (std::nothrow) Object;
    if (!pObject)
        return E_OUTOFMEMORY;
    const HRESULT hr = pObject->QueryInterface(riid, ppvObject);
    pObject->Release();
    return hr;
}
