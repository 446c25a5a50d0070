#include "host/ComResults.h"

#include "host/HostError.h"

#include <cstdio>

namespace
{
struct NamedResult
{
    HRESULT hr;
    const char* szName;
};
const NamedResult namedResults[] = {
    {E_NOTIMPL, "E_NOTIMPL"},
    {E_NOINTERFACE, "E_NOINTERFACE"},
    {E_POINTER, "E_POINTER"},
    {E_FAIL, "E_FAIL"},
    {E_OUTOFMEMORY, "E_OUTOFMEMORY"},
    {E_INVALIDARG, "E_INVALIDARG"},
    {CLASS_E_NOAGGREGATION, "CLASS_E_NOAGGREGATION"},
    {CLASS_E_CLASSNOTAVAILABLE, "CLASS_E_CLASSNOTAVAILABLE"},
    {REGDB_E_CLASSNOTREG, "REGDB_E_CLASSNOTREG"},
};
} // namespace

std::string ResultName(HRESULT hr)
{
    char szNumber[16];
    std::snprintf(szNumber, sizeof(szNumber), "0x%08X", static_cast<unsigned>(hr));
    for (const NamedResult& row : namedResults)
        if (row.hr == hr)
            return std::string(row.szName) + " (" + szNumber + ")";
    return szNumber;
}

void RequireSuccess(HRESULT hr, const char* szCall)
{
    if (FAILED(hr))
        throw CHostError(std::string(szCall) + " answered " + ResultName(hr));
}
