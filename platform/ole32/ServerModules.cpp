#include "platform/ole32/ServerModules.h"

#include <windows.h>

#include <iterator>
#include <map>
#include <mutex>

namespace platform
{
namespace
{
struct ServerModules
{
    std::mutex lock;
    std::map<std::u16string, HMODULE> byPath;
};

// Never destroyed: activation may still go on while the process ends.
ServerModules& Servers()
{
    static ServerModules* const pServers = new ServerModules;
    return *pServers;
}

HMODULE FindServer(const std::u16string& path)
{
    ServerModules& servers = Servers();
    const std::scoped_lock guard(servers.lock);
    const auto found = servers.byPath.find(path);
    return found == servers.byPath.end() ? nullptr : found->second;
}

// Another thread may have loaded the same server meanwhile; one reference to it is enough.
void KeepServer(const std::u16string& path, HMODULE hModule)
{
    ServerModules& servers = Servers();
    bool bKept = false;
    {
        const std::scoped_lock guard(servers.lock);
        bKept = servers.byPath.emplace(path, hModule).second;
    }
    if (!bKept)
        FreeLibrary(hModule);
}

// Not under the lock: a module's entry point may use COM, and so activate, itself.
HRESULT LoadServer(const std::u16string& path, HMODULE& hModule)
{
    hModule = FindServer(path);
    if (hModule)
        return S_OK;
    hModule = LoadLibraryW(path.c_str());
    if (!hModule)
    {
        const DWORD dwError = GetLastError();
        return HRESULT_FROM_WIN32(dwError != ERROR_SUCCESS ? dwError : ERROR_MOD_NOT_FOUND);
    }
    KeepServer(path, hModule);
    return S_OK;
}
} // namespace

HRESULT GetServerClassObject(const std::u16string& path, REFCLSID rclsid, REFIID riid, void** ppv)
{
    HMODULE hModule = nullptr;
    if (const HRESULT hr = LoadServer(path, hModule); FAILED(hr))
        return hr;
    const auto pEntry = reinterpret_cast<void (*)()>(GetProcAddress(hModule, "DllGetClassObject"));
    const auto pGetClassObject = reinterpret_cast<decltype(&DllGetClassObject)>(pEntry);
    return pGetClassObject ? pGetClassObject(rclsid, riid, ppv) : CO_E_ERRORINDLL;
}

void FreeUnusedServers()
{
    ServerModules& servers = Servers();
    std::map<std::u16string, HMODULE> unused;
    {
        const std::scoped_lock guard(servers.lock);
        for (auto it = servers.byPath.begin(); it != servers.byPath.end();)
        {
            const auto pEntry = reinterpret_cast<void (*)()>(GetProcAddress(it->second, "DllCanUnloadNow"));
            const auto pCanUnloadNow = reinterpret_cast<decltype(&DllCanUnloadNow)>(pEntry);
            const auto next = std::next(it);
            if (pCanUnloadNow && pCanUnloadNow() == S_OK)
                unused.insert(servers.byPath.extract(it));
            it = next;
        }
    }
    for (const auto& [path, hModule] : unused)
        FreeLibrary(hModule);
}
} // namespace platform

void WINAPI CoFreeUnusedLibrariesEx(DWORD, DWORD)
{
    platform::FreeUnusedServers();
}
