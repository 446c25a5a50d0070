// OLE automation strings and variants.
#pragma once

#include "objbase.h"

using BSTR = OLECHAR*;
using VARIANT_BOOL = SHORT;
using VARTYPE = USHORT;
#define VARIANT_TRUE (static_cast<VARIANT_BOOL>(-1))
#define VARIANT_FALSE (static_cast<VARIANT_BOOL>(0))

enum VARENUM
{
    VT_EMPTY = 0,
    VT_NULL = 1,
    VT_BSTR = 8,
    VT_UNKNOWN = 13,
};

struct VARIANT_RECORD
{
    void* pvRecord;
    void* pRecInfo;
};

// The members in use, in the platform's layout.
struct VARIANT
{
    VARTYPE vt;
    WORD wReserved1;
    WORD wReserved2;
    WORD wReserved3;
    union
    {
        BSTR bstrVal;
        IUnknown* punkVal;
        VARIANT_RECORD record;
    };
};
using VARIANTARG = VARIANT;

extern "C"
{
    BSTR WINAPI SysAllocString(const OLECHAR* szText);
    BSTR WINAPI SysAllocStringLen(const OLECHAR* pText, UINT cch);
    UINT WINAPI SysStringLen(BSTR bstr);
    void WINAPI SysFreeString(BSTR bstr);
    void WINAPI VariantInit(VARIANTARG* pvarg);
    HRESULT WINAPI VariantClear(VARIANTARG* pvarg);
}
