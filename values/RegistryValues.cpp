#include "values/RegistryValues.h"

#include "values/Unique.h"
#include "values/WideText.h"

#include <memory>
#include <new>

namespace
{
bool QueryValue(HKEY hRootKey, const WCHAR* szSubKey, const WCHAR* szValueName, BYTE* pbData, DWORD* pcbData)
{
    CUniqueKey key;
    return RegOpenKeyExW(hRootKey, szSubKey, 0, KEY_READ, key.Put()) == LSTATUS{} &&
           RegQueryValueExW(key.Get(), szValueName, nullptr, nullptr, pbData, pcbData) == LSTATUS{};
}
} // namespace

bool RegReadDword(HKEY hRootKey, const WCHAR* szSubKey, const WCHAR* szValueName, DWORD* pdwValue)
{
    // A copy, because a query that fails may already have written into its buffer.
    DWORD dwValue = *pdwValue;
    DWORD cbValue = sizeof(dwValue);
    if (!QueryValue(hRootKey, szSubKey, szValueName, reinterpret_cast<BYTE*>(&dwValue), &cbValue))
        return false;
    *pdwValue = dwValue;
    return true;
}

bool RegReadString(HKEY hRootKey, const WCHAR* szSubKey, const WCHAR* szValueName, WCHAR* szText, DWORD cchCapacity)
{
    // One code unit more than the query may fill: data without a terminator, or with half a code unit at its end, is
    // terminated by the zeros behind it.
    const std::unique_ptr<WCHAR[]> szRead(new (std::nothrow) WCHAR[std::size_t{cchCapacity} + 1]());
    DWORD cbText = cchCapacity * static_cast<DWORD>(sizeof(WCHAR));
    if (!szRead || !QueryValue(hRootKey, szSubKey, szValueName, reinterpret_cast<BYTE*>(szRead.get()), &cbText))
        return false;
    const CWideView text(szRead.get());
    if (text.size() >= cchCapacity)
        return false;
    szText[text.copy(szText, text.size())] = WCHAR{};
    return true;
}
