#include "answers/AnswersKey.h"

#include <vector>

namespace answers
{
namespace
{
constexpr WCHAR szAnswersKey[] = OLESTR("Software\\PlatformAnswers");
constexpr DWORD cchNameCapacity = 256;

// Deletes what is below the key, then the key.
void DeleteTree(HKEY hParent, const WCHAR* szKey)
{
    CUniqueKey key;
    if (RegOpenKeyExW(hParent, szKey, 0, KEY_READ, key.Put()) != 0)
        return;
    // Listed first: deleting moves the others up.
    std::vector<CWideString> names;
    WCHAR szName[cchNameCapacity];
    for (DWORD dwIndex = 0;; ++dwIndex)
    {
        DWORD cchName = cchNameCapacity;
        if (RegEnumKeyExW(key.Get(), dwIndex, szName, &cchName, nullptr, nullptr, nullptr, nullptr) != 0)
            break;
        names.emplace_back(szName);
    }
    for (const auto& name : names)
        DeleteTree(key.Get(), name.c_str());
    key.Reset();
    RegDeleteKeyW(hParent, szKey);
}
} // namespace

LSTATUS CreateKey(HKEY hParent, const WCHAR* szKey, HKEY* phKey, DWORD* pdwDisposition)
{
    return RegCreateKeyExW(hParent, szKey, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS, nullptr, phKey, pdwDisposition);
}

LSTATUS SetBytes(HKEY hKey, const WCHAR* szName, DWORD dwType, std::string_view bytes)
{
    return RegSetValueExW(hKey, szName, 0, dwType, reinterpret_cast<const BYTE*>(bytes.data()), static_cast<DWORD>(bytes.size()));
}

CAnswersKey::CAnswersKey()
{
    DeleteTree(HKEY_CURRENT_USER, szAnswersKey);
    CreateKey(HKEY_CURRENT_USER, szAnswersKey, m_key.Put());
}

CAnswersKey::~CAnswersKey()
{
    m_key.Reset();
    DeleteTree(HKEY_CURRENT_USER, szAnswersKey);
}
} // namespace answers
