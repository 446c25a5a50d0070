// Owners of what COM hands out: references, strings, loaded modules.
#pragma once

#include "values/Unique.h"
#include "values/WideText.h"

#include <objbase.h>
#include <oleauto.h>

#include <new>
#include <optional>

template <class Interface>
struct CInterfaceCloser
{
    using Handle = Interface*;
    static Handle Empty()
    {
        return nullptr;
    }
    static void Close(Handle pInterface)
    {
        pInterface->Release();
    }
};
template <class Interface>
using CUniqueInterface = CUnique<CInterfaceCloser<Interface>>;

struct CBstrCloser
{
    using Handle = BSTR;
    static BSTR Empty()
    {
        return nullptr;
    }
    static void Close(BSTR bstr)
    {
        SysFreeString(bstr);
    }
};
using CUniqueBstr = CUnique<CBstrCloser>;

struct CModuleCloser
{
    using Handle = HMODULE;
    static HMODULE Empty()
    {
        return nullptr;
    }
    static void Close(HMODULE hModule)
    {
        FreeLibrary(hModule);
    }
};
using CUniqueModule = CUnique<CModuleCloser>;

inline CUniqueBstr MakeBstr(CWideView text)
{
    CUniqueBstr bstr(SysAllocStringLen(text.data(), static_cast<UINT>(text.size())));
    if (!bstr)
        throw std::bad_alloc();
    return bstr;
}

// A missing text is a null string.
inline CUniqueBstr MakeBstr(const std::optional<CWideString>& strText)
{
    return strText ? MakeBstr(CWideView(*strText)) : CUniqueBstr();
}

inline CWideView ViewOf(BSTR bstr)
{
    return bstr ? CWideView(bstr, SysStringLen(bstr)) : CWideView{};
}
