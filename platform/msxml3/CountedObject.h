// Identity and lifetime, once for every object of the component.
#pragma once

#include "platform/testing/Accounts.h"
#include <msxml2.h>

#include <atomic>

namespace platform::msxml3
{
// Starts with one reference, which the creator owns. identifiers name what Interface is besides IUnknown.
template <class Interface, const IID&... identifiers>
class CCountedObject : public Interface
{
public:
    CCountedObject() noexcept
    {
        testing::ChangeAccount(testing::Account::XmlObject, 1);
    }
    CCountedObject(const CCountedObject&) = delete;
    CCountedObject& operator=(const CCountedObject&) = delete;

    STDMETHODIMP QueryInterface(REFIID riid, void** ppvObject) override
    {
        if (!ppvObject)
            return E_POINTER;
        const bool bKnown = riid == IID_IUnknown || ((riid == identifiers) || ...);
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

protected:
    virtual ~CCountedObject()
    {
        testing::ChangeAccount(testing::Account::XmlObject, -1);
    }

private:
    std::atomic<ULONG> m_uReferences = 1;
};
} // namespace platform::msxml3
