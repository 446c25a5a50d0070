// What the simulated WLAN service exports beside the platform's own functions: accounts and failing on purpose.
//
// All of it is per process and may be called from any thread. Function names are those of the platform, for instance
// "WlanGetProfile".
#pragma once

#include <windows.h>

#ifdef PLATFORM_EXPORT
#define SIMULATED_WLAN_EXPORT PLATFORM_EXPORT
#else // exported by the list in wlanapi.def
#define SIMULATED_WLAN_EXPORT
#endif

extern "C"
{
    // Client handles that are open, and memory blocks that were handed out and not yet given to WlanFreeMemory.
    SIMULATED_WLAN_EXPORT LONG WINAPI SimulatedWlanLiveHandles();
    SIMULATED_WLAN_EXPORT LONG WINAPI SimulatedWlanLiveBlocks();

    // Lets calls number uFirst to uFirst + uCount - 1 (counted from 1, from now on) of the function return dwError at once,
    // with nothing done and no out parameter touched. dwError may be ERROR_SUCCESS: a service that claims success and gives
    // nothing. A second plan for the same function replaces the first. FALSE when there is no such function or it has no
    // result (WlanFreeMemory).
    SIMULATED_WLAN_EXPORT BOOL WINAPI SimulatedWlanFailNext(const char* szFunction, unsigned uFirst, unsigned uCount,
                                                            DWORD dwError);

    // Forgets every plan and every count.
    SIMULATED_WLAN_EXPORT void WINAPI SimulatedWlanClearFaults();

    // How often the function was called since the counts were last forgotten, planned failures included; 0 for an unknown
    // function.
    SIMULATED_WLAN_EXPORT unsigned WINAPI SimulatedWlanCalls(const char* szFunction);
}
