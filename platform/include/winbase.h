// Kernel services: modules, directories, files and locks, the mutex, time, threads, resources.
#pragma once

#include "windef.h"

struct OVERLAPPED
{
    ULONG_PTR Internal;
    ULONG_PTR InternalHigh;
    DWORD Offset;
    DWORD OffsetHigh;
    HANDLE hEvent;
};
using LPOVERLAPPED = OVERLAPPED*;

struct SECURITY_ATTRIBUTES
{
    DWORD nLength;
    LPVOID lpSecurityDescriptor;
    BOOL bInheritHandle;
};
using LPSECURITY_ATTRIBUTES = SECURITY_ATTRIBUTES*;

struct SYSTEMTIME
{
    WORD wYear;
    WORD wMonth;
    WORD wDayOfWeek;
    WORD wDay;
    WORD wHour;
    WORD wMinute;
    WORD wSecond;
    WORD wMilliseconds;
};
using LPSYSTEMTIME = SYSTEMTIME*;

inline const HANDLE INVALID_HANDLE_VALUE = reinterpret_cast<HANDLE>(static_cast<INT_PTR>(-1));
#define INVALID_FILE_SIZE (static_cast<DWORD>(0xFFFFFFFFu))
#define INVALID_SET_FILE_POINTER (static_cast<DWORD>(0xFFFFFFFFu))
#define INVALID_FILE_ATTRIBUTES (static_cast<DWORD>(0xFFFFFFFFu))

inline constexpr DWORD DLL_PROCESS_DETACH = 0;
inline constexpr DWORD DLL_PROCESS_ATTACH = 1;

inline constexpr DWORD GENERIC_READ = 0x80000000u;
inline constexpr DWORD GENERIC_WRITE = 0x40000000u;
inline constexpr DWORD FILE_SHARE_READ = 1;
inline constexpr DWORD FILE_SHARE_WRITE = 2;
inline constexpr DWORD FILE_SHARE_DELETE = 4;
inline constexpr DWORD CREATE_NEW = 1;
inline constexpr DWORD CREATE_ALWAYS = 2;
inline constexpr DWORD OPEN_EXISTING = 3;
inline constexpr DWORD OPEN_ALWAYS = 4;
inline constexpr DWORD FILE_ATTRIBUTE_READONLY = 0x01;
inline constexpr DWORD FILE_ATTRIBUTE_DIRECTORY = 0x10;
inline constexpr DWORD FILE_ATTRIBUTE_NORMAL = 0x80;
inline constexpr DWORD FILE_BEGIN = 0;
inline constexpr DWORD FILE_CURRENT = 1;
inline constexpr DWORD FILE_END = 2;
inline constexpr DWORD LOCKFILE_FAIL_IMMEDIATELY = 1;
inline constexpr DWORD LOCKFILE_EXCLUSIVE_LOCK = 2;
inline constexpr DWORD MOVEFILE_REPLACE_EXISTING = 1;
inline constexpr DWORD INFINITE = 0xFFFFFFFFu;
inline constexpr DWORD WAIT_OBJECT_0 = 0;
inline constexpr DWORD WAIT_ABANDONED = 0x80;
inline constexpr DWORD WAIT_TIMEOUT = 258;
inline constexpr DWORD WAIT_FAILED = 0xFFFFFFFFu;
inline constexpr DWORD LOAD_LIBRARY_AS_DATAFILE = 2;

extern "C"
{
    // The entry point of a loadable module; LoadLibrary and FreeLibrary call it as the platform's loader does.
    PLATFORM_EXPORT BOOL WINAPI DllMain(HINSTANCE hInstance, DWORD dwReason, LPVOID pReserved);

    DWORD WINAPI GetLastError();
    void WINAPI SetLastError(DWORD dwError);

    HMODULE WINAPI LoadLibraryW(LPCWSTR szFileName);
    HMODULE WINAPI LoadLibraryExW(LPCWSTR szFileName, HANDLE hFile, DWORD dwFlags);
    BOOL WINAPI FreeLibrary(HMODULE hModule);
    HMODULE WINAPI GetModuleHandleW(LPCWSTR szModuleName);
    DWORD WINAPI GetModuleFileNameW(HMODULE hModule, LPWSTR szFileName, DWORD cchFileName);
    FARPROC WINAPI GetProcAddress(HMODULE hModule, LPCSTR szProcName);
    BOOL WINAPI DisableThreadLibraryCalls(HMODULE hModule);

    HRSRC WINAPI FindResourceW(HMODULE hModule, LPCWSTR szName, LPCWSTR szType);
    HGLOBAL WINAPI LoadResource(HMODULE hModule, HRSRC hResource);
    LPVOID WINAPI LockResource(HGLOBAL hResourceData);
    DWORD WINAPI SizeofResource(HMODULE hModule, HRSRC hResource);

    DWORD WINAPI GetCurrentDirectoryW(DWORD cchBuffer, LPWSTR szBuffer);
    BOOL WINAPI SetCurrentDirectoryW(LPCWSTR szPath);
    UINT WINAPI GetSystemDirectoryW(LPWSTR szBuffer, UINT cchBuffer);
    BOOL WINAPI CreateDirectoryW(LPCWSTR szPath, LPSECURITY_ATTRIBUTES pAttributes);
    BOOL WINAPI RemoveDirectoryW(LPCWSTR szPath);

    HANDLE WINAPI CreateFileW(LPCWSTR szFileName, DWORD dwAccess, DWORD dwShareMode, LPSECURITY_ATTRIBUTES pAttributes,
                              DWORD dwDisposition, DWORD dwFlagsAndAttributes, HANDLE hTemplate);
    BOOL WINAPI CloseHandle(HANDLE hObject);
    BOOL WINAPI LockFileEx(HANDLE hFile, DWORD dwFlags, DWORD dwReserved, DWORD cbLow, DWORD cbHigh, LPOVERLAPPED pOverlapped);
    BOOL WINAPI UnlockFileEx(HANDLE hFile, DWORD dwReserved, DWORD cbLow, DWORD cbHigh, LPOVERLAPPED pOverlapped);
    DWORD WINAPI GetFileSize(HANDLE hFile, LPDWORD pdwSizeHigh);
    DWORD WINAPI SetFilePointer(HANDLE hFile, LONG lDistance, PLONG plDistanceHigh, DWORD dwMoveMethod);
    BOOL WINAPI ReadFile(HANDLE hFile, LPVOID pBuffer, DWORD cbToRead, LPDWORD pcbRead, LPOVERLAPPED pOverlapped);
    BOOL WINAPI WriteFile(HANDLE hFile, LPCVOID pBuffer, DWORD cbToWrite, LPDWORD pcbWritten, LPOVERLAPPED pOverlapped);
    BOOL WINAPI FlushFileBuffers(HANDLE hFile);
    BOOL WINAPI DeleteFileW(LPCWSTR szFileName);
    BOOL WINAPI MoveFileW(LPCWSTR szExisting, LPCWSTR szNew);
    BOOL WINAPI MoveFileExW(LPCWSTR szExisting, LPCWSTR szNew, DWORD dwFlags);
    DWORD WINAPI GetFileAttributesW(LPCWSTR szFileName);

    HANDLE WINAPI CreateMutexW(LPSECURITY_ATTRIBUTES pAttributes, BOOL bInitialOwner, LPCWSTR szName);
    BOOL WINAPI ReleaseMutex(HANDLE hMutex);
    DWORD WINAPI WaitForSingleObject(HANDLE hObject, DWORD dwMilliseconds);

    void WINAPI GetLocalTime(LPSYSTEMTIME pTime);
    void WINAPI Sleep(DWORD dwMilliseconds);
    DWORD WINAPI GetCurrentThreadId();
    DWORD WINAPI GetCurrentProcessId();

    DWORD WINAPI GetEnvironmentVariableW(LPCWSTR szName, LPWSTR szBuffer, DWORD cchBuffer);
    BOOL WINAPI SetEnvironmentVariableW(LPCWSTR szName, LPCWSTR szValue);
}

inline LONG InterlockedIncrement(LONG volatile* plValue) noexcept
{
    return __atomic_add_fetch(plValue, 1, __ATOMIC_SEQ_CST);
}
inline LONG InterlockedDecrement(LONG volatile* plValue) noexcept
{
    return __atomic_sub_fetch(plValue, 1, __ATOMIC_SEQ_CST);
}
