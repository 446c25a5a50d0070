#include "com/TraceError.h"

#include "trace/IhvuiTrace.h"

#include <algorithm>
#include <iterator>

namespace
{
struct ResultName
{
    HRESULT hr;
    const WCHAR* szName;
};

const ResultName resultNames[] = {
    {E_NOTIMPL, OLESTR("E_NOTIMPL")},
    {E_NOINTERFACE, OLESTR("E_NOINTERFACE")},
    {E_POINTER, OLESTR("E_POINTER")},
    {E_FAIL, OLESTR("E_FAIL")},
    {E_UNEXPECTED, OLESTR("E_UNEXPECTED")},
    {E_OUTOFMEMORY, OLESTR("E_OUTOFMEMORY")},
    {E_INVALIDARG, OLESTR("E_INVALIDARG")},
    {CLASS_E_NOAGGREGATION, OLESTR("CLASS_E_NOAGGREGATION")},
    {CLASS_E_CLASSNOTAVAILABLE, OLESTR("CLASS_E_CLASSNOTAVAILABLE")},
};
} // namespace

HRESULT TraceError(HRESULT hr)
{
    const auto name = std::find_if(std::begin(resultNames), std::end(resultNames), [&](const auto& row) { return row.hr == hr; });
    IhvuiTrace(traceLevelError, OLESTR("***Error: returning %s\n"), name == std::end(resultNames) ? OLESTR("?") : name->szName);
    return hr;
}
