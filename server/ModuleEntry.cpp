// What happens when a host loads and unloads the module.
#include "com/Boundary.h"
#include "com/ModuleState.h"
#include "server/LanguageResources.h"
#include "trace/KorCmnTracer.h"

#include <objbase.h>

namespace
{
constexpr const WCHAR* szLogPath = OLESTR("c:\\WlanLogs\\KorIHVui.txt");

// No failure stops the load: every step has something to fall back to, or goes without.
void Attach(HINSTANCE hInstance)
{
    ModuleState::SetModuleHandle(hInstance);
    ModuleState::SetLanguageModule(LoadLanguageResources());
    DisableThreadLibraryCalls(hInstance);
    CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    KorCmnTracer::Start(szLogPath, true, false);
}

void Detach()
{
    KorCmnTracer::Stop();
    CoUninitialize();
}
} // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE hInstance, DWORD dwReason, LPVOID)
{
    AtBoundary(
        [&]
        {
            if (dwReason == DLL_PROCESS_ATTACH)
                Attach(hInstance);
            else if (dwReason == DLL_PROCESS_DETACH)
                Detach();
            return S_OK;
        });
    return TRUE;
}
