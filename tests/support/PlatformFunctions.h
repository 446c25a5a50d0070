// The platform functions that the product calls and that can be made to fail. The table serves both builds; an import of the
// module that is not in it fails a test.
#pragma once

#include <windows.h>

#include <objbase.h>
#include <oleauto.h>
#include <rpc.h>

#include <string_view>

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

inline constexpr PlatformFunction platformFunctions[] = {
    {"_wfopen", Fails::WithNull, ERROR_ACCESS_DENIED, quiets},
    {"CreateDirectoryW", Fails::WithNull, ERROR_ACCESS_DENIED, quiets},
    {"CreateFileW", Fails::WithMinusOne, ERROR_ACCESS_DENIED, quiets},
    {"CreateMutexW", Fails::WithNull, ERROR_NOT_ENOUGH_MEMORY, quiets},
    {"WaitForSingleObject", Fails::WithMinusOne, ERROR_INVALID_HANDLE, quiets},
    {"LockFileEx", Fails::WithNull, ERROR_LOCK_VIOLATION, quiets},
    {"GetFileSize", Fails::WithMinusOne, ERROR_INVALID_HANDLE, quiets},
    {"_waccess", Fails::WithMinusOne, ERROR_ACCESS_DENIED, costsALine},
    {"DeleteFileW", Fails::WithNull, ERROR_ACCESS_DENIED, costsALine},
    {"MoveFileW", Fails::WithNull, ERROR_ACCESS_DENIED, costsALine},
    {"ReleaseMutex", Fails::WithNull, ERROR_NOT_OWNER, costsALine | givesBack},
    {"UnlockFileEx", Fails::WithNull, ERROR_NOT_LOCKED, costsALine | givesBack},
    {"SetFilePointer", Fails::WithMinusOne, ERROR_INVALID_HANDLE, costsALine},
    {"WriteFile", Fails::WithNull, ERROR_WRITE_FAULT, costsALine},
    {"CloseHandle", Fails::WithNull, ERROR_INVALID_HANDLE, costsALine | givesBack},
    {"wcstombs", Fails::WithMinusOne, ERROR_ACCESS_DENIED, costsALine},
    {"_putws", Fails::WithMinusOne, ERROR_ACCESS_DENIED, costsALine},
    {"GetUserDefaultLocaleName", Fails::WithNull, ERROR_INSUFFICIENT_BUFFER},
    {"GetFileMUIPath", Fails::WithNull, ERROR_FILE_NOT_FOUND},
    {"LoadLibraryExW", Fails::WithNull, ERROR_MOD_NOT_FOUND},
    {"FreeLibrary", Fails::WithNull, ERROR_INVALID_HANDLE, givesBack},
    {"GetCurrentDirectoryW", Fails::WithNull, ERROR_ACCESS_DENIED},
    {"SetCurrentDirectoryW", Fails::WithNull, ERROR_FILE_NOT_FOUND},
    {"GetSystemDirectoryW", Fails::WithNull, ERROR_ACCESS_DENIED},
    {"DisableThreadLibraryCalls", Fails::WithNull, ERROR_INVALID_HANDLE},
    {"GetModuleFileNameW", Fails::WithNull, ERROR_MOD_NOT_FOUND},
    {"RegOpenKeyExW", Fails::WithCode, ERROR_ACCESS_DENIED},
    {"RegQueryValueExW", Fails::WithCode, ERROR_ACCESS_DENIED},
    {"RegCreateKeyExW", Fails::WithCode, ERROR_ACCESS_DENIED},
    {"RegSetValueExW", Fails::WithCode, ERROR_ACCESS_DENIED},
    {"RegDeleteKeyW", Fails::WithCode, ERROR_ACCESS_DENIED},
    {"RegCloseKey", Fails::WithCode, ERROR_ACCESS_DENIED, givesBack},
    {"CoInitializeEx", Fails::WithCode, static_cast<DWORD>(E_OUTOFMEMORY)},
    {"CoCreateInstance", Fails::WithCode, static_cast<DWORD>(REGDB_E_CLASSNOTREG)},
    {"CoTaskMemAlloc", Fails::WithNull, ERROR_NOT_ENOUGH_MEMORY},
    {"SysAllocString", Fails::WithNull, ERROR_NOT_ENOUGH_MEMORY},
    {"SysAllocStringLen", Fails::WithNull, ERROR_NOT_ENOUGH_MEMORY},
    {"VariantClear", Fails::WithCode, static_cast<DWORD>(DISP_E_BADVARTYPE), givesBack},
    {"UuidToStringW", Fails::WithCode, RPC_S_OUT_OF_MEMORY},
    {"UuidFromStringW", Fails::WithCode, RPC_S_INVALID_STRING_UUID},
    {"RpcStringFreeW", Fails::WithCode, RPC_S_INVALID_ARG, givesBack},
    {"LoadStringW", Fails::WithNull, ERROR_RESOURCE_NAME_NOT_FOUND},
    {"DialogBoxParamW", Fails::WithMinusOne, ERROR_NOT_ENOUGH_MEMORY},
    {"EndDialog", Fails::WithNull, ERROR_INVALID_WINDOW_HANDLE},
    {"SetWindowTextW", Fails::WithNull, ERROR_INVALID_WINDOW_HANDLE},
    {"CheckDlgButton", Fails::WithNull, ERROR_CONTROL_ID_NOT_FOUND},
    {"IsDlgButtonChecked", Fails::WithNull, ERROR_CONTROL_ID_NOT_FOUND},
    {"GetDlgItem", Fails::WithNull, ERROR_CONTROL_ID_NOT_FOUND},
    {"EnableWindow", Fails::WithNull, ERROR_INVALID_WINDOW_HANDLE},
    {"ShowWindow", Fails::WithNull, ERROR_INVALID_WINDOW_HANDLE},
    {"SendMessageW", Fails::WithNull, ERROR_INVALID_WINDOW_HANDLE},
    {"MessageBoxW", Fails::WithNull, ERROR_NOT_ENOUGH_MEMORY},
    {"WlanOpenHandle", Fails::AtTheService},
    {"WlanEnumInterfaces", Fails::AtTheService},
    {"WlanGetProfile", Fails::AtTheService},
    {"WlanSetProfile", Fails::AtTheService},
    {"WlanGetInterfaceCapability", Fails::AtTheService},
    {"WlanIhvControl", Fails::AtTheService},
    {"CreateDocument", Fails::InADocument},
    {"loadXML", Fails::InADocument},
    {"get_documentElement", Fails::InADocument},
    {"createElement", Fails::InADocument},
    {"selectSingleNode", Fails::InADocument},
    {"hasChildNodes", Fails::InADocument},
    {"get_firstChild", Fails::InADocument},
    {"get_nextSibling", Fails::InADocument},
    {"get_nodeType", Fails::InADocument},
    {"get_nodeValue", Fails::InADocument},
    {"put_text", Fails::InADocument},
    {"insertBefore", Fails::InADocument},
    {"removeChild", Fails::InADocument},
    {"appendChild", Fails::InADocument},
    {"setAttribute", Fails::InADocument},
    {"get_xml", Fails::InADocument},
};
} // namespace tests
