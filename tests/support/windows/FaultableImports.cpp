#include <windows.h>

#include <objbase.h>
#include <oleauto.h>
#include <rpc.h>

#include "tests/support/windows/FaultableImports.h"

#include "tests/support/windows/DocumentFaults.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <io.h>

namespace tests::faults
{
namespace
{
template <DWORD dwError>
using False = SaysNo<0, dwError>;
using InvalidHandleValue = SaysNo<INT_PTR{-1}, ERROR_ACCESS_DENIED>;
using RegistryCode = ReturnsCode<ERROR_ACCESS_DENIED>;
template <auto failure>
using RuntimeFailure = SaysNo<failure, ERROR_ACCESS_DENIED>;

// What becomes of a function that fails, by its name and the way in which it fails.
#define IMPORT(function, ...) FaultableImport::Of<#function, __VA_ARGS__, decltype(function)>()

std::vector<FaultableImport> MakeImports()
{
    return {
        IMPORT(GetUserDefaultLocaleName, False<ERROR_INSUFFICIENT_BUFFER>),
        IMPORT(GetFileMUIPath, False<ERROR_FILE_NOT_FOUND>),
        IMPORT(LoadLibraryExW, False<ERROR_MOD_NOT_FOUND>),
        IMPORT(FreeLibrary, GivesBack<False<ERROR_INVALID_HANDLE>>),
        IMPORT(GetCurrentDirectoryW, False<ERROR_ACCESS_DENIED>),
        IMPORT(SetCurrentDirectoryW, False<ERROR_FILE_NOT_FOUND>),
        IMPORT(GetSystemDirectoryW, False<ERROR_ACCESS_DENIED>),
        IMPORT(DisableThreadLibraryCalls, False<ERROR_INVALID_HANDLE>),
        IMPORT(GetModuleFileNameW, False<ERROR_MOD_NOT_FOUND>),
        IMPORT(_waccess, RuntimeFailure<-1>),
        IMPORT(_wfopen, RuntimeFailure<0>),
        IMPORT(CreateDirectoryW, False<ERROR_ACCESS_DENIED>),
        IMPORT(DeleteFileW, False<ERROR_ACCESS_DENIED>),
        IMPORT(MoveFileW, False<ERROR_ACCESS_DENIED>),
        IMPORT(CreateFileW, InvalidHandleValue),
        IMPORT(CreateMutexW, False<ERROR_NOT_ENOUGH_MEMORY>),
        IMPORT(WaitForSingleObject, FailsToWait),
        IMPORT(ReleaseMutex, GivesBack<False<ERROR_NOT_OWNER>>),
        IMPORT(LockFileEx, False<ERROR_LOCK_VIOLATION>),
        IMPORT(UnlockFileEx, GivesBack<False<ERROR_NOT_LOCKED>>),
        IMPORT(GetFileSize, SaysNo<INVALID_FILE_SIZE, ERROR_INVALID_HANDLE>),
        IMPORT(SetFilePointer, SaysNo<INVALID_SET_FILE_POINTER, ERROR_INVALID_HANDLE>),
        IMPORT(WriteFile, False<ERROR_WRITE_FAULT>),
        IMPORT(CloseHandle, GivesBack<False<ERROR_INVALID_HANDLE>>),
        IMPORT(wcstombs, RuntimeFailure<-1>),
        IMPORT(_putws, RuntimeFailure<0xFFFF>),
        IMPORT(RegOpenKeyExW, RegistryCode),
        IMPORT(RegQueryValueExW, RegistryCode),
        IMPORT(RegCreateKeyExW, RegistryCode),
        IMPORT(RegSetValueExW, RegistryCode),
        IMPORT(RegDeleteKeyW, RegistryCode),
        IMPORT(RegCloseKey, GivesBack<RegistryCode>),
        IMPORT(CoInitializeEx, ReturnsCode<E_OUTOFMEMORY>),
        IMPORT(CoCreateInstance, CreatesObjects),
        IMPORT(CoTaskMemAlloc, False<ERROR_NOT_ENOUGH_MEMORY>),
        IMPORT(SysAllocString, False<ERROR_NOT_ENOUGH_MEMORY>),
        IMPORT(SysAllocStringLen, False<ERROR_NOT_ENOUGH_MEMORY>),
        IMPORT(VariantClear, GivesBack<ReturnsCode<DISP_E_BADVARTYPE>>),
        IMPORT(UuidToStringW, ReturnsCode<RPC_S_OUT_OF_MEMORY>),
        IMPORT(UuidFromStringW, ReturnsCode<RPC_S_INVALID_STRING_UUID>),
        IMPORT(RpcStringFreeW, GivesBack<ReturnsCode<RPC_S_INVALID_ARG>>),
        IMPORT(LoadStringW, False<ERROR_RESOURCE_NAME_NOT_FOUND>),
        IMPORT(DialogBoxParamW, SaysNo<INT_PTR{-1}, ERROR_NOT_ENOUGH_MEMORY>),
        IMPORT(EndDialog, False<ERROR_INVALID_WINDOW_HANDLE>),
        IMPORT(SetWindowTextW, False<ERROR_INVALID_WINDOW_HANDLE>),
        IMPORT(CheckDlgButton, False<ERROR_CONTROL_ID_NOT_FOUND>),
        IMPORT(IsDlgButtonChecked, False<ERROR_CONTROL_ID_NOT_FOUND>),
        IMPORT(GetDlgItem, False<ERROR_CONTROL_ID_NOT_FOUND>),
        IMPORT(EnableWindow, False<ERROR_INVALID_WINDOW_HANDLE>),
        IMPORT(ShowWindow, False<ERROR_INVALID_WINDOW_HANDLE>),
        IMPORT(SendMessageW, False<ERROR_INVALID_WINDOW_HANDLE>),
        IMPORT(MessageBoxW, False<ERROR_NOT_ENOUGH_MEMORY>),
    };
}
#undef IMPORT

template <class Record>
const Record* At(HMODULE hModule, DWORD dwOffset)
{
    return reinterpret_cast<const Record*>(reinterpret_cast<const BYTE*>(hModule) + dwOffset);
}
} // namespace

const std::vector<FaultableImport>& FaultableImports()
{
    static const auto imports = MakeImports();
    return imports;
}

void Overwrite(void** ppSlot, void* pValue)
{
    DWORD dwProtection = 0;
    VirtualProtect(ppSlot, sizeof(*ppSlot), PAGE_READWRITE, &dwProtection);
    *ppSlot = pValue;
    VirtualProtect(ppSlot, sizeof(*ppSlot), dwProtection, &dwProtection);
}

void PatchImports(HMODULE hModule, const std::vector<FaultableImport>& imports)
{
    const auto* pHeaders = At<IMAGE_NT_HEADERS>(hModule, static_cast<DWORD>(At<IMAGE_DOS_HEADER>(hModule, 0)->e_lfanew));
    const auto& directory = pHeaders->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    if (directory.VirtualAddress == 0)
        return;
    for (auto* pModule = At<IMAGE_IMPORT_DESCRIPTOR>(hModule, directory.VirtualAddress); pModule->Name != 0; ++pModule)
    {
        auto* pName = At<IMAGE_THUNK_DATA>(hModule, pModule->OriginalFirstThunk);
        auto* pSlot = const_cast<IMAGE_THUNK_DATA*>(At<IMAGE_THUNK_DATA>(hModule, pModule->FirstThunk));
        for (; pName->u1.AddressOfData != 0; ++pName, ++pSlot)
        {
            if (IMAGE_SNAP_BY_ORDINAL(pName->u1.Ordinal))
                continue;
            const auto& name = At<IMAGE_IMPORT_BY_NAME>(hModule, static_cast<DWORD>(pName->u1.AddressOfData))->Name;
            const char* const szName = reinterpret_cast<const char*>(&name[0]);
            for (const auto& import : imports)
            {
                auto** const ppSlot = reinterpret_cast<void**>(&pSlot->u1.Function);
                if (std::strcmp(import.szName, szName) != 0 || *ppSlot == import.pThunk)
                    continue;
                *import.ppOriginal = *ppSlot;
                Overwrite(ppSlot, import.pThunk);
            }
        }
    }
}
} // namespace tests::faults
