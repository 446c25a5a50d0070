// Owner of a platform string.
#pragma once

#include "values/AtlException.h"
#include "values/WideText.h"

#include <oleauto.h>

#include <utility>

class CBstr
{
public:
    CBstr() = default;
    // Made from a text (which may be null): left null when it cannot be allocated.
    explicit CBstr(const WCHAR* szText) : m_bstr(SysAllocString(szText))
    {
    }
    // Made with a given length: raises CAtlException when it cannot be allocated.
    explicit CBstr(CWideView text) : m_bstr(SysAllocStringLen(text.data(), static_cast<UINT>(text.size())))
    {
        if (!m_bstr)
            throw CAtlException(E_OUTOFMEMORY);
    }
    CBstr(CBstr&& other) noexcept : m_bstr(other.Detach())
    {
    }
    CBstr& operator=(CBstr&& other) noexcept
    {
        std::swap(m_bstr, other.m_bstr);
        return *this;
    }
    ~CBstr()
    {
        SysFreeString(m_bstr);
    }

    explicit operator bool() const
    {
        return m_bstr != nullptr;
    }
    BSTR Get() const
    {
        return m_bstr;
    }
    // All of it, embedded zeros included; a null string is an empty text.
    CWideView View() const
    {
        return m_bstr ? CWideView(m_bstr, SysStringLen(m_bstr)) : CWideView();
    }
    // Of one that is null.
    BSTR* Put()
    {
        return &m_bstr;
    }
    // Hands the string over, as an out parameter does at its very end.
    [[nodiscard]] BSTR Detach()
    {
        return std::exchange(m_bstr, nullptr);
    }

private:
    BSTR m_bstr = nullptr;
};
