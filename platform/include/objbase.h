// The COM run-time: apartments, activation, task memory.
#pragma once

#include "unknwn.h"

#include <cstdlib>

inline constexpr DWORD CLSCTX_INPROC_SERVER = 1;
inline constexpr DWORD CLSCTX_INPROC_HANDLER = 2;
inline constexpr DWORD COINIT_MULTITHREADED = 0;
inline constexpr DWORD COINIT_APARTMENTTHREADED = 2;
inline constexpr DWORD REGCLS_MULTIPLEUSE = 1;

extern "C"
{
    HRESULT WINAPI CoInitializeEx(LPVOID pReserved, DWORD dwCoInit);
    void WINAPI CoUninitialize();
    // Servers that can be unloaded are, at once: there is no keeping them for a while (dwUnloadDelay).
    void WINAPI CoFreeUnusedLibrariesEx(DWORD dwUnloadDelay, DWORD dwReserved);
    HRESULT WINAPI CoCreateInstance(REFCLSID rclsid, LPUNKNOWN pUnkOuter, DWORD dwClsContext, REFIID riid, LPVOID* ppv);
    HRESULT WINAPI CoRegisterClassObject(REFCLSID rclsid, LPUNKNOWN pUnk, DWORD dwClsContext, DWORD dwFlags, LPDWORD pdwRegister);
    HRESULT WINAPI CoRevokeClassObject(DWORD dwRegister);
    LPVOID WINAPI CoTaskMemAlloc(SIZE_T cb);
    void WINAPI CoTaskMemFree(LPVOID pv);

    // The entries that an in-process server exports.
    PLATFORM_EXPORT HRESULT WINAPI DllGetClassObject(REFCLSID rclsid, REFIID riid, LPVOID* ppv);
    PLATFORM_EXPORT HRESULT WINAPI DllCanUnloadNow();
}
