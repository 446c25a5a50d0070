#include "platform/ole32/ClassTable.h"

#include "platform/ole32/Apartment.h"
#include "platform/ole32/ResultFault.h"

#include <algorithm>
#include <map>
#include <mutex>
#include <new>

namespace
{
struct ClassEntry
{
    CLSID clsid;
    IUnknown* pClassObject; // holds a reference
};

struct ClassTable
{
    std::mutex lock;
    std::map<DWORD, ClassEntry> entries; // by their cookies
    DWORD dwNextCookie = 1;
};

// Never destroyed: what is still registered at the end of the process must not be released into unloaded modules.
ClassTable& Table()
{
    static ClassTable* const pTable = new ClassTable;
    return *pTable;
}
} // namespace

namespace platform
{
IUnknown* FindClassObject(REFCLSID rclsid)
{
    const std::scoped_lock guard(Table().lock);
    const auto found = std::ranges::find_if(Table().entries, [&](const auto& entry) { return entry.second.clsid == rclsid; });
    if (found == Table().entries.end())
        return nullptr;
    found->second.pClassObject->AddRef();
    return found->second.pClassObject;
}
} // namespace platform

HRESULT WINAPI CoRegisterClassObject(REFCLSID rclsid, LPUNKNOWN pUnk, DWORD dwClsContext, DWORD dwFlags, LPDWORD pdwRegister)
{
    if (const auto hrFault = platform::ResultFault("CoRegisterClassObject", E_OUTOFMEMORY))
        return *hrFault;
    // Classes for other processes and for one use only are not served here.
    if (!pUnk || !pdwRegister || dwClsContext != CLSCTX_INPROC_SERVER || dwFlags != REGCLS_MULTIPLEUSE)
        return E_INVALIDARG;
    if (!platform::IsComInitialised())
        return CO_E_NOTINITIALIZED;
    try
    {
        const std::scoped_lock guard(Table().lock);
        Table().entries.emplace(Table().dwNextCookie, ClassEntry{rclsid, pUnk});
        pUnk->AddRef();
        *pdwRegister = Table().dwNextCookie++;
        return S_OK;
    }
    catch (const std::bad_alloc&)
    {
        return E_OUTOFMEMORY;
    }
}

HRESULT WINAPI CoRevokeClassObject(DWORD dwRegister)
{
    if (const auto hrFault = platform::ResultFault("CoRevokeClassObject", E_INVALIDARG))
        return *hrFault;
    std::map<DWORD, ClassEntry>::node_type entry;
    {
        const std::scoped_lock guard(Table().lock);
        entry = Table().entries.extract(dwRegister);
    }
    if (!entry)
        return E_INVALIDARG;
    entry.mapped().pClassObject->Release(); // outside the table's lock: the object's end may register or revoke again
    return S_OK;
}
