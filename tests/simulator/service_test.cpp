// The simulated service as its clients see it.
#include "tests/support/SimulatedService.h"
#include "values/Utf8Text.h"

#include <windows.h>

#include <wlanapi.h>

#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <thread>

namespace
{
using namespace tests;
namespace fs = std::filesystem;

constexpr DWORD success = ERROR_SUCCESS;
constexpr DWORD badSchema = 0x80001;
constexpr DWORD badName = 0x80003;
constexpr DWORD vendorQuery = 0x0001010D;
constexpr DWORD rapidoQuery = 0xFF000040;
constexpr auto driver = wlan_ihv_control_type_driver;

constexpr GUID firstGuid = {0x11112222, 0x3333, 0x4444, {0x55, 0x55, 0x66, 0x66, 0x77, 0x77, 0x88, 0x88}};
constexpr GUID unknownGuid = {1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};
constexpr const char* firstAdapter = R"("guid": "11112222-3333-4444-5555-666677778888")";
constexpr const char* twoAdapters = R"([
    // the second one is the maker's
    {"guid": "11112222-3333-4444-5555-666677778888", "description": "Plain Adapter", "state": "connected",
     "phyTypes": [6, 7], "vendor": "Some Other Maker"},
    {"guid": "aaaabbbb-cccc-dddd-eeee-ffff00001111", "description": "Maker's Adapter",
     "phyTypes": [4, 5, 6, 7], "vendor": "Korvane Test Adapter", "rapido": 1}
])";

CWideString Profile(CWideView name, CWideView more = {})
{
    return CWideString(OLESTR("<?xml version=\"1.0\"?>\r\n<WLANProfile xmlns=\"http://n/v1\">\r\n\t<name>"))
        .append(name)
        .append(OLESTR("</name>\r\n"))
        .append(more)
        .append(OLESTR("</WLANProfile>\r\n"));
}

std::string Request(DWORD dwObjectIdentifier, char chPayload)
{
    std::string bytes(32, '\0');
    std::memcpy(&bytes[4], &dwObjectIdentifier, sizeof dwObjectIdentifier);
    bytes[12] = chPayload;
    return bytes;
}

// A service folder of its own for each case, an open client handle, and the check that the case leaves nothing behind.
class ServiceTest : public testing::Test
{
protected:
    ServiceTest()
    {
        DWORD dwVersion = 0;
        EXPECT_EQ(success, WlanOpenHandle(2, nullptr, &dwVersion, &hClient));
    }
    ~ServiceTest() override
    {
        EXPECT_EQ(success, WlanCloseHandle(hClient, nullptr));
        EXPECT_EQ(lHandles, SimulatedWlanLiveHandles());
        EXPECT_EQ(lBlocks, SimulatedWlanLiveBlocks());
    }

    fs::path Place(const std::string& fileName) const
    {
        const fs::path place = service.Folder() / "profiles/11112222-3333-4444-5555-666677778888";
        fs::create_directories(place);
        return place / fileName;
    }
    std::set<std::string> Files() const
    {
        std::set<std::string> files;
        for (const auto& entry : fs::directory_iterator(Place("").parent_path()))
            files.insert(entry.path().filename().string());
        return files;
    }
    DWORD Set(const CWideString& xml, BOOL bOverwrite = TRUE, DWORD dwFlags = 0)
    {
        return WlanSetProfile(hClient, &firstGuid, dwFlags, xml.c_str(), nullptr, bOverwrite, nullptr, &dwReason);
    }
    DWORD Get(CWideView name, CWideString& xml, DWORD* pdwFlags = nullptr) const
    {
        LPWSTR szXml = nullptr;
        const DWORD dwResult = WlanGetProfile(hClient, &firstGuid, CWideString(name).c_str(), nullptr, &szXml, pdwFlags, nullptr);
        EXPECT_EQ(dwResult == ERROR_SUCCESS, szXml != nullptr);
        xml = szXml ? szXml : CWideString();
        WlanFreeMemory(szXml);
        return dwResult;
    }
    void ExpectStored(CWideView name, const CWideString& xml) const
    {
        CWideString back;
        EXPECT_EQ(success, Get(name, back)) << Utf8Of(name);
        EXPECT_TRUE(xml == back) << Utf8Of(back);
    }
    DWORD Ask(std::string& request, DWORD cbOut, std::string& out, DWORD& cbReturned) const
    {
        return WlanIhvControl(hClient, &firstGuid, driver, static_cast<DWORD>(request.size()), request.data(), cbOut, out.data(),
                              &cbReturned);
    }

    const CSimulatedService service{twoAdapters};
    // Others in the process may hold some.
    const LONG lHandles = SimulatedWlanLiveHandles();
    const LONG lBlocks = SimulatedWlanLiveBlocks();
    HANDLE hClient = nullptr;
    DWORD dwReason = 0xDEAD;
};

TEST_F(ServiceTest, RefusesWhatIsNotAsItMustBe)
{
    // What the calls could write to, as no failure does.
    PWLAN_INTERFACE_INFO_LIST pInterfaces = nullptr;
    PWLAN_INTERFACE_CAPABILITY pCapability = nullptr;
    LPWSTR szXml = nullptr;
    DWORD dwOut = 77;
    HANDLE hOther = nullptr;
    unsigned char buffer[64] = {};
    const CWideString xml = Profile(OLESTR("Office"));
    const LPCWSTR szName = OLESTR("Office");
    const auto get = [&](HANDLE h, const GUID* p, LPCWSTR szWanted)
    { return WlanGetProfile(h, p, szWanted, nullptr, &szXml, nullptr, nullptr); };
    const auto set = [&](HANDLE h, const GUID* p, LPCWSTR szText, LPCWSTR szSecurity)
    { return WlanSetProfile(h, p, 0, szText, szSecurity, TRUE, nullptr, &dwOut); };
    const auto ask = [&](HANDLE h, const GUID* p, DWORD cbIn, void* pIn)
    { return WlanIhvControl(h, p, driver, cbIn, pIn, 32, buffer, &dwOut); };
    const auto expect = [](DWORD dwExpected, const std::vector<DWORD>& results)
    { EXPECT_EQ(std::vector<DWORD>(results.size(), dwExpected), results); };
    const auto expectOfAll = [&](DWORD dwExpected, HANDLE h, const GUID* p)
    {
        expect(dwExpected, {WlanGetInterfaceCapability(h, p, nullptr, &pCapability), get(h, p, szName),
                            set(h, p, xml.c_str(), nullptr), ask(h, p, 32, buffer)});
    };

    const HANDLE h = hClient;
    const GUID* p = &firstGuid;
    for (const HANDLE hWrong : {HANDLE{}, HANDLE{&hOther}})
    {
        expectOfAll(ERROR_INVALID_HANDLE, hWrong, p);
        expect(ERROR_INVALID_HANDLE, {WlanCloseHandle(hWrong, nullptr), WlanEnumInterfaces(hWrong, nullptr, &pInterfaces)});
    }
    expectOfAll(ERROR_NOT_FOUND, h, &unknownGuid);
    expect(ERROR_NOT_FOUND, {get(h, p, szName)});
    expectOfAll(ERROR_INVALID_PARAMETER, h, nullptr);
    expect(ERROR_INVALID_PARAMETER, {WlanOpenHandle(2, buffer, &dwOut, &hOther), WlanCloseHandle(h, buffer),
                                     WlanEnumInterfaces(h, nullptr, nullptr), get(h, p, nullptr), set(h, p, nullptr, nullptr),
                                     ask(h, p, 23, buffer), ask(h, p, 32, Request(vendorQuery, 9).data())});
    expect(ERROR_NOT_SUPPORTED, {set(h, p, xml.c_str(), OLESTR("O:SY")), WlanOpenHandle(0, nullptr, &dwOut, &hOther),
                                 WlanOpenHandle(3, nullptr, &dwOut, &hOther),
                                 WlanIhvControl(h, p, wlan_ihv_control_type_service, 32, buffer, 32, buffer, &dwOut)});
    for (const WCHAR* szFolder : {static_cast<const WCHAR*>(nullptr), OLESTR("no such folder")})
    {
        SetEnvironmentVariableW(OLESTR("WLAN_SERVICE_DIR"), szFolder);
        expect(ERROR_SERVICE_NOT_ACTIVE, {WlanOpenHandle(2, nullptr, &dwOut, &hOther)});
    }
    EXPECT_TRUE(dwOut == 77 && !szXml && !pInterfaces && !pCapability && !hOther);
    EXPECT_TRUE(Files().empty());
}

TEST_F(ServiceTest, TellsOfItsAdaptersAndFreesItsOwnMemoryOnce)
{
    PWLAN_INTERFACE_INFO_LIST pList = nullptr;
    ASSERT_EQ(success, WlanEnumInterfaces(hClient, nullptr, &pList));
    ASSERT_EQ(2u, pList->dwNumberOfItems);
    const WLAN_INTERFACE_INFO* pInfo = pList->InterfaceInfo;
    EXPECT_EQ("Plain Adapter", Narrow(pInfo[0].strInterfaceDescription));
    EXPECT_EQ(wlan_interface_state_connected, pInfo[0].isState);
    EXPECT_EQ(wlan_interface_state_disconnected, pInfo[1].isState);
    int mine = 0;
    WlanFreeMemory(&mine);
    EXPECT_EQ(lBlocks + 1, SimulatedWlanLiveBlocks());
    WlanFreeMemory(pList);
    WlanFreeMemory(pList);
    EXPECT_EQ(lBlocks, SimulatedWlanLiveBlocks());
}

TEST_F(ServiceTest, RefusesAnAdapterFileThatItDoesNotUnderstand)
{
    const std::string strDeep = "{GUID, \"vendor\": " + std::string(200'000, '[') + std::string(200'000, ']') + "}";
    for (const std::string strAdapter :
         {"{}", "7", R"({"guid": "{11112222-3333-4444-5555-666677778888}"})",
          R"({"guid": "11112222-3333-4444-5555-66667777888x"})", R"({GUID, "rapdio": 1})", R"({GUID, "rapido": -1})",
          R"({GUID, "rapido": 4294967296})", R"({GUID, "state": "asleep"})", R"({GUID, "vendorReply": "0"})",
          R"({GUID, "vendorReply": "0g"})", R"({GUID, "phyTypes": 4})", "{GUID, \"description\": \"\xFF\"}", "}",
          strDeep.c_str()})
    {
        std::string file = "[" + strAdapter + "]";
        if (const std::size_t nGuid = file.find("GUID"); nGuid != std::string::npos)
            file.replace(nGuid, 4, firstAdapter);
        service.SetAdapters(file);
        PWLAN_INTERFACE_INFO_LIST pList = nullptr;
        EXPECT_EQ(DWORD{ERROR_INVALID_DATA}, WlanEnumInterfaces(hClient, nullptr, &pList)) << file;
        EXPECT_EQ(nullptr, pList);
    }
}

struct DriverCase
{
    const char* szAdapter; // beside the GUID
    DWORD dwObjectIdentifier;
    DWORD cbOut;
    DWORD dwResult;
    std::string reply;
};
const std::string vendorHeader = Request(vendorQuery, 8).substr(0, 24);
const DriverCase driverCases[] = {
    {R"("vendor": "Korvane X")", vendorQuery, 128, success, vendorHeader + std::string("Korvane X", 10)},
    {R"("vendor": "Korvane X")", vendorQuery, 27, success, vendorHeader + "Kor"},
    {R"("vendor": "Korvane X")", vendorQuery, 24, success, vendorHeader},
    {R"("vendor": "Korvane X")", vendorQuery, 23, ERROR_INSUFFICIENT_BUFFER, ""},
    {R"("vendorReply": "01 02 ff")", vendorQuery, 128, success, "\x01\x02\xFF"},
    {R"("rapido": 1)", vendorQuery, 128, ERROR_NOT_SUPPORTED, ""},
    {R"("rapido": 305419896)", rapidoQuery, 32, success, Request(rapidoQuery, 8).substr(0, 24) + "\x78\x56\x34\x12"},
    {R"("rapido": 1, "rapidoReply": "2a")", rapidoQuery, 32, success, "*"},
    {R"("vendor": "Korvane X")", rapidoQuery, 32, ERROR_NOT_SUPPORTED, ""},
    {R"("vendor": "Korvane X", "driverError": 31)", vendorQuery, 128, ERROR_GEN_FAILURE, ""},
    {R"("vendor": "Korvane X")", 0x00010101, 128, ERROR_NOT_SUPPORTED, ""},
};

TEST_F(ServiceTest, DriverAnswers)
{
    for (const DriverCase& c : driverCases)
    {
        SCOPED_TRACE(std::string(c.szAdapter) + " " + std::to_string(c.dwObjectIdentifier) + " " + std::to_string(c.cbOut));
        service.SetAdapters(std::string("[{") + firstAdapter + ", " + c.szAdapter + "}]");
        std::string request = Request(c.dwObjectIdentifier, 8);
        std::string out(256, '\xCC');
        DWORD cbReturned = 77;
        EXPECT_EQ(c.dwResult, Ask(request, c.cbOut, out, cbReturned));
        EXPECT_EQ(c.reply.size(), cbReturned);
        EXPECT_EQ(c.reply + std::string(256 - c.reply.size(), '\xCC'), out);
    }
}

TEST_F(ServiceTest, LogsEveryCallAndNoKeys)
{
    ASSERT_EQ(success, Set(Profile(OLESTR("Off\nice"), OLESTR("<keyMaterial>hidden-phrase</keyMaterial>"))));
    CWideString back;
    Get(OLESTR("none"), back);
    std::string request = Request(vendorQuery, 8);
    std::string out(128, '\0');
    DWORD cbReturned = 0;
    Ask(request, 128, out, cbReturned);
    const std::string log = ReadBytes(service.Folder() / "calls.log");
    EXPECT_EQ(std::string::npos, log.find("hidden-phrase"));
    for (const char* szPiece :
         {"WlanOpenHandle version=2 handle=0x", "name=\"Off\\u000Aice\" -> 0\n",
          "interface=11112222-3333-4444-5555-666677778888 name=\"none\" flags=null access=null -> 1168\n",
          "WlanFreeMemory memory=null\n", " in=32 input=000000000d01010000000000080000", " out=128 returned=41 -> 0\n"})
        EXPECT_NE(std::string::npos, log.find(szPiece)) << szPiece << "\nin\n" << log;
}

TEST_F(ServiceTest, GivesBackExactlyTheStoredTextAndFlags)
{
    DWORD dwFlags = 0;
    for (const CWideString& text :
         {Profile(OLESTR("Office")), Profile(OLESTR("Office"), OLESTR("<!-- \u00e4\u20ac \xD83D\xDE00 --> \n\n<x a='1'/>\t")),
          CWideString(
              OLESTR("<?xml version=\"1.0\" encoding=\"US-ASCII\"?><WLANProfile><name>Office</name>\u00e9</WLANProfile>")),
          OLESTR("\xFEFF") + Profile(OLESTR("Office"))})
    {
        ASSERT_EQ(success, Set(text, TRUE, dwFlags));
        ExpectStored(OLESTR("Office"), text);
        DWORD dwBack = 77;
        CWideString back;
        EXPECT_EQ(success, Get(OLESTR("Office"), back, &dwBack));
        EXPECT_EQ(dwFlags, dwBack);
        dwFlags = dwFlags == 2 ? 0xFFFFFFFF : 2 - dwFlags;
    }
}

TEST_F(ServiceTest, RefusesWhatIsNoProfileAndKeepsTheOldOne)
{
    ASSERT_EQ(success, Set(Profile(OLESTR("Office"))));
    const std::pair<CWideString, DWORD> cases[] = {
        {{}, badSchema},
        {OLESTR("<WLANProfile><name>Office</name>"), badSchema},
        {OLESTR("<Profile><name>Office</name></Profile>"), badSchema},
        {OLESTR("<WLANProfile><x><name>Office</name></x></WLANProfile>"), badSchema},
        {Profile(OLESTR("<x>Office</x>")), badSchema},
        {Profile({}), badName},
        {Profile(CWideString(256, OLESTR('n'))), badName},
        {Profile(OLESTR("Office"), OLESTR("<!-- \xD800 -->")), badSchema},
    };
    for (const auto& [text, dwExpected] : cases)
    {
        dwReason = 0xDEAD;
        EXPECT_EQ(DWORD{ERROR_BAD_PROFILE}, Set(text)) << Utf8Of(text);
        EXPECT_EQ(dwExpected, dwReason) << Utf8Of(text);
    }
    ExpectStored(OLESTR("Office"), Profile(OLESTR("Office")));
}

TEST_F(ServiceTest, KeepsNamesApart)
{
    const CWideString longName(255, OLESTR('n'));
    const std::set<CWideString> names = {
        OLESTR("Office"),    OLESTR("OFFICE"),    OLESTR("con"), OLESTR("a/b\\c:d*e?"),
        OLESTR("..\\..\\x"), OLESTR("caf\u00e9"), longName,      longName.substr(1) + OLESTR("x")};
    for (const CWideString& name : names)
        ASSERT_EQ(success, Set(Profile(name), FALSE));
    EXPECT_EQ(names.size(), Files().size());
    for (const CWideString& name : names)
    {
        ExpectStored(name, Profile(name));
        EXPECT_EQ(DWORD{ERROR_ALREADY_EXISTS}, Set(Profile(name), FALSE));
    }
}

TEST_F(ServiceTest, ReadsFilesThatAPersonPutThere)
{
    const std::string ascii = R"(<?xml version="1.0"?><WLANProfile><name>Dropped</name></WLANProfile>)";
    std::string little;
    std::string big;
    for (const char c : ascii)
    {
        little += {c, '\0'};
        big += {'\0', c};
    }
    for (const std::string& bytes : {ascii, "\xEF\xBB\xBF" + ascii, little, "\xFF\xFE" + little, big, "\xFE\xFF" + big})
    {
        WriteBytes(Place("some file.xml"), bytes);
        ExpectStored(OLESTR("Dropped"), Widen(ascii));
    }
    CWideString back;
    for (const std::string& bytes :
         {std::string(), std::string("\xE9"), "\xFF\xFE" + little + "x", std::string("<WLANProfile/>")})
    {
        WriteBytes(Place("some file.xml"), bytes);
        EXPECT_EQ(DWORD{ERROR_NOT_FOUND}, Get(OLESTR("Dropped"), back));
    }
    // The person's file name stays when the service stores the profile; of two files the service's own counts.
    WriteBytes(Place("some file.xml"), ascii);
    ASSERT_EQ(success, Set(Profile(OLESTR("Dropped"))));
    EXPECT_EQ((std::set<std::string>{"some file.xml"}), Files());
    WriteBytes(Place("Wi-Fi-Dropped.xml"), ascii);
    ExpectStored(OLESTR("Dropped"), Widen(ascii));
}

TEST_F(ServiceTest, TakesAwayWhatAKilledWriterLeft)
{
    ASSERT_EQ(success, Set(Profile(OLESTR("Office"))));
    WriteBytes(Place("Wi-Fi-Office.xml.unfinished-12-1"), "<WLANProfile><name>Half</na");
    WriteBytes(Place("Wi-Fi-Office.flags.unfinished-12-1"), "4");
    ExpectStored(OLESTR("Office"), Profile(OLESTR("Office")));
    ASSERT_EQ(success, Set(Profile(OLESTR("Other"))));
    EXPECT_EQ((std::set<std::string>{"Wi-Fi-Office.xml", "Wi-Fi-Other.xml"}), Files());
}

TEST_F(ServiceTest, ReadersNextToWritersSeeWholeProfiles)
{
    const CWideString longer = Profile(OLESTR("Office"), CWideString(40000, OLESTR(' ')));
    const CWideString shorter = Profile(OLESTR("Office"));
    ASSERT_EQ(success, Set(shorter));
    std::vector<std::jthread> threads;
    for (const CWideString* pText : {&longer, &shorter})
        threads.emplace_back(
            [&, pText]
            {
                CWideString back;
                DWORD dwOwnReason = 0;
                for (int i = 0; i < 20; ++i)
                {
                    EXPECT_EQ(success,
                              WlanSetProfile(hClient, &firstGuid, 0, pText->c_str(), nullptr, TRUE, nullptr, &dwOwnReason));
                    EXPECT_TRUE(Get(OLESTR("Office"), back) == success && (back == longer || back == shorter));
                }
            });
}
} // namespace
