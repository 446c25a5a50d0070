// Base types with the widths they have on the platform (a LONG is 32 bits wide also where the compiler's long is not).
#pragma once

#include <cstddef>
#include <cstdint>

#define WINAPI
#define CALLBACK
#define STDMETHODCALLTYPE
#define PLATFORM_EXPORT __attribute__((visibility("default")))

#define VOID void
#define TRUE 1
#define FALSE 0
#define MAX_PATH 260

using BOOL = int;
using LPBOOL = BOOL*;
using CHAR = char;
using LPSTR = CHAR*;
using LPCSTR = const CHAR*;
using BOOLEAN = unsigned char;
using BYTE = unsigned char;
using LPBYTE = BYTE*;
using SHORT = std::int16_t;
using WORD = std::uint16_t;
using USHORT = std::uint16_t;
using UINT = unsigned int;
using LONG = std::int32_t;
using PLONG = LONG*;
using ULONG = std::uint32_t;
using PULONG = ULONG*;
using DWORD = std::uint32_t;
using PDWORD = DWORD*;
using LPDWORD = DWORD*;
using ULONGLONG = std::uint64_t;
using PULONGLONG = ULONGLONG*;
using INT_PTR = std::intptr_t;
using UINT_PTR = std::uintptr_t;
using LONG_PTR = std::intptr_t;
using ULONG_PTR = std::uintptr_t;
using DWORD_PTR = std::uintptr_t;
using SIZE_T = std::size_t;
using PVOID = void*;
using LPVOID = void*;
using LPCVOID = const void*;

using WCHAR = char16_t;
using LPWSTR = WCHAR*;
using PWSTR = WCHAR*;
using LPCWSTR = const WCHAR*;
using PCWSTR = const WCHAR*;
using OLECHAR = WCHAR;
#define OLESTR(text) u##text

using WPARAM = UINT_PTR;
using LPARAM = LONG_PTR;
using LRESULT = LONG_PTR;

using HANDLE = void*;
using PHANDLE = HANDLE*;

// Distinct handle types, so that a window never passes for a module.
#define DECLARE_HANDLE(name)                                                                                                     \
    struct name##__;                                                                                                             \
    using name = name##__*
DECLARE_HANDLE(HINSTANCE);
using HMODULE = HINSTANCE;
DECLARE_HANDLE(HWND);
DECLARE_HANDLE(HKEY);
using PHKEY = HKEY*;
DECLARE_HANDLE(HRSRC);
using HGLOBAL = HANDLE;
using FARPROC = INT_PTR (*)();

#define MAKEINTRESOURCEW(id) (reinterpret_cast<LPWSTR>(static_cast<ULONG_PTR>(static_cast<WORD>(id))))
#define IS_INTRESOURCE(name) ((reinterpret_cast<ULONG_PTR>(name) >> 16) == 0)
#define LOWORD(l) (static_cast<WORD>(static_cast<DWORD_PTR>(l) & 0xFFFFu))
#define HIWORD(l) (static_cast<WORD>((static_cast<DWORD_PTR>(l) >> 16) & 0xFFFFu))
#define MAKEWPARAM(low, high)                                                                                                    \
    (static_cast<WPARAM>(static_cast<DWORD>((low)&0xFFFFu) | (static_cast<DWORD>((high)&0xFFFFu) << 16)))

#define RT_DIALOG MAKEINTRESOURCEW(5)
#define RT_STRING MAKEINTRESOURCEW(6)

struct GUID
{
    std::uint32_t Data1;
    std::uint16_t Data2;
    std::uint16_t Data3;
    std::uint8_t Data4[8];
};
using IID = GUID;
using CLSID = GUID;
using UUID = GUID;
#define REFGUID const GUID&
#define REFIID const IID&
#define REFCLSID const CLSID&

inline bool operator==(const GUID& left, const GUID& right) noexcept
{
    return __builtin_memcmp(&left, &right, sizeof(GUID)) == 0;
}
inline BOOL IsEqualGUID(REFGUID left, REFGUID right) noexcept
{
    return left == right ? TRUE : FALSE;
}
#define IsEqualCLSID(left, right) IsEqualGUID(left, right)
