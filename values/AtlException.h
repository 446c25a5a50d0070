// What an allocation that must succeed raises when it does not.
#pragma once

#include <windows.h>

#include <new>

class CAtlException final : public std::bad_alloc
{
public:
    explicit CAtlException(HRESULT hr) : m_hr(hr)
    {
    }
    HRESULT Result() const
    {
        return m_hr;
    }

private:
    HRESULT m_hr;
};
