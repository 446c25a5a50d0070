#include "platform/ole32/ServerModules.h"

#include <windows.h>

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

// Null, with the last error, when it cannot be loaded.
HMODULE LoadServer(const std::u16string& path)
{
    ServerModules& servers = Servers();
    {
        const std::scoped_lock guard(servers.lock);
        if (const auto found = servers.byPath.find(path); found != servers.byPath.end())
            return found->second;
    }
    // Not under the lock: a module's entry point may use COM, and so activate, itself.
    const HMODULE hModule = LoadLibraryW(path.c_str());
    if (!hModule)
        return nullptr;
    std::unique_lock guard(servers.lock);
    if (servers.byPath.emplace(path, hModule).second)
        return hModule;
    // Another thread has loaded it meanwhile; one reference to it is enough.
    guard.unlock();
    FreeLibrary(hModule);
    return hModule;
}

template <class Function>
Function* ExportOf(HMODULE hModule, const char* szName)
{
    return reinterpret_cast<Function*>(reinterpret_cast<void (*)()>(GetProcAddress(hModule, szName)));
}
} // namespace

HRESULT GetServerClassObject(const std::u16string& path, REFCLSID rclsid, REFIID riid, void** ppv)
{
    const HMODULE hModule = LoadServer(path);
    if (!hModule)
        return HRESULT_FROM_WIN32(GetLastError());
    const auto pGetClassObject = ExportOf<decltype(DllGetClassObject)>(hModule, "DllGetClassObject");
    return pGetClassObject ? pGetClassObject(rclsid, riid, ppv) : CO_E_ERRORINDLL;
}
} // namespace platform

void WINAPI CoFreeUnusedLibrariesEx(DWORD, DWORD)
{
    auto& servers = platform::Servers();
    std::map<std::u16string, HMODULE> unused;
    {
        const std::scoped_lock guard(servers.lock);
        for (auto it = servers.byPath.begin(); it != servers.byPath.end();)
        {
            const auto server = it++;
            const auto pCanUnloadNow = platform::ExportOf<decltype(DllCanUnloadNow)>(server->second, "DllCanUnloadNow");
            if (pCanUnloadNow && pCanUnloadNow() == S_OK)
                unused.insert(servers.byPath.extract(server));
        }
    }
    for (const auto& [path, hModule] : unused)
        FreeLibrary(hModule);
}
