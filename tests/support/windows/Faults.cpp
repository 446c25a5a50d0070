// Failing on purpose, on the real platform: the plans are those of the stand-in, and import tables bring the module's
// calls, and those of product code in the test program itself, to them.
#include <windows.h>

#include "host/Library.h"
#include "tests/support/windows/Diversion.h"

#include <winternl.h>

#include <algorithm>
#include <cwchar>
#include <span>
#include <string_view>

namespace tests::faults
{
namespace
{
template <class Record>
Record* At(HMODULE hModule, ULONGLONG uOffset)
{
    return reinterpret_cast<Record*>(reinterpret_cast<BYTE*>(hModule) + uOffset);
}

// The service plans its faults itself, whoever calls it.
void DivertImports(HMODULE hModule, std::span<const PlatformFunction> functions)
{
    const auto* pHeaders = At<IMAGE_NT_HEADERS>(hModule, static_cast<DWORD>(At<IMAGE_DOS_HEADER>(hModule, 0)->e_lfanew));
    const auto& directory = pHeaders->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    if (directory.VirtualAddress == 0)
        return;
    for (auto* pModule = At<IMAGE_IMPORT_DESCRIPTOR>(hModule, directory.VirtualAddress); pModule->Name != 0; ++pModule)
    {
        auto* pName = At<IMAGE_THUNK_DATA>(hModule, pModule->OriginalFirstThunk);
        auto* ppSlot = At<void*>(hModule, pModule->FirstThunk);
        for (; pName->u1.AddressOfData != 0; ++pName, ++ppSlot)
        {
            if (IMAGE_SNAP_BY_ORDINAL(pName->u1.Ordinal))
                continue;
            const std::string_view name = At<IMAGE_IMPORT_BY_NAME>(hModule, pName->u1.AddressOfData)->Name;
            const auto function = std::ranges::find(functions, name, &PlatformFunction::szName);
            if (function != functions.end() && function->how != Fails::AtTheService)
                Divert(ppSlot, *function, name == "CoCreateInstance" ? reinterpret_cast<void*>(&CreateWatched) : nullptr);
        }
    }
}

struct LoadNotice
{
    ULONG ulFlags;
    const UNICODE_STRING* pFullName;
    const UNICODE_STRING* pBaseName;
    void* pBase;
    ULONG cbImage;
};
constexpr ULONG noticeOfLoad = 1;

// Called when a module's imports are bound and before it is entered, so that its entry can be made to fail as well.
void CALLBACK NoteLoad(ULONG ulReason, const LoadNotice* pNotice, void*)
{
    constexpr std::wstring_view module = L"korihvui.dll";
    const auto& name = *pNotice->pBaseName;
    if (ulReason != noticeOfLoad || name.Length != module.size() * sizeof(WCHAR) ||
        _wcsnicmp(name.Buffer, module.data(), module.size()) != 0)
        return;
    DivertImports(static_cast<HMODULE>(pNotice->pBase), PlatformFunctions());
    // In the test program there is no telling whose allocations they are.
    DivertImports(static_cast<HMODULE>(pNotice->pBase), {&allocation, 1});
}

[[maybe_unused]] const bool g_bWatching = []
{
    DivertImports(GetModuleHandleW(nullptr), PlatformFunctions());
    using Register = LONG NTAPI(ULONG, void(CALLBACK*)(ULONG, const LoadNotice*, void*), void*, void**);
    void* pCookie = nullptr;
    const auto pRegister = Export<Register*>(GetModuleHandleW(L"ntdll.dll"), "LdrRegisterDllNotification");
    return pRegister(0, NoteLoad, nullptr, &pCookie) >= 0;
}();
} // namespace
} // namespace tests::faults
