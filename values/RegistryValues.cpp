#include "values/RegistryValues.h"

#include "values/Unique.h"

#include <algorithm>
#include <vector>

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
    std::vector<WCHAR> text(std::size_t{cchCapacity} + 1);
    DWORD cbText = cchCapacity * static_cast<DWORD>(sizeof(WCHAR));
    if (!QueryValue(hRootKey, szSubKey, szValueName, reinterpret_cast<BYTE*>(text.data()), &cbText))
        return false;
    const auto terminator = std::find(text.begin(), text.end(), WCHAR{});
    if (terminator - text.begin() >= static_cast<std::ptrdiff_t>(cchCapacity))
        return false;
    std::copy(text.begin(), terminator + 1, szText);
    return true;
}
