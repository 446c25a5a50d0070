// The platform functions that the product calls: which of them can be made to fail, and what their failing may change.
// One table for both builds; a new import of the module without a row here fails a test.
#pragma once

#include <string_view>

namespace tests
{
// What a caller of the module may see of the failure.
enum class FaultEffect
{
    Nothing,  // the result and the outputs are those of a call without it
    QuietLog, // as Nothing, and the trace log goes quiet until the module is loaded again
    Memory,   // the operation may run out of memory
    Answer,   // the operation may answer as if there were nothing
};

struct PlatformFunction
{
    std::string_view name;
    FaultEffect effect;
};

inline constexpr PlatformFunction platformFunctions[] = {
    {"GetUserDefaultLocaleName", FaultEffect::Answer},
    {"GetFileMUIPath", FaultEffect::Answer},
    {"LoadLibraryExW", FaultEffect::Answer},
    {"FreeLibrary", FaultEffect::Nothing},
    {"GetCurrentDirectoryW", FaultEffect::Answer},
    {"SetCurrentDirectoryW", FaultEffect::Answer},
    {"GetSystemDirectoryW", FaultEffect::Answer},
    {"DisableThreadLibraryCalls", FaultEffect::Nothing},
    {"GetModuleFileNameW", FaultEffect::Answer},
    {"_waccess", FaultEffect::Nothing},
    {"_wfopen", FaultEffect::QuietLog},
    {"CreateDirectoryW", FaultEffect::QuietLog},
    {"DeleteFileW", FaultEffect::Nothing},
    {"MoveFileW", FaultEffect::Nothing},
    {"CreateFileW", FaultEffect::QuietLog},
    {"CreateMutexW", FaultEffect::QuietLog},
    {"WaitForSingleObject", FaultEffect::QuietLog},
    {"ReleaseMutex", FaultEffect::Nothing},
    {"LockFileEx", FaultEffect::QuietLog},
    {"UnlockFileEx", FaultEffect::Nothing},
    {"GetFileSize", FaultEffect::QuietLog},
    {"SetFilePointer", FaultEffect::Nothing},
    {"WriteFile", FaultEffect::Nothing},
    {"CloseHandle", FaultEffect::Nothing},
    {"wcstombs", FaultEffect::Nothing},
    {"_putws", FaultEffect::Nothing},
    {"RegOpenKeyExW", FaultEffect::Answer},
    {"RegQueryValueExW", FaultEffect::Answer},
    {"RegCreateKeyExW", FaultEffect::Answer},
    {"RegSetValueExW", FaultEffect::Answer},
    {"RegDeleteKeyW", FaultEffect::Answer},
    {"RegCloseKey", FaultEffect::Nothing},
    {"CoInitializeEx", FaultEffect::Answer},
    {"CoCreateInstance", FaultEffect::Answer},
    {"CoTaskMemAlloc", FaultEffect::Memory},
    {"SysAllocString", FaultEffect::Memory},
    {"SysAllocStringLen", FaultEffect::Memory},
    {"VariantClear", FaultEffect::Nothing},
    {"UuidToStringW", FaultEffect::Answer},
    {"UuidFromStringW", FaultEffect::Answer},
    {"RpcStringFreeW", FaultEffect::Nothing},
    {"LoadStringW", FaultEffect::Answer},
    {"DialogBoxParamW", FaultEffect::Answer},
    {"EndDialog", FaultEffect::Answer},
    {"SetWindowTextW", FaultEffect::Nothing},
    {"CheckDlgButton", FaultEffect::Answer},
    {"IsDlgButtonChecked", FaultEffect::Answer},
    {"GetDlgItem", FaultEffect::Answer},
    {"EnableWindow", FaultEffect::Answer},
    {"ShowWindow", FaultEffect::Nothing},
    {"SendMessageW", FaultEffect::Answer},
    {"MessageBoxW", FaultEffect::Nothing},
    {"WlanOpenHandle", FaultEffect::Answer},
    {"WlanEnumInterfaces", FaultEffect::Answer},
    {"WlanGetProfile", FaultEffect::Answer},
    {"WlanSetProfile", FaultEffect::Nothing},
    {"WlanGetInterfaceCapability", FaultEffect::Answer},
    {"WlanIhvControl", FaultEffect::Answer},
};

// The document component's operations, under their names.
inline constexpr PlatformFunction documentOperations[] = {
    {"CreateDocument", FaultEffect::Answer},
    {"loadXML", FaultEffect::Answer},
    {"get_documentElement", FaultEffect::Answer},
    {"createElement", FaultEffect::Answer},
    {"selectSingleNode", FaultEffect::Answer},
    {"hasChildNodes", FaultEffect::Answer},
    {"get_firstChild", FaultEffect::Answer},
    {"get_nextSibling", FaultEffect::Answer},
    {"get_nodeType", FaultEffect::Answer},
    {"get_nodeValue", FaultEffect::Answer},
    {"put_text", FaultEffect::Answer},
    {"insertBefore", FaultEffect::Answer},
    {"removeChild", FaultEffect::Answer},
    {"appendChild", FaultEffect::Answer},
    {"setAttribute", FaultEffect::Answer},
    {"get_xml", FaultEffect::Answer},
};

// What the product calls and what has no way to fail, or no outcome that the product could act on.
struct UnfailingFunction
{
    std::string_view name;
    std::string_view reason;
};
inline constexpr UnfailingFunction unfailingFunctions[] = {
    {"CoTaskMemFree", "has no result"},
    {"CoUninitialize", "has no result"},
    {"GetCurrentThreadId", "cannot fail"},
    {"GetLastError", "cannot fail"},
    {"GetLocalTime", "has no result"},
    {"SysFreeString", "has no result"},
    {"SysStringLen", "cannot fail"},
    {"VariantInit", "has no result"},
    {"WlanCloseHandle", "gives back, and the result is not looked at"},
    {"WlanFreeMemory", "has no result"},
    {"_snwprintf", "formats with arguments of their own types; what it cannot place it cuts"},
    {"_vsnwprintf", "formats that were held against their arguments at compile time; what it cannot place it cuts"},
    {"fclose", "closes a file to which nothing was written"},
    {"fflush", "hands on the echo, and the result is not looked at"},
    {"malloc", "memory of the language's own allocation, which the allocation walk makes fail"},
    {"free", "has no result"},
    {"memchr", "cannot fail"},
    {"memcmp", "cannot fail"},
    {"memcpy", "cannot fail"},
    {"memmove", "cannot fail"},
    {"memset", "cannot fail"},
    {"strlen", "cannot fail"},
    {"wcslen", "cannot fail"},
};
} // namespace tests
