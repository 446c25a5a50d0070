#include "host/RegisteredModule.h"

#include "host/HostError.h"
#include "values/RegistryValues.h"

namespace
{
constexpr const WCHAR* serverKey = OLESTR("CLSID\\{6C0E5D21-3B7A-4F19-9D42-7E1A8C3F5B60}\\InprocServer32");
constexpr DWORD maxServerPathLength = 32767;
} // namespace

CWideString RegisteredModuleFile()
{
    CWideString strFile(maxServerPathLength, WCHAR{});
    RegReadString(HKEY_CLASSES_ROOT, serverKey, nullptr, strFile.data(), maxServerPathLength);
    if (strFile.front() == WCHAR{})
        throw CHostError("the extension's class is not registered");
    return strFile.c_str();
}
