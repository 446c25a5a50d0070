#include "host/RegisteredModule.h"

#include "host/HostError.h"
#include "values/Unique.h"

namespace
{
constexpr const WCHAR* serverKey = OLESTR("CLSID\\{6C0E5D21-3B7A-4F19-9D42-7E1A8C3F5B60}\\InprocServer32");
constexpr DWORD maxServerPathLength = 32767;
} // namespace

CWideString RegisteredModuleFile()
{
    CUniqueKey key;
    CWideString strFile(maxServerPathLength, WCHAR{});
    DWORD cbFile = maxServerPathLength * sizeof(WCHAR);
    if (RegOpenKeyExW(HKEY_CLASSES_ROOT, serverKey, 0, KEY_READ, key.Put()) != ERROR_SUCCESS ||
        RegQueryValueExW(key.Get(), nullptr, nullptr, nullptr, reinterpret_cast<LPBYTE>(strFile.data()), &cbFile) !=
            ERROR_SUCCESS)
        throw CHostError("the extension's class is not registered");
    strFile.resize(cbFile / sizeof(WCHAR));
    strFile.resize(CWideView(strFile).find_last_not_of(WCHAR{}) + 1);
    return strFile;
}
