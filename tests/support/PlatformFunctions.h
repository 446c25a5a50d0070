// The platform functions that the product calls and that can be made to fail. The table serves both builds; an import of the
// module that is not in it fails a test.
#pragma once

#include <windows.h>

#include <objbase.h>
#include <oleauto.h>
#include <rpc.h>

#include <vector>

namespace tests
{
// What the real platform's function returns when it is made to fail; the stand-in's own functions know that themselves.
enum class Fails
{
    WithNull,     // 0, a null pointer or FALSE, and the code as the last error
    WithMinusOne, // or another name of it, and the code as the last error
    WithCode,
    AtTheService, // which plans its faults itself
    InADocument,  // is an operation of the document component's, no import
};

// What else there is to a function.
inline constexpr unsigned givesBack = 1; // does so even when it fails
inline constexpr unsigned costsALine = 2;
inline constexpr unsigned quiets = 4; // may silence the trace log until the module is loaded again

struct PlatformFunction
{
    const char* szName;
    Fails how;
    DWORD dwCode = 0;
    unsigned uTraits = 0;
};

// The language's own allocation comes out of the module as a call of this.
inline constexpr PlatformFunction allocation = {"malloc", Fails::WithNull, ERROR_NOT_ENOUGH_MEMORY, costsALine};

// The functions that fail alike.
struct AlikeFunctions
{
    std::vector<const char*> names;
    Fails how;
    DWORD dwCode = 0;
    unsigned uTraits = 0;
};
inline const AlikeFunctions alikeFunctions[] = {
    {{"_wfopen", "CreateDirectoryW"}, Fails::WithNull, ERROR_ACCESS_DENIED, quiets},
    {{"CreateFileW"}, Fails::WithMinusOne, ERROR_ACCESS_DENIED, quiets},
    {{"CreateMutexW"}, Fails::WithNull, ERROR_NOT_ENOUGH_MEMORY, quiets},
    {{"WaitForSingleObject", "GetFileSize"}, Fails::WithMinusOne, ERROR_INVALID_HANDLE, quiets},
    {{"LockFileEx"}, Fails::WithNull, ERROR_LOCK_VIOLATION, quiets},
    {{"_waccess", "_putws", "wcstombs"}, Fails::WithMinusOne, ERROR_ACCESS_DENIED, costsALine},
    {{"DeleteFileW", "MoveFileW"}, Fails::WithNull, ERROR_ACCESS_DENIED, costsALine},
    {{"SetFilePointer"}, Fails::WithMinusOne, ERROR_INVALID_HANDLE, costsALine},
    {{"WriteFile"}, Fails::WithNull, ERROR_WRITE_FAULT, costsALine},
    {{"ReleaseMutex"}, Fails::WithNull, ERROR_NOT_OWNER, costsALine | givesBack},
    {{"UnlockFileEx"}, Fails::WithNull, ERROR_NOT_LOCKED, costsALine | givesBack},
    {{"CloseHandle"}, Fails::WithNull, ERROR_INVALID_HANDLE, costsALine | givesBack},
    {{"FreeLibrary"}, Fails::WithNull, ERROR_INVALID_HANDLE, givesBack},
    {{"DisableThreadLibraryCalls"}, Fails::WithNull, ERROR_INVALID_HANDLE},
    {{"GetModuleFileNameW", "LoadLibraryExW"}, Fails::WithNull, ERROR_MOD_NOT_FOUND},
    {{"GetFileMUIPath", "SetCurrentDirectoryW"}, Fails::WithNull, ERROR_FILE_NOT_FOUND},
    {{"GetCurrentDirectoryW", "GetSystemDirectoryW"}, Fails::WithNull, ERROR_ACCESS_DENIED},
    {{"GetUserDefaultLocaleName"}, Fails::WithNull, ERROR_INSUFFICIENT_BUFFER},
    {{"RegOpenKeyExW", "RegQueryValueExW", "RegCreateKeyExW", "RegSetValueExW", "RegDeleteKeyW"},
     Fails::WithCode,
     ERROR_ACCESS_DENIED},
    {{"RegCloseKey"}, Fails::WithCode, ERROR_ACCESS_DENIED, givesBack},
    {{"CoInitializeEx"}, Fails::WithCode, static_cast<DWORD>(E_OUTOFMEMORY)},
    {{"CoCreateInstance"}, Fails::WithCode, static_cast<DWORD>(REGDB_E_CLASSNOTREG)},
    {{"CoTaskMemAlloc", "SysAllocString", "SysAllocStringLen"}, Fails::WithNull, ERROR_NOT_ENOUGH_MEMORY},
    {{"VariantClear"}, Fails::WithCode, static_cast<DWORD>(DISP_E_BADVARTYPE), givesBack},
    {{"UuidToStringW"}, Fails::WithCode, RPC_S_OUT_OF_MEMORY},
    {{"UuidFromStringW"}, Fails::WithCode, RPC_S_INVALID_STRING_UUID},
    {{"RpcStringFreeW"}, Fails::WithCode, RPC_S_INVALID_ARG, givesBack},
    {{"LoadStringW"}, Fails::WithNull, ERROR_RESOURCE_NAME_NOT_FOUND},
    {{"DialogBoxParamW"}, Fails::WithMinusOne, ERROR_NOT_ENOUGH_MEMORY},
    {{"MessageBoxW"}, Fails::WithNull, ERROR_NOT_ENOUGH_MEMORY},
    {{"CheckDlgButton", "IsDlgButtonChecked", "GetDlgItem"}, Fails::WithNull, ERROR_CONTROL_ID_NOT_FOUND},
    {{"EndDialog", "SetWindowTextW", "EnableWindow", "ShowWindow", "SendMessageW"}, Fails::WithNull, ERROR_INVALID_WINDOW_HANDLE},
    {{"WlanOpenHandle", "WlanEnumInterfaces", "WlanGetProfile", "WlanSetProfile", "WlanGetInterfaceCapability", "WlanIhvControl"},
     Fails::AtTheService},
    {{"CreateDocument", "loadXML", "get_documentElement", "createElement", "selectSingleNode", "hasChildNodes", "get_firstChild",
      "get_nextSibling", "get_nodeType", "get_nodeValue", "put_text", "insertBefore", "removeChild", "appendChild",
      "setAttribute", "get_xml"},
     Fails::InADocument},
};

// Each for itself.
inline const std::vector<PlatformFunction>& PlatformFunctions()
{
    static const auto functions = []
    {
        std::vector<PlatformFunction> all;
        for (const auto& alike : alikeFunctions)
            for (const char* const szName : alike.names)
                all.push_back({szName, alike.how, alike.dwCode, alike.uTraits});
        return all;
    }();
    return functions;
}
} // namespace tests
