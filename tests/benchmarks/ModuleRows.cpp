// Loading and unloading, activation, the dialog, and a whole program.
#include "resources/resource.h"
#include "tests/benchmarks/Bare.h"
#include "tests/benchmarks/Extension.h"
#include "tests/benchmarks/Rows.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestProgram.h"

#include <wlanapi.h>

#include <memory>

namespace bench
{
namespace
{
const CWideString& ModuleFile()
{
    static const CWideString strFile = BesideProgram(OLESTR("korihvui.dll"));
    return strFile;
}
const CWideString& EmptyFile()
{
    static const CWideString strFile = BesideProgram(OLESTR("bench_empty.dll"));
    return strFile;
}
CUniqueLibrary Load(const CWideString& strFile)
{
    CUniqueLibrary library(LoadLibraryW(strFile.c_str()));
    Require(static_cast<bool>(library), "a module cannot be loaded");
    return library;
}

HMODULE FindLanguage(WCHAR* szLanguage)
{
    WCHAR szPath[MAX_PATH] = {};
    ULONG cchLanguage = LOCALE_NAME_MAX_LENGTH;
    ULONG cchPath = MAX_PATH;
    ULONGLONG ullEnumerator = 0;
    return GetFileMUIPath(0, OLESTR("korihvui.dll.mui"), szLanguage, &cchLanguage, szPath, &cchPath, &ullEnumerator)
               ? LoadLibraryExW(szPath, nullptr, 0)
               : nullptr;
}

// The user's language from the current directory, then from the system directory, then English.
CUniqueLibrary SearchLanguage()
{
    WCHAR szLanguage[LOCALE_NAME_MAX_LENGTH] = {};
    GetUserDefaultLocaleName(szLanguage, LOCALE_NAME_MAX_LENGTH);
    HMODULE hModule = FindLanguage(szLanguage);
    if (!hModule)
    {
        WCHAR szCurrent[MAX_PATH] = {};
        WCHAR szSystem[MAX_PATH + 1] = {};
        GetCurrentDirectoryW(MAX_PATH, szCurrent);
        GetSystemDirectoryW(szSystem, MAX_PATH + 1);
        SetCurrentDirectoryW(szSystem);
        hModule = FindLanguage(szLanguage);
        SetCurrentDirectoryW(szCurrent);
    }
    return CUniqueLibrary(hModule ? hModule : LoadLibraryExW(OLESTR("en-US\\korihvui.dll.mui"), nullptr, 0));
}

void ReadValue(const WCHAR* szKey, const WCHAR* szName)
{
    BYTE bytes[(MAX_PATH + 1) * sizeof(WCHAR)];
    DWORD cbValue = sizeof(bytes);
    CUniqueKey key;
    if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, szKey, 0, KEY_READ, key.Put()) == LSTATUS{})
        RegQueryValueExW(key.Get(), szName, nullptr, nullptr, bytes, &cbValue);
}

// Against a module with the same imports that does nothing, with the language search, the apartment, and the seven values that
// starting the log reads.
Sides LoadSides()
{
    Require(!GetModuleHandleW(OLESTR("korihvui.dll")), "the module is loaded already");
    const auto bare = []
    {
        const CUniqueLibrary empty = Load(EmptyFile());
        const CUniqueLibrary language = SearchLanguage();
        CoInitializeEx(nullptr, COINIT_MULTITHREADED);
        for (const WCHAR* szName : {OLESTR("LogPath"), OLESTR("EnableTraceLog")})
            ReadValue(OLESTR("Software\\Korvane\\Wavedesk\\Debug"), szName);
        for (const WCHAR* szName : {OLESTR("Any"), OLESTR("Ihvs"), OLESTR("Ihvui"), OLESTR("CCXLib"), OLESTR("IhvsMini")})
            ReadValue(OLESTR("Software\\Korvane\\Wavedesk\\Debug\\TraceLevels"), szName);
        CoUninitialize();
    };
    return {Timed([] { Load(ModuleFile()); }), Timed(bare)};
}

constexpr CLSID emptyClass = {0x0F6A4F5E, 0x52C1, 0x4C39, {0x8B, 0x0D, 0x6A, 0x3E, 0x8E, 0x1D, 0x7C, 0x24}};

// In a registry that is the measuring's own.
void RegisterClass(const WCHAR* szServerKey, const CWideString& strFile)
{
    CUniqueKey key;
    RegCreateKeyExW(HKEY_CLASSES_ROOT, szServerKey, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS, nullptr, key.Put(),
                    nullptr);
    const auto set = [&](const WCHAR* szName, const CWideString& strText)
    {
        RegSetValueExW(key.Get(), szName, 0, REG_SZ, reinterpret_cast<const BYTE*>(strText.c_str()),
                       static_cast<DWORD>((strText.size() + 1) * sizeof(WCHAR)));
    };
    set(nullptr, strFile);
    set(OLESTR("ThreadingModel"), OLESTR("Both"));
}

void Activate(const CLSID& classId, const IID& interfaceId)
{
    CComRef<IUnknown> object;
    Require(CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, interfaceId, object.PutVoid()) == S_OK, "activation failed");
}

// Against as many objects of an empty class, with or without the lines that each activation of the module's writes.
Sides ActivationSides(bool bLines)
{
    RegisterClass(OLESTR("CLSID\\{6C0E5D21-3B7A-4F19-9D42-7E1A8C3F5B60}\\InprocServer32"), ModuleFile());
    RegisterClass(OLESTR("CLSID\\{0F6A4F5E-52C1-4C39-8B0D-6A3E8E1D7C24}\\InprocServer32"), EmptyFile());
    const auto module = []
    {
        for (const auto& interfaceId : {IID_IDot11ExtUI, IID_ICCXExtUIKey, IID_ICCXExtUICon})
            Activate(CLSID_ExtUI, interfaceId);
    };
    const auto bare = [=]
    {
        for (const WCHAR* szLine :
             {OLESTR("-- IID_IDot11ExtUI\n"), OLESTR("-- IID_ICCXExtUIKey\n"), OLESTR("-- IID_ICCXExtUICon\n")})
        {
            Activate(emptyClass, IID_IUnknown);
            for (const WCHAR* szOf : {OLESTR("GetClassObject\n"), OLESTR("CFactory::CreateInstance\n"), szLine})
                if (bLines)
                    Line(szOf);
        }
    };
    return {Timed(module), Timed(bare)};
}

// A dialog that is opened and cancelled at once: its owner, which is never shown itself, finds a message as soon as the dialog
// would wait for its user.
constexpr UINT cancelOwned = 0x8000;

BOOL CALLBACK CancelIfOwned(HWND hwnd, LPARAM lParam)
{
    if (GetWindow(hwnd, GW_OWNER) != reinterpret_cast<HWND>(lParam))
        return TRUE;
    SendMessageW(hwnd, WM_COMMAND, IDCANCEL, 0);
    return FALSE;
}

INT_PTR CALLBACK OwnerProc(HWND hwnd, UINT uMessage, WPARAM, LPARAM lParam)
{
    if (uMessage == cancelOwned)
        EnumWindows(CancelIfOwned, reinterpret_cast<LPARAM>(hwnd));
    if (uMessage != WM_INITDIALOG)
        return FALSE;
    PostMessageW(hwnd, cancelOwned, 0, 0);
    (*reinterpret_cast<const std::function<void(HWND)>*>(lParam))(hwnd);
    EndDialog(hwnd, 0);
    return FALSE;
}

INT_PTR CALLBACK EmptyProc(HWND hwnd, UINT uMessage, WPARAM wParam, LPARAM)
{
    if (uMessage == WM_COMMAND && wParam == IDCANCEL)
        EndDialog(hwnd, 0);
    return FALSE;
}

// Without an adapter, so that there is no more to the service than two calls that it refuses; these are taken off.
Sides DialogSides()
{
    static Dot11ExtUIConnectionContext context{};
    const auto pExtension = std::make_shared<Extension>();
    const HINSTANCE hTemplates = GetModuleHandleW(OLESTR("korihvui.dll"));
    const auto timeOfOpening = [=](const std::function<void(HWND)>& open)
    {
        Seconds time{};
        const std::function<void(HWND)> timed = [&](HWND hwndOwner) { time = Timed([&] { open(hwndOwner); })(); };
        DialogBoxParamW(hTemplates, MAKEINTRESOURCEW(IDD_CONNECTION_SETTINGS), nullptr, OwnerProc,
                        reinterpret_cast<LPARAM>(&timed));
        return time;
    };
    const auto askService = []
    {
        const GUID adapter = {};
        LPWSTR szProfile = nullptr;
        WLAN_INTERFACE_CAPABILITY* pCapability = nullptr;
        static const HANDLE hClient = []
        {
            DWORD dwVersion = 0;
            HANDLE hOpened = nullptr;
            WlanOpenHandle(2, nullptr, &dwVersion, &hOpened);
            return hOpened;
        }();
        WlanGetProfile(hClient, &adapter, OLESTR(""), nullptr, &szProfile, nullptr, nullptr);
        WlanGetInterfaceCapability(hClient, &adapter, nullptr, &pCapability);
    };
    const auto module = [=]
    {
        BOOL bIsModified = TRUE;
        const auto show = [&](HWND hwndOwner)
        {
            const CBstr profile(OLESTR("<CCX><Rapido>true</Rapido></CCX>"));
            CBstr modified;
            pExtension->connection->Dot11ExtUIPropertyShowDialog(hwndOwner, profile.Get(), &context, modified.Put(),
                                                                 &bIsModified);
        };
        const Seconds time = timeOfOpening(show);
        Require(!bIsModified, "the dialog was not cancelled");
        return time - Timed(askService)();
    };
    const auto bare = [=]
    {
        return timeOfOpening(
            [=](HWND hwndOwner)
            { DialogBoxParamW(hTemplates, MAKEINTRESOURCEW(IDD_CONNECTION_SETTINGS), hwndOwner, EmptyProc, 0); });
    };
    return {module, bare};
}

Sides ShowSides()
{
    const auto run = [](const char* szProgram, const std::vector<std::string>& arguments)
    {
        const auto self = tests::ProgramFile();
        tests::CStartedProgram program(self.parent_path() / (szProgram + self.extension().string()), arguments);
        Require(program.ExitCode() == 0, szProgram);
    };
    const std::vector<std::string> show = {"show", SAMPLES_FOLDER "/warehouse-ccx.xml"};
    return {Timed([=] { run("korihost", show); }), Timed([=] { run("bench_empty_program", {}); })};
}
} // namespace

std::vector<Row> ModuleRows()
{
    return {{"loading and unloading / an empty module", 1.3, false, LoadSides},
            {"three objects / empty ones", 1.2, false, [] { return ActivationSides(false); }},
            {"three objects / empty ones and lines", 1.2, true, [] { return ActivationSides(true); }},
            {"dialog / an empty one", 1.3, false, DialogSides},
            {"korihost show / an empty program", 1.5, false, ShowSides}};
}
} // namespace bench
