#include "values/RegistryValues.h"

#include "values/Unique.h"
#include "values/WideText.h"

#include <algorithm>
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
    const bool bRead = QueryValue(hRootKey, szSubKey, szValueName, reinterpret_cast<BYTE*>(&dwValue), &cbValue);
    if (bRead)
        *pdwValue = dwValue;
    return bRead;
}

bool RegReadString(HKEY hRootKey, const WCHAR* szSubKey, const WCHAR* szValueName, WCHAR* szText, DWORD cchCapacity)
{
    // Data without a terminator, or with half a code unit at its end, is terminated by the zeros behind it.
    const std::unique_ptr<WCHAR[]> szRead(new (std::nothrow) WCHAR[cchCapacity]());
    DWORD cbText = cchCapacity * static_cast<DWORD>(sizeof(WCHAR));
    const bool bRead = szRead && QueryValue(hRootKey, szSubKey, szValueName, reinterpret_cast<BYTE*>(szRead.get()), &cbText) &&
                       CWideView(szRead.get(), cchCapacity).find(WCHAR{}) != CWideView::npos;
    if (bRead)
        std::copy_n(szRead.get(), cchCapacity, szText);
    return bRead;
}
