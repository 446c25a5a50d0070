#include "tests/simulator/ServiceUnderTest.h"

#include <objbase.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>

namespace service_test
{
namespace
{
namespace fs = std::filesystem;

constexpr const char* twoAdapters = R"([
    // the second one is the maker's
    {"guid": "11112222-3333-4444-5555-666677778888", "description": "Plain Adapter", "state": "connected",
     "phyTypes": [6, 7], "vendor": "Some Other Maker"},
    {"guid": "aaaabbbb-cccc-dddd-eeee-ffff00001111", "description": "Maker's Adapter",
     "phyTypes": [4, 5, 6, 7], "vendor": "Korvane Test Adapter", "rapido": 1}
])";

template <class Function>
void Find(HMODULE hModule, const char* szName, Function& function)
{
    function = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(hModule, szName)));
    ASSERT_NE(function, nullptr) << szName;
}
} // namespace

Functions::Functions()
{
    const char* szFolder = std::getenv("KORIHVUI_BUILD_DIR");
    const fs::path module = fs::path(szFolder ? szFolder : ".") / "wlanapi.dll";
    hModule = LoadLibraryW(module.string<WCHAR>().c_str());
    if (!hModule)
    {
        ADD_FAILURE() << module << " cannot be loaded: " << GetLastError();
        std::abort();
    }
    Find(hModule, "WlanOpenHandle", Open);
    Find(hModule, "WlanCloseHandle", Close);
    Find(hModule, "WlanEnumInterfaces", EnumInterfaces);
    Find(hModule, "WlanGetInterfaceCapability", GetCapability);
    Find(hModule, "WlanGetProfile", GetProfile);
    Find(hModule, "WlanGetProfileList", GetProfileList);
    Find(hModule, "WlanSetProfile", SetProfile);
    Find(hModule, "WlanDeleteProfile", DeleteProfile);
    Find(hModule, "WlanIhvControl", IhvControl);
    Find(hModule, "WlanReasonCodeToString", ReasonCodeToString);
    Find(hModule, "WlanFreeMemory", FreeMemory);
    Find(hModule, "SimulatedWlanLiveHandles", LiveHandles);
    Find(hModule, "SimulatedWlanLiveBlocks", LiveBlocks);
    Find(hModule, "SimulatedWlanFailNext", FailNext);
    Find(hModule, "SimulatedWlanClearFaults", ClearFaults);
    Find(hModule, "SimulatedWlanCalls", Calls);
}

Functions::~Functions()
{
    FreeLibrary(hModule);
}

Functions* ServiceTest::wlan = nullptr;

void ServiceTest::SetUpTestSuite()
{
    wlan = new Functions;
}

void ServiceTest::TearDownTestSuite()
{
    delete wlan;
}

void ServiceTest::SetUp()
{
    const std::string name = testing::UnitTest::GetInstance()->current_test_info()->name();
    std::string plainName = name;
    std::replace(plainName.begin(), plainName.end(), '/', '_');
    folder = fs::temp_directory_path() / ("wlan-service-" + std::to_string(GetCurrentProcessId()) + "-" + plainName);
    fs::create_directories(folder);
    WriteAdapters(twoAdapters);
    ASSERT_TRUE(SetEnvironmentVariableW(OLESTR("WLAN_SERVICE_DIR"), folder.string<WCHAR>().c_str()));
    ASSERT_TRUE(SetEnvironmentVariableW(OLESTR("WLAN_SERVICE_LOG"), (folder / "calls.log").string<WCHAR>().c_str()));
    wlan->ClearFaults();
    DWORD dwVersion = 0;
    ASSERT_EQ(wlan->Open(2, nullptr, &dwVersion, &hClient), DWORD{ERROR_SUCCESS});
    ASSERT_EQ(dwVersion, 2u);
}

void ServiceTest::TearDown()
{
    EXPECT_EQ(wlan->Close(hClient, nullptr), DWORD{ERROR_SUCCESS});
    EXPECT_EQ(wlan->LiveHandles(), 0);
    EXPECT_EQ(wlan->LiveBlocks(), 0);
    for (const std::string& file : FilesOfProfiles())
        EXPECT_EQ(file.find(".tmp"), std::string::npos) << file;
    std::error_code ignored;
    fs::remove_all(folder, ignored);
}

void ServiceTest::WriteAdapters(const std::string& json) const
{
    Spill(folder / "adapters.json", json);
}

fs::path ServiceTest::ProfileFolder(const char* szGuid) const
{
    return folder / "profiles" / szGuid;
}

void ServiceTest::Drop(const std::string& fileName, std::string_view bytes) const
{
    fs::create_directories(ProfileFolder());
    Spill(ProfileFolder() / fileName, bytes);
}

std::vector<std::string> ServiceTest::FilesOfProfiles() const
{
    std::vector<std::string> files;
    std::error_code error;
    for (fs::directory_iterator entry(ProfileFolder(), error), end; !error && entry != end; entry.increment(error))
        files.push_back(entry->path().filename().string());
    std::sort(files.begin(), files.end());
    return files;
}

DWORD ServiceTest::Set(const WideText& xml, bool bOverwrite, DWORD dwFlags)
{
    return wlan->SetProfile(hClient, &firstGuid, dwFlags, xml.c_str(), nullptr, bOverwrite ? TRUE : FALSE, nullptr, &dwReason);
}

DWORD ServiceTest::Get(const WCHAR* szName, WideText& xml)
{
    LPWSTR szXml = nullptr;
    const DWORD dwResult = wlan->GetProfile(hClient, &firstGuid, szName, nullptr, &szXml, nullptr, nullptr);
    EXPECT_EQ(dwResult == ERROR_SUCCESS, szXml != nullptr);
    xml = szXml ? szXml : WideText();
    wlan->FreeMemory(szXml);
    return dwResult;
}

DWORD ServiceTest::Delete(const WCHAR* szName)
{
    return wlan->DeleteProfile(hClient, &firstGuid, szName, nullptr);
}

std::vector<WideText> ServiceTest::Names()
{
    PWLAN_PROFILE_INFO_LIST pList = nullptr;
    EXPECT_EQ(wlan->GetProfileList(hClient, &firstGuid, nullptr, &pList), DWORD{ERROR_SUCCESS});
    std::vector<WideText> names;
    for (DWORD i = 0; pList && i < pList->dwNumberOfItems; ++i)
        names.emplace_back((pList->ProfileInfo + i)->strProfileName);
    wlan->FreeMemory(pList);
    return names;
}

WideText Profile(WideView name, WideView more)
{
    return WideText(
               OLESTR("<?xml version=\"1.0\"?>\r\n<WLANProfile xmlns=\"http://www.microsoft.com/networking/WLAN/profile/v1\">\r\n"
                      "\t<name>"))
        .append(name)
        .append(OLESTR("</name>\r\n"))
        .append(more)
        .append(OLESTR("</WLANProfile>\r\n"));
}

std::string Slurp(const fs::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

void Spill(const fs::path& file, std::string_view bytes)
{
    std::ofstream stream(file, std::ios::binary);
    stream << bytes;
    ASSERT_TRUE(stream.flush()) << file;
}
} // namespace service_test
