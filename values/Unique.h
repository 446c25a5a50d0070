// One owner for everything that has to be closed: a closer names the handle type, its empty value and how it is closed.
#pragma once

#include <windows.h>

#include <utility>

template <class Closer>
class CUnique
{
public:
    using Handle = typename Closer::Handle;

    CUnique() = default;
    explicit CUnique(Handle handle) : m_handle(handle)
    {
    }
    CUnique(CUnique&& other) noexcept : m_handle(other.Detach())
    {
    }
    CUnique& operator=(CUnique&& other) noexcept
    {
        std::swap(m_handle, other.m_handle);
        return *this;
    }
    ~CUnique()
    {
        Reset();
    }

    explicit operator bool() const
    {
        return m_handle != Closer::Empty();
    }
    Handle Get() const
    {
        return m_handle;
    }
    // For out parameters: closes what is held and takes what the call stores.
    Handle* Put()
    {
        Reset();
        return &m_handle;
    }
    Handle Detach()
    {
        return std::exchange(m_handle, Closer::Empty());
    }
    void Reset(Handle handle = Closer::Empty())
    {
        const Handle old = std::exchange(m_handle, handle);
        if (old != Closer::Empty())
            Closer::Close(old);
    }

private:
    Handle m_handle = Closer::Empty();
};

struct CRegistryKeyCloser
{
    using Handle = HKEY;
    static HKEY Empty()
    {
        return nullptr;
    }
    static void Close(HKEY hKey)
    {
        RegCloseKey(hKey);
    }
};
using CUniqueKey = CUnique<CRegistryKeyCloser>;

struct CLibraryCloser
{
    using Handle = HMODULE;
    static HMODULE Empty()
    {
        return nullptr;
    }
    static void Close(HMODULE hModule)
    {
        FreeLibrary(hModule);
    }
};
using CUniqueLibrary = CUnique<CLibraryCloser>;

struct CFileCloser
{
    using Handle = HANDLE;
    static HANDLE Empty()
    {
        return INVALID_HANDLE_VALUE;
    }
    static void Close(HANDLE hFile)
    {
        CloseHandle(hFile);
    }
};
using CUniqueFile = CUnique<CFileCloser>;

struct CMutexCloser
{
    using Handle = HANDLE;
    static HANDLE Empty()
    {
        return nullptr;
    }
    static void Close(HANDLE hMutex)
    {
        CloseHandle(hMutex);
    }
};
using CUniqueMutex = CUnique<CMutexCloser>;
