// The in-process servers that activation loaded.
#pragma once

#include <objbase.h>

#include <string>

namespace platform
{
// Asks the server module at the path for the class object, loading it when it is not loaded yet.
// Fails with the loader's error as a result, CO_E_ERRORINDLL when the module has no class objects, and with what the
// module itself returns.
//
// A loaded server stays until CoFreeUnusedLibrariesEx: it usually keeps COM initialised from its own entry point to its own end,
// so that the last CoUninitialize, where the platform unloads servers, cannot come while it is loaded.
HRESULT GetServerClassObject(const std::u16string& path, REFCLSID rclsid, REFIID riid, void** ppv);
} // namespace platform
