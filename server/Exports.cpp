// The entries that COM and the registration tools call.
#include "com/Boundary.h"
#include "com/ModuleState.h"
#include "com/TraceError.h"
#include "public/Dot11ExtUI.h"
#include "server/Factory.h"
#include "server/SelfRegister.h"
#include "trace/IhvuiTrace.h"

#include <olectl.h>

STDAPI DllGetClassObject(REFCLSID rclsid, REFIID riid, LPVOID* ppv)
{
    return AtBoundary(
        [&]
        {
            IhvuiTrace(traceLevelInfo, OLESTR("GetClassObject\n"));
            if (!IsEqualGUID(rclsid, CLSID_ExtUI))
                return TraceError(CLASS_E_CLASSNOTAVAILABLE);
            const HRESULT hr = CreateComObject<CFactory>(riid, ppv);
            return hr == E_OUTOFMEMORY ? TraceError(hr) : hr;
        });
}

STDAPI DllCanUnloadNow()
{
    return ModuleState::IsUnused() ? S_OK : S_FALSE;
}

STDAPI DllRegisterServer()
{
    return AtBoundary(
        []
        {
            IhvuiTrace(traceLevelInfo, OLESTR("DllRegisterServer\n"));
            return SelfRegister(false);
        });
}

STDAPI DllUnregisterServer()
{
    return AtBoundary(
        []
        {
            IhvuiTrace(traceLevelInfo, OLESTR("DllUnregisterServer\n"));
            return SelfRegister(true);
        });
}
