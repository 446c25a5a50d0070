#include "tests/simulator/ServiceUnderTest.h"

#include <objbase.h>

namespace service_test
{
namespace
{
constexpr DWORD success = ERROR_SUCCESS;
constexpr DWORD badName = 0x80003;

struct Request
{
    unsigned char bytes[32] = {};
    Request(DWORD dwObjectIdentifier, unsigned char cbPayload)
    {
        for (unsigned i = 0; i < 4; ++i)
            bytes[4 + i] = static_cast<unsigned char>(dwObjectIdentifier >> (8 * i));
        bytes[12] = cbPayload;
    }
};
constexpr DWORD vendorQuery = 0x0001010D;
constexpr DWORD rapidoQuery = 0xFF000040;

TEST_F(ServiceTest, OpensVersionsOneAndTwoAndNothingElse)
{
    for (const DWORD dwVersion : {0u, 1u, 2u, 3u})
    {
        const bool bKnown = dwVersion == 1 || dwVersion == 2;
        DWORD dwNegotiated = 77;
        HANDLE hOther = nullptr;
        EXPECT_EQ(wlan->Open(dwVersion, nullptr, &dwNegotiated, &hOther), bKnown ? success : DWORD{ERROR_NOT_SUPPORTED});
        EXPECT_EQ(dwNegotiated, bKnown ? dwVersion : 77u);
        EXPECT_EQ(wlan->Close(hOther, nullptr), bKnown ? success : DWORD{ERROR_INVALID_HANDLE});
    }
}

TEST_F(ServiceTest, IsNotActiveWithoutItsFolder)
{
    DWORD dwNegotiated = 77;
    HANDLE hOther = nullptr;
    for (const WCHAR* szFolder : {static_cast<const WCHAR*>(nullptr), OLESTR("no such folder")})
    {
        SetEnvironmentVariableW(OLESTR("WLAN_SERVICE_DIR"), szFolder);
        EXPECT_EQ(wlan->Open(2, nullptr, &dwNegotiated, &hOther), DWORD{ERROR_SERVICE_NOT_ACTIVE});
    }
    EXPECT_EQ(hOther, nullptr);
    EXPECT_EQ(dwNegotiated, 77u);
}

TEST_F(ServiceTest, LimitsOpenHandles)
{
    // So many lines in a log cost seconds and show nothing.
    SetEnvironmentVariableW(OLESTR("WLAN_SERVICE_LOG"), nullptr);
    std::vector<HANDLE> handles;
    DWORD dwVersion = 0;
    DWORD dwResult = success;
    for (HANDLE hOther = nullptr; (dwResult = wlan->Open(2, nullptr, &dwVersion, &hOther)) == success;)
        handles.push_back(hOther);
    EXPECT_EQ(dwResult, DWORD{ERROR_REMOTE_SESSION_LIMIT_EXCEEDED});
    EXPECT_EQ(handles.size(), 8191u); // the fixture holds one
    for (const HANDLE hOther : handles)
        EXPECT_EQ(wlan->Close(hOther, nullptr), success);
}

TEST_F(ServiceTest, EveryFunctionRefusesForeignHandlesAndMissingArguments)
{
    PWLAN_INTERFACE_INFO_LIST pInterfaces = nullptr;
    PWLAN_INTERFACE_CAPABILITY pCapability = nullptr;
    PWLAN_PROFILE_INFO_LIST pProfiles = nullptr;
    LPWSTR szXml = nullptr;
    DWORD dwOut = 77;
    unsigned char buffer[64] = {};
    int reserved = 0;
    const WideText xml = Profile(OLESTR("Office"));
    const auto control = wlan_ihv_control_type_driver;
    const GUID* p = &firstGuid;
    HANDLE hOther = nullptr;

    for (const HANDLE h : {HANDLE{}, HANDLE{&reserved}})
    {
        const DWORD results[] = {
            wlan->Close(h, nullptr),
            wlan->EnumInterfaces(h, nullptr, &pInterfaces),
            wlan->GetCapability(h, p, nullptr, &pCapability),
            wlan->GetProfile(h, p, OLESTR("x"), nullptr, &szXml, nullptr, nullptr),
            wlan->GetProfileList(h, p, nullptr, &pProfiles),
            wlan->SetProfile(h, p, 0, xml.c_str(), nullptr, TRUE, nullptr, &dwOut),
            wlan->DeleteProfile(h, p, OLESTR("x"), nullptr),
            wlan->IhvControl(h, p, control, sizeof(buffer), buffer, sizeof(buffer), buffer, &dwOut),
        };
        for (const DWORD& dwResult : results)
            EXPECT_EQ(dwResult, DWORD{ERROR_INVALID_HANDLE}) << &dwResult - results;
    }

    const HANDLE h = hClient;
    const DWORD results[] = {
        wlan->Open(2, nullptr, nullptr, &hOther),
        wlan->Open(2, nullptr, &dwOut, nullptr),
        wlan->Open(2, &reserved, &dwOut, &hOther),
        wlan->Close(h, &reserved),
        wlan->EnumInterfaces(h, nullptr, nullptr),
        wlan->EnumInterfaces(h, &reserved, &pInterfaces),
        wlan->GetCapability(h, nullptr, nullptr, &pCapability),
        wlan->GetCapability(h, p, &reserved, &pCapability),
        wlan->GetCapability(h, p, nullptr, nullptr),
        wlan->GetProfile(h, nullptr, OLESTR("x"), nullptr, &szXml, nullptr, nullptr),
        wlan->GetProfile(h, p, nullptr, nullptr, &szXml, nullptr, nullptr),
        wlan->GetProfile(h, p, OLESTR("x"), &reserved, &szXml, nullptr, nullptr),
        wlan->GetProfile(h, p, OLESTR("x"), nullptr, nullptr, nullptr, nullptr),
        wlan->GetProfileList(h, nullptr, nullptr, &pProfiles),
        wlan->GetProfileList(h, p, &reserved, &pProfiles),
        wlan->GetProfileList(h, p, nullptr, nullptr),
        wlan->SetProfile(h, nullptr, 0, xml.c_str(), nullptr, TRUE, nullptr, &dwOut),
        wlan->SetProfile(h, p, 0, nullptr, nullptr, TRUE, nullptr, &dwOut),
        wlan->SetProfile(h, p, 0, xml.c_str(), nullptr, TRUE, &reserved, &dwOut),
        wlan->SetProfile(h, p, 0, xml.c_str(), nullptr, TRUE, nullptr, nullptr),
        wlan->DeleteProfile(h, nullptr, OLESTR("x"), nullptr),
        wlan->DeleteProfile(h, p, nullptr, nullptr),
        wlan->DeleteProfile(h, p, OLESTR("x"), &reserved),
        wlan->IhvControl(h, nullptr, control, 32, buffer, 32, buffer, &dwOut),
        wlan->IhvControl(h, p, control, 32, nullptr, 32, buffer, &dwOut),
        wlan->IhvControl(h, p, control, 32, buffer, 32, nullptr, &dwOut),
        wlan->IhvControl(h, p, control, 32, buffer, 32, buffer, nullptr),
        wlan->IhvControl(h, p, control, 23, buffer, 32, buffer, &dwOut),
        wlan->ReasonCodeToString(0, 10, nullptr, nullptr),
        wlan->ReasonCodeToString(0, 0, reinterpret_cast<WCHAR*>(buffer), nullptr),
        wlan->ReasonCodeToString(0, 10, reinterpret_cast<WCHAR*>(buffer), &reserved),
    };
    for (const DWORD& dwResult : results)
        EXPECT_EQ(dwResult, DWORD{ERROR_INVALID_PARAMETER}) << &dwResult - results;

    p = &unknownGuid;
    const DWORD notFound[] = {
        wlan->GetCapability(h, p, nullptr, &pCapability),
        wlan->GetProfile(h, p, OLESTR("x"), nullptr, &szXml, nullptr, nullptr),
        wlan->GetProfile(h, &firstGuid, OLESTR("x"), nullptr, &szXml, nullptr, nullptr),
        wlan->GetProfileList(h, p, nullptr, &pProfiles),
        wlan->SetProfile(h, p, 0, xml.c_str(), nullptr, TRUE, nullptr, &dwOut),
        wlan->DeleteProfile(h, p, OLESTR("x"), nullptr),
        wlan->DeleteProfile(h, &firstGuid, OLESTR("x"), nullptr),
        wlan->IhvControl(h, p, control, 32, buffer, 32, buffer, &dwOut),
    };
    for (const DWORD& dwResult : notFound)
        EXPECT_EQ(dwResult, DWORD{ERROR_NOT_FOUND}) << &dwResult - notFound;

    EXPECT_EQ(wlan->SetProfile(h, &firstGuid, 0, xml.c_str(), OLESTR("O:SY"), TRUE, nullptr, &dwOut), DWORD{ERROR_NOT_SUPPORTED});
    EXPECT_EQ(wlan->IhvControl(h, &firstGuid, wlan_ihv_control_type_service, 32, buffer, 32, buffer, &dwOut),
              DWORD{ERROR_NOT_SUPPORTED});
    EXPECT_EQ(dwOut, 77u);
    EXPECT_EQ(szXml, nullptr);
    EXPECT_TRUE(!pInterfaces && !pCapability && !pProfiles && !hOther);
    EXPECT_TRUE(Names().empty());
}

TEST_F(ServiceTest, ListsAdaptersInTheOrderOfTheFile)
{
    PWLAN_INTERFACE_INFO_LIST pList = nullptr;
    ASSERT_EQ(wlan->EnumInterfaces(hClient, nullptr, &pList), success);
    ASSERT_EQ(pList->dwNumberOfItems, 2u);
    const WLAN_INTERFACE_INFO* pInfo = pList->InterfaceInfo;
    EXPECT_TRUE(IsEqualGUID(pInfo[0].InterfaceGuid, firstGuid));
    EXPECT_EQ(WideText(pInfo[0].strInterfaceDescription), OLESTR("Plain Adapter"));
    EXPECT_EQ(pInfo[0].isState, wlan_interface_state_connected);
    EXPECT_TRUE(IsEqualGUID(pInfo[1].InterfaceGuid, secondGuid));
    EXPECT_EQ(pInfo[1].isState, wlan_interface_state_disconnected);
    wlan->FreeMemory(pList);

    WriteAdapters("[]");
    ASSERT_EQ(wlan->EnumInterfaces(hClient, nullptr, &pList), success);
    EXPECT_EQ(pList->dwNumberOfItems, 0u);
    wlan->FreeMemory(pList);
}

TEST_F(ServiceTest, ReportsPhyTypes)
{
    PWLAN_INTERFACE_CAPABILITY pCapability = nullptr;
    ASSERT_EQ(wlan->GetCapability(hClient, &firstGuid, nullptr, &pCapability), success);
    EXPECT_EQ(pCapability->interfaceType, wlan_interface_type_native_802_11);
    ASSERT_EQ(pCapability->dwNumberOfSupportedPhys, 2u);
    EXPECT_EQ(pCapability->dot11PhyTypes[0], 6u);
    EXPECT_EQ(pCapability->dot11PhyTypes[1], 7u);
    wlan->FreeMemory(pCapability);
}

TEST_F(ServiceTest, RefusesAnAdapterFileThatItDoesNotUnderstand)
{
    const std::string guid = R"("guid": "11112222-3333-4444-5555-666677778888")";
    const std::string files[] = {
        "",
        "{}",
        "[{}]",
        "[7]",
        R"([{"guid": "{11112222-3333-4444-5555-666677778888}"}])",
        R"([{"guid": "11112222-3333-4444-5555-66667777888x"}])",
        "[{" + guid + R"(, "rapdio": 1}])",
        "[{" + guid + R"(, "rapido": -1}])",
        "[{" + guid + R"(, "rapido": 4294967296}])",
        "[{" + guid + R"(, "state": "asleep"}])",
        "[{" + guid + R"(, "vendorReply": "0"}])",
        "[{" + guid + R"(, "vendorReply": "0g"}])",
        "[{" + guid + R"(, "phyTypes": 4}])",
        "[{" + guid + R"(, "description": "\xFF"}])" + "\xFF",
    };
    for (const std::string& file : files)
    {
        WriteAdapters(file);
        PWLAN_INTERFACE_INFO_LIST pList = nullptr;
        EXPECT_EQ(wlan->EnumInterfaces(hClient, nullptr, &pList), DWORD{ERROR_INVALID_DATA}) << file;
        EXPECT_EQ(pList, nullptr);
    }
}

struct DriverCase
{
    const char* szName;
    const char* szAdapter; // beside the GUID
    DWORD dwObjectIdentifier;
    DWORD cbOut;
    DWORD dwResult;
    std::string reply;
};

const std::string header(24, '\0');
std::string Header(DWORD dwObjectIdentifier, unsigned char cbPayload)
{
    const Request request(dwObjectIdentifier, cbPayload);
    return std::string(reinterpret_cast<const char*>(request.bytes), 24);
}

const DriverCase driverCases[] = {
    {"vendor", R"("vendor": "Korvane X")", vendorQuery, 128, success, Header(vendorQuery, 8) + std::string("Korvane X", 10)},
    {"vendor_truncated", R"("vendor": "Korvane X")", vendorQuery, 27, success, Header(vendorQuery, 8) + "Kor"},
    {"vendor_header_only", R"("vendor": "Korvane X")", vendorQuery, 24, success, Header(vendorQuery, 8)},
    {"vendor_no_room", R"("vendor": "Korvane X")", vendorQuery, 23, ERROR_INSUFFICIENT_BUFFER, ""},
    {"vendor_raw", R"("vendorReply": "01 02 ff")", vendorQuery, 128, success, "\x01\x02\xFF"},
    {"vendor_unknown", R"("rapido": 1)", vendorQuery, 128, ERROR_NOT_SUPPORTED, ""},
    {"rapido", R"("rapido": 305419896)", rapidoQuery, 32, success, Header(rapidoQuery, 8) + "\x78\x56\x34\x12"},
    {"rapido_raw_24", R"("rapido": 1, "rapidoReply": "000000000000000000000000000000000000000000000000")", rapidoQuery, 32,
     success, header},
    {"rapido_unknown", R"("vendor": "Korvane X")", rapidoQuery, 32, ERROR_NOT_SUPPORTED, ""},
    {"driver_error", R"("vendor": "Korvane X", "driverError": 31)", vendorQuery, 128, ERROR_GEN_FAILURE, ""},
    {"other_query", R"("vendor": "Korvane X")", 0x00010101, 128, ERROR_NOT_SUPPORTED, ""},
};

TEST_F(ServiceTest, DriverAnswers)
{
    for (const DriverCase& c : driverCases)
    {
        SCOPED_TRACE(c.szName);
        WriteAdapters(std::string(R"([{"guid": "11112222-3333-4444-5555-666677778888", )") + c.szAdapter + "}]");
        Request request(c.dwObjectIdentifier, 8);
        std::string out(256, '\xCC');
        DWORD cbReturned = 77;
        EXPECT_EQ(wlan->IhvControl(hClient, &firstGuid, wlan_ihv_control_type_driver, sizeof(request.bytes), request.bytes,
                                   c.cbOut, out.data(), &cbReturned),
                  c.dwResult);
        ASSERT_EQ(cbReturned, c.reply.size());
        EXPECT_EQ(out.substr(0, cbReturned), c.reply);
        EXPECT_EQ(out.find_first_not_of('\xCC', cbReturned), std::string::npos);
    }
}

TEST_F(ServiceTest, RefusesAPayloadLongerThanTheRequest)
{
    Request request(vendorQuery, 9);
    unsigned char out[128];
    DWORD cbReturned = 77;
    EXPECT_EQ(wlan->IhvControl(hClient, &firstGuid, wlan_ihv_control_type_driver, 32, request.bytes, 128, out, &cbReturned),
              DWORD{ERROR_INVALID_PARAMETER});
    EXPECT_EQ(cbReturned, 77u);
}

TEST_F(ServiceTest, PlannedFailuresHitTheCallsThatTheyName)
{
    EXPECT_FALSE(wlan->FailNext("WlanFreeMemory", 1, 1, ERROR_GEN_FAILURE));
    EXPECT_FALSE(wlan->FailNext("NoSuchFunction", 1, 1, ERROR_GEN_FAILURE));
    wlan->ClearFaults();
    ASSERT_EQ(Set(Profile(OLESTR("Office"))), success);
    ASSERT_TRUE(wlan->FailNext("WlanGetProfile", 2, 2, ERROR_ACCESS_DENIED));
    const DWORD expected[] = {success, ERROR_ACCESS_DENIED, ERROR_ACCESS_DENIED, success};
    for (const DWORD dwExpected : expected)
    {
        WideText back;
        EXPECT_EQ(Get(OLESTR("Office"), back), dwExpected);
    }
    EXPECT_EQ(wlan->Calls("WlanGetProfile"), 4u);
    EXPECT_EQ(wlan->Calls("WlanSetProfile"), 1u);
    EXPECT_EQ(wlan->Calls("NoSuchFunction"), 0u);

    ASSERT_TRUE(wlan->FailNext("WlanGetProfile", 1, 1, ERROR_SUCCESS));
    LPWSTR szXml = nullptr;
    EXPECT_EQ(wlan->GetProfile(hClient, &firstGuid, OLESTR("Office"), nullptr, &szXml, nullptr, nullptr), success);
    EXPECT_EQ(szXml, nullptr);
    wlan->ClearFaults();
    EXPECT_EQ(wlan->Calls("WlanGetProfile"), 0u);
}

TEST_F(ServiceTest, FreesOnlyWhatIsItsOwnAndOnlyOnce)
{
    PWLAN_INTERFACE_INFO_LIST pList = nullptr;
    ASSERT_EQ(wlan->EnumInterfaces(hClient, nullptr, &pList), success);
    EXPECT_EQ(wlan->LiveBlocks(), 1);
    int mine = 0;
    wlan->FreeMemory(nullptr);
    wlan->FreeMemory(&mine);
    EXPECT_EQ(wlan->LiveBlocks(), 1);
    wlan->FreeMemory(pList);
    wlan->FreeMemory(pList);
    EXPECT_EQ(wlan->LiveBlocks(), 0);
}

TEST_F(ServiceTest, ReasonTextsAreTruncatedAndTerminated)
{
    WCHAR text[80];
    EXPECT_EQ(wlan->ReasonCodeToString(badName, 80, text, nullptr), success);
    EXPECT_EQ(WideText(text), OLESTR("The profile has no usable name."));
    EXPECT_EQ(wlan->ReasonCodeToString(badName, 4, text, nullptr), success);
    EXPECT_EQ(WideText(text), OLESTR("The"));
    EXPECT_EQ(wlan->ReasonCodeToString(0xABCD, 80, text, nullptr), success);
    EXPECT_EQ(WideText(text), OLESTR("The reason is not known."));
}

TEST_F(ServiceTest, LogsEveryCallAndNoKeys)
{
    ASSERT_EQ(Set(Profile(OLESTR("Off\nice"), OLESTR("<keyMaterial>hidden-phrase</keyMaterial>"))), success);
    WideText back;
    Get(OLESTR("none"), back);
    Request request(rapidoQuery, 8);
    DWORD cbReturned = 0;
    wlan->IhvControl(hClient, &secondGuid, wlan_ihv_control_type_driver, 32, request.bytes, 32, request.bytes, &cbReturned);
    const std::string log = Slurp(folder / "calls.log");
    EXPECT_EQ(log.find("hidden-phrase"), std::string::npos);
    const char* pieces[] = {
        "WlanOpenHandle version=2 handle=0x",
        "name=\"Off\\u000Aice\" -> 0\n",
        "interface=11112222-3333-4444-5555-666677778888 name=\"none\" flags=null access=null -> 1168\n",
        "WlanFreeMemory memory=null\n",
        " in=32 input=00000000400000ff0000000008000000",
        " out=32 returned=28 -> 0\n",
    };
    for (const char* szPiece : pieces)
        EXPECT_NE(log.find(szPiece), std::string::npos) << szPiece << "\nin\n" << log;
}

} // namespace
} // namespace service_test
