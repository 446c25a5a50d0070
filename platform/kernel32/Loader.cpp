#include "platform/kernel32/Loader.h"

#include "platform/kernel32/KernelCall.h"
#include "platform/kernel32/ModuleSearch.h"
#include "platform/kernel32/Paths.h"
#include "platform/kernel32/Unicode.h"
#include "platform/testing/Accounts.h"

#include <algorithm>
#include <cxxabi.h>

namespace platform
{
namespace
{
using testing::Account;
using Modules = std::vector<std::unique_ptr<CModule>>;
using LoaderGuard = std::lock_guard<std::recursive_mutex>;

// In the order of loading.
Modules& LoadedModules()
{
    static auto* const pModules = new Modules;
    return *pModules;
}

CModule& Program()
{
    static auto* const pProgram = CModule::OfProgram().release();
    return *pProgram;
}

template <class Predicate>
CModule* FindLoaded(Predicate&& isWanted)
{
    const auto found = std::ranges::find_if(LoadedModules(), [&](const auto& module) { return isWanted(*module); });
    return found == LoadedModules().end() ? nullptr : found->get();
}

// The end of the process: the modules that are still loaded hear of it, the latest first, and stay where they are. One
// of them may still free others meanwhile.
void DetachRemaining()
{
    static int nProcessEnds;
    const LoaderGuard lock(LoaderLock());
    for (;;)
    {
        const auto remaining = std::ranges::find_if(LoadedModules().rbegin(), LoadedModules().rend(),
                                                    [](const auto& module) { return !module->m_bDetached; });
        if (remaining == LoadedModules().rend())
            return;
        (*remaining)->Detach(&nProcessEnds);
    }
}

// Called at the end of the process, unless the module went before.
void EndWithModule(void* pModule)
{
    if (!static_cast<const CModule*>(pModule)->m_bDetached)
        DetachRemaining();
}

void Unload(CModule* pModule)
{
    // It has heard of its end; its place among the calls at the end of the process is free for the next module.
    abi::__cxa_finalize(pModule);
    const auto found = std::ranges::find_if(LoadedModules(), [&](const auto& module) { return module.get() == pModule; });
    // Out of the table first: static objects of the module are destroyed by what follows and may ask for modules.
    const std::unique_ptr<CModule> module = std::move(*found);
    LoadedModules().erase(found);
}

HMODULE AddReference(CModule& module)
{
    ++module.m_uReferences;
    testing::ChangeAccount(Account::Module, +1);
    return module.Handle();
}

HMODULE LoadFile(const std::filesystem::path& file, bool bResourcesOnly)
{
    CModule& module = *LoadedModules().emplace_back(CModule::Open(file, bResourcesOnly));
    // After the module's own static objects have been made, so that it hears of the end before they are destroyed.
    abi::__cxa_atexit(EndWithModule, &module, &module);
    // Known to everyone before the entry point runs, which asks for its own name and loads others.
    const HMODULE hModule = AddReference(module);
    if (module.Attach())
        return hModule;
    // A module that refuses is told goodbye all the same.
    module.Detach(nullptr);
    testing::ChangeAccount(Account::Module, -static_cast<long>(module.m_uReferences));
    Unload(&module);
    throw Failure{ERROR_DLL_INIT_FAILED};
}

HMODULE Load(LPCWSTR szFileName, bool bResourcesOnly = false)
{
    const auto file = FindModuleFile(szFileName, Program().File().parent_path());
    const LoaderGuard lock(LoaderLock());
    CModule* const pLoaded = FindLoaded([&](const CModule& module) { return module.File() == file; });
    return pLoaded ? AddReference(*pLoaded) : LoadFile(file, bResourcesOnly);
}
} // namespace

std::recursive_mutex& LoaderLock()
{
    static auto* const pLock = new std::recursive_mutex;
    return *pLock;
}

CModule* FindModule(HMODULE hModule)
{
    if (!hModule || hModule == Program().Handle())
        return &Program();
    return FindLoaded([&](CModule& module) { return module.Handle() == hModule; });
}
} // namespace platform

using namespace platform;

HMODULE WINAPI LoadLibraryW(LPCWSTR szFileName)
{
    return KernelCall("LoadLibraryW", ERROR_MOD_NOT_FOUND, HMODULE{nullptr}, [&] { return Load(szFileName); });
}

HMODULE WINAPI LoadLibraryExW(LPCWSTR szFileName, HANDLE hFile, DWORD dwFlags)
{
    return KernelCall("LoadLibraryExW", ERROR_MOD_NOT_FOUND, HMODULE{nullptr},
                      [&]
                      {
                          Require(!hFile && (dwFlags == 0 || dwFlags == LOAD_LIBRARY_AS_DATAFILE), ERROR_INVALID_PARAMETER);
                          return Load(szFileName, dwFlags == LOAD_LIBRARY_AS_DATAFILE);
                      });
}

BOOL WINAPI FreeLibrary(HMODULE hModule)
{
    return GiveBackCall("FreeLibrary", ERROR_INVALID_HANDLE,
                        [&]
                        {
                            const LoaderGuard lock(LoaderLock());
                            CModule* const pModule = hModule ? FindModule(hModule) : nullptr;
                            Require(pModule && pModule->m_uReferences != 0, ERROR_MOD_NOT_FOUND);
                            testing::ChangeAccount(Account::Module, -1);
                            if (--pModule->m_uReferences > 0)
                                return;
                            pModule->Detach(nullptr);
                            Unload(pModule);
                        });
}

HMODULE WINAPI GetModuleHandleW(LPCWSTR szModuleName)
{
    return KernelCall("GetModuleHandleW", ERROR_MOD_NOT_FOUND, HMODULE{nullptr},
                      [&]
                      {
                          const LoaderGuard lock(LoaderLock());
                          if (!szModuleName)
                              return Program().Handle();
                          const auto name = ToUtf8(szModuleName); // without a folder, as a module is asked for here
                          CModule* const pModule =
                              FindLoaded([&](const CModule& module) { return module.File().filename() == name; });
                          Require(pModule, ERROR_MOD_NOT_FOUND);
                          return pModule->Handle();
                      });
}

DWORD WINAPI GetModuleFileNameW(HMODULE hModule, LPWSTR szFileName, DWORD cchFileName)
{
    return KernelCall("GetModuleFileNameW", ERROR_MOD_NOT_FOUND, DWORD{0},
                      [&]
                      {
                          const LoaderGuard lock(LoaderLock());
                          const CModule* const pModule = FindModule(hModule);
                          Require(pModule, ERROR_MOD_NOT_FOUND);
                          Require(cchFileName != 0, ERROR_INSUFFICIENT_BUFFER);
                          const auto path = PlatformPath(pModule->File());
                          const auto cchCopied = std::min<std::size_t>(path.size(), cchFileName - 1);
                          *std::copy_n(path.begin(), cchCopied, szFileName) = u'\0';
                          if (cchCopied < path.size())
                              return FailWith(ERROR_INSUFFICIENT_BUFFER, cchFileName);
                          SetLastError(ERROR_SUCCESS);
                          return static_cast<DWORD>(cchCopied);
                      });
}

FARPROC WINAPI GetProcAddress(HMODULE hModule, LPCSTR szProcName)
{
    return KernelCall("GetProcAddress", ERROR_PROC_NOT_FOUND, FARPROC{nullptr},
                      [&]
                      {
                          const LoaderGuard lock(LoaderLock());
                          const CModule* const pModule = FindModule(hModule);
                          Require(pModule, ERROR_MOD_NOT_FOUND);
                          // Exports have names here and no numbers.
                          void* const pSymbol = IS_INTRESOURCE(szProcName) ? nullptr : pModule->OwnSymbol(szProcName);
                          Require(pSymbol, ERROR_PROC_NOT_FOUND);
                          return reinterpret_cast<FARPROC>(pSymbol);
                      });
}

BOOL WINAPI DisableThreadLibraryCalls(HMODULE hModule)
{
    return KernelCall("DisableThreadLibraryCalls", ERROR_INVALID_HANDLE, FALSE,
                      [&]
                      {
                          const LoaderGuard lock(LoaderLock());
                          // No module is told of threads here, so that there is nothing to turn off for a live one.
                          Require(hModule && FindModule(hModule), ERROR_MOD_NOT_FOUND);
                      });
}
