// The platform functions that the product calls and that can be made to fail. The lists serve both builds; an import of
// the module that is in none of them fails a test.
#pragma once

#include <string_view>
#include <vector>

namespace tests
{
// What may silence the trace log until the module is loaded again.
inline constexpr std::string_view quietingFunctions[] = {
    "_wfopen", "CreateDirectoryW", "CreateFileW", "CreateMutexW", "WaitForSingleObject", "LockFileEx", "GetFileSize",
};
// What may cost the log a line.
inline constexpr std::string_view lineFunctions[] = {
    "_waccess",       "DeleteFileW", "MoveFileW",   "ReleaseMutex", "UnlockFileEx",
    "SetFilePointer", "WriteFile",   "CloseHandle", "wcstombs",     "_putws",
};
inline constexpr std::string_view otherFunctions[] = {"GetUserDefaultLocaleName",
                                                      "GetFileMUIPath",
                                                      "LoadLibraryExW",
                                                      "FreeLibrary",
                                                      "GetCurrentDirectoryW",
                                                      "SetCurrentDirectoryW",
                                                      "GetSystemDirectoryW",
                                                      "DisableThreadLibraryCalls",
                                                      "GetModuleFileNameW",
                                                      "RegOpenKeyExW",
                                                      "RegQueryValueExW",
                                                      "RegCreateKeyExW",
                                                      "RegSetValueExW",
                                                      "RegDeleteKeyW",
                                                      "RegCloseKey",
                                                      "CoInitializeEx",
                                                      "CoCreateInstance",
                                                      "CoTaskMemAlloc",
                                                      "SysAllocString",
                                                      "SysAllocStringLen",
                                                      "VariantClear",
                                                      "UuidToStringW",
                                                      "UuidFromStringW",
                                                      "RpcStringFreeW",
                                                      "LoadStringW",
                                                      "DialogBoxParamW",
                                                      "EndDialog",
                                                      "SetWindowTextW",
                                                      "CheckDlgButton",
                                                      "IsDlgButtonChecked",
                                                      "GetDlgItem",
                                                      "EnableWindow",
                                                      "ShowWindow",
                                                      "SendMessageW",
                                                      "MessageBoxW",
                                                      "WlanOpenHandle",
                                                      "WlanEnumInterfaces",
                                                      "WlanGetProfile",
                                                      "WlanSetProfile",
                                                      "WlanGetInterfaceCapability",
                                                      "WlanIhvControl"};

// The document component's operations, under their names.
inline constexpr std::string_view documentOperations[] = {
    "CreateDocument", "loadXML",         "get_documentElement", "createElement", "selectSingleNode", "hasChildNodes",
    "get_firstChild", "get_nextSibling", "get_nodeType",        "get_nodeValue", "put_text",         "insertBefore",
    "removeChild",    "appendChild",     "setAttribute",        "get_xml"};

// All that the module imports of them.
inline std::vector<std::string_view> FailingImports()
{
    std::vector<std::string_view> all(std::begin(quietingFunctions), std::end(quietingFunctions));
    all.insert(all.end(), std::begin(lineFunctions), std::end(lineFunctions));
    all.insert(all.end(), std::begin(otherFunctions), std::end(otherFunctions));
    return all;
}
} // namespace tests
