#include "server/Factory.h"

#include "com/Boundary.h"
#include "com/TraceError.h"
#include "extui/ServedClasses.h"
#include "trace/IhvuiTrace.h"

HRESULT STDMETHODCALLTYPE CFactory::CreateInstance(IUnknown* pUnkOuter, REFIID riid, void** ppvObject)
{
    return AtBoundary(
        [&]
        {
            IhvuiTrace(traceLevelInfo, OLESTR("CFactory::CreateInstance\n"));
            if (pUnkOuter)
                return TraceError(CLASS_E_NOAGGREGATION);
            for (const auto& served : ServedClasses())
            {
                if (!IsEqualGUID(riid, served.iid))
                    continue;
                served.traceChoice();
                return served.create(riid, ppvObject);
            }
            return E_NOINTERFACE;
        });
}

HRESULT STDMETHODCALLTYPE CFactory::LockServer(BOOL fLock)
{
    if (fLock)
        ModuleState::IncrementLockCount();
    else
        ModuleState::DecrementLockCount();
    return S_OK;
}
