#include "Edge.h"

#include <string>

namespace platform::msxml3
{
HRESULT GiveValue(const std::u16string* pValue, VARIANT* pvarValue) noexcept
{
    if (!pValue)
    {
        pvarValue->vt = VT_NULL;
        return S_FALSE;
    }
    const HRESULT hr = GiveText(*pValue, &pvarValue->bstrVal);
    if (SUCCEEDED(hr))
        pvarValue->vt = VT_BSTR;
    return hr;
}
} // namespace platform::msxml3
