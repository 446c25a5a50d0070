// The registry.
#pragma once

#include "windef.h"

using LSTATUS = LONG;
using REGSAM = DWORD;

inline const HKEY HKEY_CLASSES_ROOT = reinterpret_cast<HKEY>(static_cast<ULONG_PTR>(0x80000000u));
inline const HKEY HKEY_CURRENT_USER = reinterpret_cast<HKEY>(static_cast<ULONG_PTR>(0x80000001u));
inline const HKEY HKEY_LOCAL_MACHINE = reinterpret_cast<HKEY>(static_cast<ULONG_PTR>(0x80000002u));

inline constexpr REGSAM KEY_QUERY_VALUE = 0x0001;
inline constexpr REGSAM KEY_SET_VALUE = 0x0002;
inline constexpr REGSAM KEY_READ = 0x20019;
inline constexpr REGSAM KEY_ALL_ACCESS = 0xF003F;
inline constexpr DWORD REG_OPTION_NON_VOLATILE = 0;
inline constexpr DWORD REG_SZ = 1;
inline constexpr DWORD REG_BINARY = 3;
inline constexpr DWORD REG_DWORD = 4;

struct SECURITY_ATTRIBUTES;

extern "C"
{
    LSTATUS WINAPI RegOpenKeyExW(HKEY hKey, LPCWSTR szSubKey, DWORD dwOptions, REGSAM samDesired, PHKEY phkResult);
    LSTATUS WINAPI RegCreateKeyExW(HKEY hKey, LPCWSTR szSubKey, DWORD dwReserved, LPWSTR szClass, DWORD dwOptions,
                                   REGSAM samDesired, SECURITY_ATTRIBUTES* pAttributes, PHKEY phkResult, LPDWORD pdwDisposition);
    LSTATUS WINAPI RegQueryValueExW(HKEY hKey, LPCWSTR szValueName, LPDWORD pdwReserved, LPDWORD pdwType, LPBYTE pbData,
                                    LPDWORD pcbData);
    LSTATUS WINAPI RegSetValueExW(HKEY hKey, LPCWSTR szValueName, DWORD dwReserved, DWORD dwType, const BYTE* pbData,
                                  DWORD cbData);
    LSTATUS WINAPI RegDeleteKeyW(HKEY hKey, LPCWSTR szSubKey);
    LSTATUS WINAPI RegDeleteValueW(HKEY hKey, LPCWSTR szValueName);
    LSTATUS WINAPI RegCloseKey(HKEY hKey);
}
