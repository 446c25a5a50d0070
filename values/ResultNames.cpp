#include "values/ResultNames.h"

#include <algorithm>
#include <iterator>

namespace
{
struct ResultName
{
    HRESULT hr;
    const WCHAR* szName;
};

constexpr ResultName resultNames[] = {
    {E_NOTIMPL, OLESTR("E_NOTIMPL")},
    {E_NOINTERFACE, OLESTR("E_NOINTERFACE")},
    {E_POINTER, OLESTR("E_POINTER")},
    {E_FAIL, OLESTR("E_FAIL")},
    {E_UNEXPECTED, OLESTR("E_UNEXPECTED")},
    {E_OUTOFMEMORY, OLESTR("E_OUTOFMEMORY")},
    {E_INVALIDARG, OLESTR("E_INVALIDARG")},
    {CLASS_E_NOAGGREGATION, OLESTR("CLASS_E_NOAGGREGATION")},
    {CLASS_E_CLASSNOTAVAILABLE, OLESTR("CLASS_E_CLASSNOTAVAILABLE")},
    {REGDB_E_CLASSNOTREG, OLESTR("REGDB_E_CLASSNOTREG")},
};
} // namespace

const WCHAR* FindResultName(HRESULT hr)
{
    const auto row =
        std::find_if(std::begin(resultNames), std::end(resultNames), [&](const auto& name) { return name.hr == hr; });
    return row == std::end(resultNames) ? nullptr : row->szName;
}
