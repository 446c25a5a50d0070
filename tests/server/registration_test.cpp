// What registration writes and removes, step by step, and how far it gets when a step fails.
#include "platform/testing/Faults.h"
#include "tests/support/ModuleUnderTest.h"
#include "tests/support/Pattern.h"
#include "tests/support/TestProgram.h"
#include "tests/support/TraceLog.h"

namespace
{
namespace fs = std::filesystem;
using Lines = std::vector<std::string>;

constexpr const WCHAR* szClassKey = OLESTR("CLSID\\{6C0E5D21-3B7A-4F19-9D42-7E1A8C3F5B60}");
constexpr const WCHAR* szServerKey = OLESTR("CLSID\\{6C0E5D21-3B7A-4F19-9D42-7E1A8C3F5B60}\\InprocServer32");

void RemoveKeys()
{
    RegDeleteKeyW(HKEY_CLASSES_ROOT, szServerKey);
    RegDeleteKeyW(HKEY_CLASSES_ROOT, szClassKey);
}

// A text value with its terminator as "$".
std::string ValueOf(const CUniqueKey& key, const WCHAR* szName)
{
    WCHAR szValue[MAX_PATH + 2] = {};
    DWORD dwType = 0;
    DWORD cbValue = sizeof(szValue);
    if (RegQueryValueExW(key.Get(), szName, nullptr, &dwType, reinterpret_cast<BYTE*>(szValue), &cbValue) != LSTATUS{})
        return "";
    EXPECT_EQ(DWORD{REG_SZ}, dwType);
    std::string text = tests::Narrow({szValue, cbValue / sizeof(WCHAR)});
    std::replace(text.begin(), text.end(), '\0', '$');
    return " " + tests::Narrow(szName) + "=" + text;
}

// Everything that is there of the registration.
std::string Registered()
{
    std::string all;
    for (const auto& [name, szKey] : {std::pair("class", szClassKey), {"server", szServerKey}})
    {
        CUniqueKey key;
        if (RegOpenKeyExW(HKEY_CLASSES_ROOT, szKey, 0, KEY_READ, key.Put()) == LSTATUS{})
            all += std::string(name) + ValueOf(key, OLESTR("")) + ValueOf(key, OLESTR("ThreadingModel")) + "\n";
    }
    return all;
}

std::string PathOf(HMODULE hModule)
{
    WCHAR szPath[2 * MAX_PATH] = {};
    GetModuleFileNameW(hModule, szPath, 2 * MAX_PATH);
    return tests::Narrow(szPath);
}

std::string WholeFor(HMODULE hModule)
{
    return "class =Korvane WLAN IHV Extension UI$\nserver =" + PathOf(hModule) + "$ ThreadingModel=Both$\n";
}

class Registration : public testing::Test
{
protected:
    Registration()
    {
        RemoveKeys();
    }
    ~Registration() override
    {
        RemoveKeys();
    }
    HRESULT Run(bool bUnregister) const
    {
        return m_module.Export<HRESULT WINAPI()>(bUnregister ? "DllUnregisterServer" : "DllRegisterServer")();
    }

    tests::CTraceLog m_log;
    const tests::CModuleUnderTest m_module{tests::CModuleUnderTest::Registration::None};
};

TEST_F(Registration, EachStepThatFailsEndsTheWorkAndStays)
{
    const std::string whole = WholeFor(m_module.Handle());
    const std::string described = "class =Korvane WLAN IHV Extension UI$\n";
    const std::string withoutModel = whole.substr(0, whole.find(" ThreadingModel")) + "\n";
    const struct
    {
        bool bUnregister;
        std::string left;
        const char* szFails = nullptr; // the function, at its call uNth
        unsigned uNth = 1;
        std::size_t nLines = 5; // of those that a whole run traces
    } rows[] = {
        {false, whole},
        {false, "", "RegOpenKeyExW", 1, 2},
        {false, "", "RegCreateKeyExW", 1, 3},
        {false, "class\n", "RegSetValueExW"},
        {false, described, "RegCreateKeyExW", 2},
        {false, described + "server\n", "GetModuleFileNameW"},
        {false, described + "server\n", "RegSetValueExW", 2},
        {false, withoutModel, "RegSetValueExW", 3},
        {true, ""},
        {true, whole, "RegOpenKeyExW", 1, 2},
        {true, whole, "RegCreateKeyExW", 1, 3},
        {true, whole, "RegDeleteKeyW"},
        {true, described, "RegDeleteKeyW", 2},
    };
    for (const auto& row : rows)
    {
        SCOPED_TRACE((row.szFails ? row.szFails : "none") + std::to_string(row.uNth));
        RemoveKeys();
        if (row.bUnregister)
        {
            EXPECT_EQ(S_OK, Run(false));
        }
        m_log.Take();
        if (row.szFails)
            platform::testing::PlanFault(row.szFails, row.uNth, 1, ERROR_ACCESS_DENIED);
        EXPECT_EQ(row.szFails ? S_FALSE : S_OK, Run(row.bUnregister));
        EXPECT_TRUE(!row.szFails || platform::testing::CountFaults(row.szFails) == 1);
        platform::testing::ClearFaults();
        EXPECT_EQ(row.left, Registered());

        Lines expected = {row.bUnregister ? "DllUnregisterServer\n" : "DllRegisterServer\n",
                          row.bUnregister ? "SelfRegister( bUnregister = true )\n" : "SelfRegister( bUnregister = false )\n",
                          "-- opened key: CLSID, hkey = HANDLE \n", "-- created key: {6C0E5D21-3B7A-4F19-9D42-7E1A8C3F5B60}\n",
                          row.bUnregister ? "-- unregistering...\n" : "-- registering...\n"};
        expected.resize(row.nLines);
        auto lines = m_log.Take();
        for (auto& line : lines)
            line = tests::Replaced(line, "hkey = (0x)?0*[1-9A-Fa-f][0-9A-Fa-f]* \n", "hkey = HANDLE \n");
        EXPECT_EQ(expected, lines);
    }
    RemoveKeys();
    EXPECT_EQ(S_FALSE, Run(true)) << "what was never registered";
    EXPECT_EQ("class\n", Registered());
}

// A path that would be cut registers nothing.
TEST_F(Registration, PathOf260CharactersIsTheLongest)
{
    const tests::CTestFolder folder;
    const auto file = tests::ProgramFile().parent_path() / "korihvui.dll";
    ASSERT_TRUE(SetCurrentDirectoryW(folder.PlatformName().c_str()));
    // By a link where there are such, else by the place below the current directory: no longer name could be asked for.
    const auto loaded = [&](const std::string& place)
    {
        fs::create_directories(folder.Path() / place);
        fs::copy_file(file, folder.Path() / place / file.filename());
        std::error_code none;
        fs::create_directory_symlink(folder.Path() / place, folder.Path() / ("to" + std::to_string(place.size())), none);
        return LoadLibraryW(tests::Widen((none ? place : "to" + std::to_string(place.size())) + "\\korihvui.dll").c_str());
    };
    const HMODULE hShort = loaded("x");
    const std::size_t cchRest = MAX_PATH - PathOf(hShort).size() + 1;
    FreeLibrary(hShort);
    for (const auto& [cch, hr] : {std::pair(cchRest, S_OK), {cchRest + 1, S_FALSE}})
    {
        RemoveKeys();
        const HMODULE hLong = loaded(std::string(cch, 'l'));
        ASSERT_NE(nullptr, hLong);
        const auto pRegister =
            reinterpret_cast<HRESULT(WINAPI*)()>(reinterpret_cast<void*>(GetProcAddress(hLong, "DllRegisterServer")));
        EXPECT_EQ(hr, pRegister());
        EXPECT_EQ(hr == S_OK ? WholeFor(hLong) : "class =Korvane WLAN IHV Extension UI$\nserver\n", Registered());
        FreeLibrary(hLong);
    }
    SetCurrentDirectoryW(tests::PlatformNameOf(tests::BuildFolder()).c_str());
}
} // namespace
