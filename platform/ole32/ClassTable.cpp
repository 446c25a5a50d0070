#include "platform/ole32/ClassTable.h"

#include "platform/ole32/Apartment.h"
#include "platform/ole32/ResultFault.h"

#include <algorithm>
#include <mutex>
#include <new>
#include <vector>

namespace
{
struct ClassEntry
{
    DWORD dwCookie;
    CLSID clsid;
    DWORD dwClsContext;
    IUnknown* pClassObject; // holds a reference
};

struct ClassTable
{
    std::mutex lock;
    std::vector<ClassEntry> entries;
    DWORD dwNextCookie = 1;

    std::vector<ClassEntry>::iterator Find(REFCLSID rclsid, DWORD dwClsContext)
    {
        return std::ranges::find_if(entries, [&](const ClassEntry& entry)
                                    { return entry.clsid == rclsid && (entry.dwClsContext & dwClsContext) != 0; });
    }
};

// Never destroyed: what is still registered at the end of the process must not be released into unloaded modules.
ClassTable& Table()
{
    static ClassTable* const pTable = new ClassTable;
    return *pTable;
}

DWORD AddEntry(REFCLSID rclsid, IUnknown* pClassObject, DWORD dwClsContext)
{
    ClassTable& table = Table();
    const std::scoped_lock guard(table.lock);
    if (table.Find(rclsid, dwClsContext) != table.entries.end())
        return 0;
    table.entries.push_back({table.dwNextCookie, rclsid, dwClsContext, pClassObject});
    pClassObject->AddRef();
    return table.dwNextCookie++;
}

// Hands the entry's reference over; null for an unknown cookie.
IUnknown* TakeEntry(DWORD dwCookie)
{
    ClassTable& table = Table();
    const std::scoped_lock guard(table.lock);
    const auto found = std::ranges::find_if(table.entries, [&](const ClassEntry& entry) { return entry.dwCookie == dwCookie; });
    if (found == table.entries.end())
        return nullptr;
    IUnknown* const pClassObject = found->pClassObject;
    table.entries.erase(found);
    return pClassObject;
}
} // namespace

namespace platform
{
IUnknown* FindClassObject(REFCLSID rclsid, DWORD dwClsContext)
{
    ClassTable& table = Table();
    const std::scoped_lock guard(table.lock);
    const auto found = table.Find(rclsid, dwClsContext);
    if (found == table.entries.end())
        return nullptr;
    found->pClassObject->AddRef();
    return found->pClassObject;
}
} // namespace platform

HRESULT WINAPI CoRegisterClassObject(REFCLSID rclsid, LPUNKNOWN pUnk, DWORD dwClsContext, DWORD dwFlags, LPDWORD pdwRegister)
{
    if (const auto hrFault = platform::ResultFault("CoRegisterClassObject", E_OUTOFMEMORY))
        return *hrFault;
    if (!pUnk || !pdwRegister)
        return E_INVALIDARG;
    // Classes for other processes and for one use only are not served here.
    if (!(dwClsContext & CLSCTX_INPROC_SERVER) || dwFlags != REGCLS_MULTIPLEUSE)
        return E_INVALIDARG;
    if (!platform::IsComInitialised())
        return CO_E_NOTINITIALIZED;
    try
    {
        const DWORD dwCookie = AddEntry(rclsid, pUnk, dwClsContext);
        if (dwCookie == 0)
            return CO_E_OBJISREG;
        *pdwRegister = dwCookie;
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
    IUnknown* const pClassObject = TakeEntry(dwRegister);
    if (!pClassObject)
        return E_INVALIDARG;
    pClassObject->Release(); // outside the table's lock: the object's end may register or revoke again
    return S_OK;
}
