// Owner of one reference on a COM object.
#pragma once

#include <objbase.h>

#include <utility>

template <class Interface>
class CComRef
{
public:
    CComRef() = default;
    CComRef(const CComRef& other) : m_pObject(other.m_pObject)
    {
        if (m_pObject)
            m_pObject->AddRef();
    }
    CComRef(CComRef&& other) noexcept : m_pObject(std::exchange(other.m_pObject, nullptr))
    {
    }
    // Of an interface that derives from this one.
    template <class Derived>
    // NOLINTNEXTLINE(google-explicit-constructor): as the pointer itself converts.
    CComRef(CComRef<Derived>&& other) noexcept : m_pObject(other.Detach())
    {
    }
    CComRef& operator=(CComRef other) noexcept
    {
        std::swap(m_pObject, other.m_pObject);
        return *this;
    }
    ~CComRef()
    {
        if (m_pObject)
            m_pObject->Release();
    }

    explicit operator bool() const
    {
        return m_pObject != nullptr;
    }
    Interface* Get() const
    {
        return m_pObject;
    }
    Interface* operator->() const
    {
        return m_pObject;
    }
    // For out parameters; the holder must be empty.
    Interface** Put()
    {
        return &m_pObject;
    }
    void** PutVoid()
    {
        return reinterpret_cast<void**>(&m_pObject);
    }
    [[nodiscard]] Interface* Detach()
    {
        return std::exchange(m_pObject, nullptr);
    }

private:
    Interface* m_pObject = nullptr;
};
