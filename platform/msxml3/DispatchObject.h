// Identity, lifetime and the unused automation half, once for every object of the component.
#pragma once

#include "platform/testing/Accounts.h"
#include <msxml2.h>

#include <atomic>

namespace platform::msxml3
{
// Starts with one reference, which the creator owns. identifiers name what Interface is besides IUnknown and IDispatch.
template <class Interface, const IID&... identifiers>
class CDispatchObject : public Interface
{
public:
    CDispatchObject() noexcept
    {
        testing::ChangeAccount(testing::Account::XmlObject, 1);
    }
    CDispatchObject(const CDispatchObject&) = delete;
    CDispatchObject& operator=(const CDispatchObject&) = delete;

    STDMETHODIMP QueryInterface(REFIID riid, void** ppvObject) override
    {
        if (!ppvObject)
            return E_POINTER;
        const bool bKnown = riid == IID_IUnknown || riid == IID_IDispatch || ((riid == identifiers) || ...);
        *ppvObject = bKnown ? static_cast<Interface*>(this) : nullptr;
        if (!bKnown)
            return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override
    {
        return ++m_uReferences;
    }
    STDMETHODIMP_(ULONG) Release() override
    {
        const ULONG uLeft = --m_uReferences;
        if (uLeft == 0)
            delete this;
        return uLeft;
    }

    STDMETHODIMP GetTypeInfoCount(UINT*) override
    {
        return E_NOTIMPL;
    }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override
    {
        return E_NOTIMPL;
    }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override
    {
        return E_NOTIMPL;
    }
    STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override
    {
        return E_NOTIMPL;
    }

protected:
    virtual ~CDispatchObject()
    {
        testing::ChangeAccount(testing::Account::XmlObject, -1);
    }

private:
    std::atomic<ULONG> m_uReferences = 1;
};
} // namespace platform::msxml3
