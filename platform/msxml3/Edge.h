// The edge between the component's code and its callers: planned faults, out parameters, exceptions.
#pragma once

#include "platform/testing/FaultPoint.h"
#include <msxml2.h>

#include <new>
#include <string_view>

namespace platform::msxml3
{
// No exception leaves an operation.
template <class Operation>
HRESULT Guard(Operation operation) noexcept
{
    try
    {
        return operation();
    }
    catch (const std::bad_alloc&)
    {
        return E_OUTOFMEMORY;
    }
    catch (...)
    {
        return E_FAIL;
    }
}

// Runs an operation under the platform's name for it, unless the fault plan has it fail with the plan's code or
// hrDefault.
template <class Operation>
HRESULT Perform(const char* szFunction, Operation operation, HRESULT hrDefault = E_FAIL) noexcept
{
    if (!testing::FaultFires(szFunction))
        return Guard(operation);
    const auto hr = static_cast<HRESULT>(testing::FaultCode(szFunction, static_cast<DWORD>(hrDefault)));
    return FAILED(hr) ? hr : hrDefault;
}

// The same for an operation that answers through an out parameter, which is empty on every failure and must not be
// null.
template <class Out, class Operation>
HRESULT Answer(const char* szFunction, Out* pOut, Operation operation) noexcept
{
    if (pOut)
        *pOut = Out();
    return Perform(szFunction, [&] { return pOut ? operation() : E_INVALIDARG; });
}

inline std::u16string_view TextOf(BSTR bstr) noexcept
{
    return bstr ? std::u16string_view(bstr, SysStringLen(bstr)) : std::u16string_view();
}

inline HRESULT GiveText(std::u16string_view text, BSTR* pbstr) noexcept
{
    *pbstr = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    return *pbstr ? S_OK : E_OUTOFMEMORY;
}

// S_FALSE and VT_NULL when there is no value.
HRESULT GiveValue(const std::u16string* pValue, VARIANT* pvarValue) noexcept;
} // namespace platform::msxml3
