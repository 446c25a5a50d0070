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
    VT_I2 = 2,
    VT_I4 = 3,
    VT_BSTR = 8,
    VT_BOOL = 11,
    VT_UNKNOWN = 13,
    VT_UI4 = 19,
};

struct VARIANT_RECORD
{
    void* pvRecord;
    void* pRecInfo;
};

// The members in use; the layout is the platform's for them.
struct VARIANT
{
    VARTYPE vt;
    WORD wReserved1;
    WORD wReserved2;
    WORD wReserved3;
    union
    {
        LONG lVal;
        ULONG ulVal;
        SHORT iVal;
        VARIANT_BOOL boolVal;
        BSTR bstrVal;
        IUnknown* punkVal;
        void* byref;
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
