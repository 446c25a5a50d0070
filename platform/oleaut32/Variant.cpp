#include <oleauto.h>

#include "platform/ole32/ResultFault.h"

void WINAPI VariantInit(VARIANTARG* pvarg)
{
    platform::testing::FaultFires("VariantInit"); // has no way to fail; the call is counted
    pvarg->vt = VT_EMPTY;
}

HRESULT WINAPI VariantClear(VARIANTARG* pvarg)
{
    // Made to fail, it releases the content all the same, so that the accounts show only what the caller forgot.
    const auto hrFault = platform::ResultFault("VariantClear", DISP_E_BADVARTYPE);
    if (!pvarg)
        return E_INVALIDARG;
    switch (pvarg->vt)
    {
    case VT_BSTR:
        SysFreeString(pvarg->bstrVal);
        break;
    case VT_UNKNOWN:
        if (pvarg->punkVal)
            pvarg->punkVal->Release();
        break;
    case VT_EMPTY:
    case VT_NULL:
        break;
    default:
        return DISP_E_BADVARTYPE;
    }
    pvarg->vt = VT_EMPTY;
    return hrFault.value_or(S_OK);
}
