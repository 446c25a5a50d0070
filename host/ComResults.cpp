#include "host/ComResults.h"

#include "host/HostError.h"
#include "values/ResultNames.h"

#include <cstdio>

std::string ResultName(HRESULT hr)
{
    char szNumber[16];
    std::snprintf(szNumber, sizeof(szNumber), "0x%08X", static_cast<unsigned>(hr));
    const WCHAR* szName = FindResultName(hr);
    return szName ? Utf8Of(szName) + " (" + szNumber + ")" : szNumber;
}

void RequireSuccess(HRESULT hr, const char* szCall)
{
    if (FAILED(hr))
        throw CHostError(std::string(szCall) + " answered " + ResultName(hr));
}
