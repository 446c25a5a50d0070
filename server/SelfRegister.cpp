#include "server/SelfRegister.h"

#include "com/ModuleState.h"
#include "trace/IhvuiTrace.h"
#include "values/Unique.h"
#include "values/WideText.h"

#include <iterator>

namespace
{
constexpr const WCHAR* szClassesKey = OLESTR("CLSID");
constexpr const WCHAR* szClassKey = OLESTR("{6C0E5D21-3B7A-4F19-9D42-7E1A8C3F5B60}");
constexpr const WCHAR* szServerKey = OLESTR("InprocServer32");
constexpr const WCHAR* szDescription = OLESTR("Korvane WLAN IHV Extension UI");

bool Succeeded(LSTATUS status)
{
    return status == LSTATUS{};
}

bool CreateKey(HKEY hParent, const WCHAR* szName, CUniqueKey& key)
{
    return Succeeded(
        RegCreateKeyExW(hParent, szName, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS, nullptr, key.Put(), nullptr));
}

bool SetText(HKEY hKey, const WCHAR* szValueName, CWideView text)
{
    // The platform's strings are stored with their terminator.
    const auto cbText = static_cast<DWORD>((text.size() + 1) * sizeof(WCHAR));
    return Succeeded(RegSetValueExW(hKey, szValueName, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.data()), cbText));
}

bool Register(HKEY hClassKey)
{
    CUniqueKey serverKey;
    if (!SetText(hClassKey, OLESTR(""), szDescription) || !CreateKey(hClassKey, szServerKey, serverKey))
        return false;
    WCHAR szPath[MAX_PATH + 1] = {};
    const DWORD cchPath = GetModuleFileNameW(ModuleState::ModuleHandle(), szPath, static_cast<DWORD>(std::size(szPath)));
    // A path that did not fit was cut, and would register another file or none.
    if (cchPath == 0 || cchPath >= std::size(szPath))
        return false;
    return SetText(serverKey.Get(), OLESTR(""), szPath) && SetText(serverKey.Get(), OLESTR("ThreadingModel"), OLESTR("Both"));
}

bool Unregister(HKEY hClassesKey, CUniqueKey& classKey)
{
    if (!Succeeded(RegDeleteKeyW(classKey.Get(), szServerKey)))
        return false;
    classKey.Reset();
    return Succeeded(RegDeleteKeyW(hClassesKey, szClassKey));
}
} // namespace

HRESULT SelfRegister(bool bUnregister)
{
    IhvuiTrace(traceLevelInfo, OLESTR("SelfRegister( bUnregister = %s )\n"), bUnregister ? OLESTR("true") : OLESTR("false"));
    CUniqueKey classesKey;
    if (!Succeeded(RegOpenKeyExW(HKEY_CLASSES_ROOT, szClassesKey, 0, KEY_ALL_ACCESS, classesKey.Put())))
        return S_FALSE;
    IhvuiTrace(traceLevelInfo, OLESTR("-- opened key: %s, hkey = %p \n"), szClassesKey, classesKey.Get());

    CUniqueKey classKey;
    if (!CreateKey(classesKey.Get(), szClassKey, classKey))
        return S_FALSE;
    IhvuiTrace(traceLevelInfo, OLESTR("-- created key: %s\n"), szClassKey);

    if (bUnregister)
    {
        IhvuiTrace(traceLevelInfo, OLESTR("-- unregistering...\n"));
        return Unregister(classesKey.Get(), classKey) ? S_OK : S_FALSE;
    }
    IhvuiTrace(traceLevelInfo, OLESTR("-- registering...\n"));
    return Register(classKey.Get()) ? S_OK : S_FALSE;
}
