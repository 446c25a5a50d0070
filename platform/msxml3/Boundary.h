// The boundary between the component's code and its callers: planned faults, out parameters, exceptions, text.
#pragma once

#include "platform/testing/FaultPoint.h"
#include <msxml2.h>

#include <new>
#include <string_view>

namespace platform::msxml3
{
// Runs an operation under the platform's name for it, unless the fault plan has it fail. No exception leaves it.
template <class Operation>
HRESULT Perform(const char* szFunction, Operation operation) noexcept
{
    if (testing::FaultFires(szFunction))
    {
        const auto hr = static_cast<HRESULT>(testing::FaultCode(szFunction, static_cast<DWORD>(E_FAIL)));
        return FAILED(hr) ? hr : E_FAIL;
    }
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
} // namespace platform::msxml3
