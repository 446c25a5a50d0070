// Every platform function that the module imports has its row among those that are made to fail, or a reason for having
// none.
#include "tests/support/ModuleUnderTest.h"
#include "tests/support/PlatformFunctions.h"
#include "tests/support/TestProgram.h"
#include "values/Unique.h"
#include "values/Utf8Text.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <set>
#include <sstream>
#include <string>

namespace
{
// What has no way to fail or no outcome that the product could act on, and what the compiler's run-time in the module calls
// for itself, by what it does with it.
struct OtherImports
{
    const char* szUse;
    const char* szNames;
};
constexpr OtherImports otherImports[] = {
    {"has no result", "CoTaskMemFree CoUninitialize GetLocalTime SysFreeString VariantInit WlanFreeMemory free"},
    {"cannot fail", "GetCurrentThreadId GetLastError SysStringLen memchr memcmp memcpy memmove memset strlen wcslen"},
    {"gives back, or hands on the echo, and the result is not looked at", "WlanCloseHandle fclose fflush"},
    {"formats with arguments that were held against it at compile time; what it cannot place it cuts", "_snwprintf _vsnwprintf"},
    {"serves the language's own allocation, which the allocation walk makes fail", tests::allocation.szName},
    {"throws and unwinds",
     "RaiseException RtlCaptureContext RtlLookupFunctionEntry RtlUnwindEx RtlVirtualUnwind __C_specific_handler "
     "AddVectoredExceptionHandler RemoveVectoredExceptionHandler abort signal"},
    {"guards static objects, by its threads library",
     "CreateEventA CreateSemaphoreA DeleteCriticalSection DuplicateHandle EnterCriticalSection GetCurrentProcess "
     "GetCurrentProcessId GetCurrentThread GetHandleInformation GetProcessAffinityMask GetSystemTimeAsFileTime "
     "GetThreadContext GetThreadPriority GetTickCount64 InitializeCriticalSection IsDebuggerPresent LeaveCriticalSection "
     "OpenProcess OutputDebugStringA ReleaseSemaphore ResetEvent ResumeThread SetEvent SetLastError SetProcessAffinityMask "
     "SetThreadContext SetThreadPriority Sleep SuspendThread TlsAlloc TlsGetValue TlsSetValue TryEnterCriticalSection "
     "WaitForMultipleObjects _beginthreadex _endthreadex _setjmp longjmp _ultoa _strdup printf realloc"},
    {"starts and ends the module",
     "GetModuleHandleW GetProcAddress LoadLibraryW VirtualProtect VirtualQuery _amsg_exit _initterm _lock _unlock "
     "__iob_func calloc exit fprintf vfprintf fwrite fputc fputs"},
    {"reports what was thrown and not caught, and names of types",
     "strcmp strncmp strerror _errno _read _close localeconv IsDBCSLeadByteEx MultiByteToWideChar WideCharToMultiByte "
     "___lc_codepage_func ___mb_cur_max_func"},
};

TEST(Imports, EachHasItsRow)
{
    std::ifstream lines(tests::ProgramFile().parent_path() / "korihvui.imports");
    ASSERT_TRUE(lines) << "the list of imports is missing beside the module";

    std::set<std::string> failing;
    for (const auto& function : tests::PlatformFunctions())
        if (function.how != tests::Fails::InADocument)
            failing.insert(function.szName);
    std::set<std::string> others;
    for (const auto& imports : otherImports)
    {
        std::istringstream names(imports.szNames);
        others.insert(std::istream_iterator<std::string>(names), {});
    }
    for (std::string library, name; lines >> library >> name;)
        EXPECT_TRUE(failing.erase(name) || others.contains(name)) << library << " " << name << " is imported and has no row";
    EXPECT_EQ(std::set<std::string>{}, failing) << "have rows and are not imported";
}

TEST(Imports, TheServiceIsTheSystemsForWhoNamesNoOther)
{
    // As COM loads a server: with the server's own folder in the search.
    const CUniqueLibrary module(LoadLibraryExW(tests::PlatformNameOf(tests::BuildFolder() / "korihvui.dll").c_str(), nullptr,
                                               LOAD_WITH_ALTERED_SEARCH_PATH));
    WCHAR szService[MAX_PATH] = {}, szSystem[MAX_PATH] = {};
    GetModuleFileNameW(GetModuleHandleW(L"wlanapi.dll"), szService, MAX_PATH);
    GetSystemDirectoryW(szSystem, MAX_PATH);
    EXPECT_TRUE(std::filesystem::equivalent(std::filesystem::path(szService).parent_path(), szSystem)) << Utf8Of(szService);
}
} // namespace
