// Failing on purpose, on the real platform: the plans are those of the stand-in, and import tables bring the module's
// calls, and those of product code in the test program itself, to them.
#include <windows.h>

#include "tests/support/windows/FaultableImports.h"

#include <winternl.h>

#include <cwchar>
#include <string_view>

namespace tests::faults
{
namespace
{
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
    PatchImports(static_cast<HMODULE>(pNotice->pBase), FaultableImports());
    PatchImports(static_cast<HMODULE>(pNotice->pBase), AllocationImports());
}

[[maybe_unused]] const bool g_bWatching = []
{
    PatchImports(GetModuleHandleW(nullptr), FaultableImports());
    using Register = LONG NTAPI(ULONG, void(CALLBACK*)(ULONG, const LoadNotice*, void*), void*, void**);
    void* pCookie = nullptr;
    const auto pRegister = reinterpret_cast<Register*>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "LdrRegisterDllNotification")));
    return pRegister && pRegister(0, NoteLoad, nullptr, &pCookie) >= 0;
}();
} // namespace
} // namespace tests::faults
