#include "server/Factory.h"

#include "com/Boundary.h"
#include "com/TraceError.h"
#include "extui/ExtUI.h"
#include "extui/ExtUICon.h"
#include "extui/ExtUIKey.h"
#include "public/Dot11ExtUI.h"
#include "trace/IhvuiTrace.h"

namespace
{
struct ServedClass
{
    const IID& iid;
    void (*traceChoice)();
    HRESULT (*create)(REFIID riid, void** ppvObject);
};

constexpr ServedClass servedClasses[] = {
    {IID_IDot11ExtUI, [] { IhvuiTrace(traceLevelInfo, OLESTR("-- IID_IDot11ExtUI\n")); }, CreateComObject<CExtUI>},
    {IID_ICCXExtUICon, [] { IhvuiTrace(traceLevelInfo, OLESTR("-- IID_ICCXExtUICon\n")); }, CreateComObject<CExtUICon>},
    {IID_ICCXExtUIKey, [] { IhvuiTrace(traceLevelInfo, OLESTR("-- IID_ICCXExtUIKey\n")); }, CreateComObject<CExtUIKey>},
};
} // namespace

HRESULT STDMETHODCALLTYPE CFactory::CreateInstance(IUnknown* pUnkOuter, REFIID riid, void** ppvObject)
{
    return AtBoundary(
        [&]
        {
            IhvuiTrace(traceLevelInfo, OLESTR("CFactory::CreateInstance\n"));
            if (pUnkOuter)
                return TraceError(CLASS_E_NOAGGREGATION);
            for (const auto& served : servedClasses)
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
