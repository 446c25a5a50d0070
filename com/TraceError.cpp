#include "com/TraceError.h"

#include "trace/IhvuiTrace.h"
#include "values/ResultNames.h"

HRESULT TraceError(HRESULT hr)
{
    const WCHAR* szName = FindResultName(hr);
    IhvuiTrace(traceLevelError, OLESTR("***Error: returning %s\n"), szName ? szName : OLESTR("?"));
    return hr;
}
