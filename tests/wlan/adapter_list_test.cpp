// The list of adapters, the selected one, and the questions to its driver.
#include "tests/support/SimulatedService.h"
#include "wlan/IhvControl.h"
#include "wlan/SelectedInterface.h"
#include "wlan/WlanAdapterList.h"

#include <gtest/gtest.h>

#include <regex>

namespace tests
{
namespace
{
#define FIRST "5b7d2c10-8e46-4f3a-9d21-c07a64e1f3b8"
#define SECOND "91e4a6f2-30bc-4d58-a7e9-5c8f1b2d6073"
constexpr const char* twoAdapters =
    R"([{"guid": "5B7D2C10-8E46-4F3A-9D21-C07A64E1F3B8"}, {"guid": ")" SECOND R"(", "vendor": "Korvane", "rapido": 1}])";

LONG SelectText(std::string_view guid)
{
    return SelectIhvInterface(Widen(guid).c_str());
}

class AdapterListTest : public testing::Test
{
protected:
    void SetUp() override
    {
        m_lHandles = m_service.LiveHandles();
    }
    void TearDown() override
    {
        EXPECT_EQ(m_lHandles, m_service.LiveHandles());
        EXPECT_EQ(0, m_service.LiveBlocks());
    }
    static std::vector<std::string> List()
    {
        const CWlanAdapterList adapters;
        std::vector<std::string> texts;
        for (LONG i = 0; i < adapters.GetCount(); ++i)
            texts.push_back(Narrow(adapters.GetGuidString(i)));
        EXPECT_EQ(nullptr, adapters.GetGuidString(adapters.GetCount()));
        return texts;
    }
    // The machine's one adapter has these keys, and is selected.
    void Select(const std::string& keys)
    {
        m_service.SetAdapters(R"([{"guid": ")" FIRST "\"" + keys + "}]");
        EXPECT_EQ(0, SelectText(FIRST)) << keys;
    }
    std::vector<std::string> Requests() const
    {
        std::vector<std::string> requests;
        for (const auto& line : m_service.Calls())
        {
            if (line.starts_with("WlanIhvControl "))
                requests.push_back(std::regex_replace(line, std::regex(R"( handle=\S+)"), ""));
        }
        return requests;
    }

    CSimulatedService m_service{twoAdapters};
    LONG m_lHandles = 0;
};
} // namespace

TEST_F(AdapterListTest, HasTheAdaptersInTheServicesOrder)
{
    EXPECT_EQ((std::vector<std::string>{FIRST, SECOND}), List());
    m_service.SetAdapters("[]");
    EXPECT_EQ(std::vector<std::string>{}, List());
}

TEST_F(AdapterListTest, IsEmptyWhereTheServiceFails)
{
    for (const char* szFunction : {"WlanOpenHandle", "WlanEnumInterfaces"})
    {
        for (const DWORD dwError : {ERROR_SERVICE_NOT_ACTIVE, ERROR_SUCCESS})
        {
            m_service.FailNext(szFunction, 1, 1, static_cast<DWORD>(dwError));
            EXPECT_EQ(std::vector<std::string>{}, List()) << szFunction;
        }
    }
}

TEST_F(AdapterListTest, SelectsWhatIsListedAsWritten)
{
    EXPECT_EQ(0, SelectText(SECOND));
    EXPECT_EQ(otherAdapterGuid, SelectedInterfaceGuid());
    EXPECT_EQ(0, SelectText(FIRST));
    EXPECT_EQ(adapterGuid, SelectedInterfaceGuid());
    EXPECT_EQ(-1, SelectText("91E4A6F2-30BC-4D58-A7E9-5C8F1B2D6073"));
    EXPECT_EQ(-1, SelectText(SECOND "0"));
    EXPECT_EQ(-1, SelectText(""));
    m_service.SetAdapters("[]");
    EXPECT_EQ(-1, SelectText(SECOND));
    EXPECT_EQ(adapterGuid, SelectedInterfaceGuid());
}

TEST_F(AdapterListTest, RequestsAreLaidOutAsTheDriverReadsThem)
{
    EXPECT_EQ(0, SelectText(SECOND));
    EXPECT_EQ(1, IsKorvaneInterface());
    EXPECT_EQ(1u, QueryRapidoCapability());
    const std::string head = "WlanIhvControl interface=" SECOND " type=1 in=32 input=";
    const std::string zeros(16, '0');
    EXPECT_EQ((std::vector<std::string>{
                  head +
                      "00000000"
                      "0d010100"
                      "00000000"
                      "00000000" +
                      zeros + zeros + " out=128 returned=32 -> 0",
                  head +
                      "00000000"
                      "400000ff"
                      "00000000"
                      "08000000" +
                      zeros + zeros + " out=32 returned=28 -> 0",
              }),
              Requests());
}

namespace
{
// A reply in hexadecimal digits: the header and this answer.
std::string Reply(std::string_view answer)
{
    std::string digits(48, '0');
    for (const char ch : answer)
    {
        char szByte[3];
        std::snprintf(szByte, sizeof(szByte), "%02x", static_cast<unsigned>(static_cast<unsigned char>(ch)));
        digits += szByte;
    }
    return digits;
}
std::string Vendor(const std::string& description)
{
    return R"(, "vendor": ")" + description + "\"";
}
std::string VendorReply(std::string_view answer)
{
    return R"(, "vendorReply": ")" + Reply(answer) + "\"";
}
std::string RapidoReply(std::string_view answer)
{
    return R"(, "rapidoReply": ")" + Reply(answer) + "\"";
}

using namespace std::string_view_literals;
struct DriverCase
{
    std::string keys;
    LONG lKorvane;
    DWORD dwRapido;
};
const DriverCase driverCases[] = {
    {"", 0, 0},
    {Vendor("Korvane") + R"(, "rapido": 4294967295)", 1, 0xFFFFFFFF},
    {Vendor("A Korvane Fenn") + R"(, "rapido": 0)", 1, 0},
    {Vendor("korvane KORVANE"), 0, 0},
    {Vendor("Korvan"), 0, 0},
    {Vendor(std::string(97, 'x') + "Korvane"), 1, 0}, // the last bytes of the buffer
    {Vendor(std::string(98, 'x') + "Korvane"), 0, 0}, // cut there
    {Vendor("Korvane") + R"(, "rapido": 1, "driverError": 31)", 0, 0},
    {VendorReply("") + RapidoReply(""), 0, 0}, // 24 bytes are no answer
    {VendorReply("Korvane") + RapidoReply("\1\0\0\0"sv), 1, 1},
    {VendorReply("x\0Korvane"sv) + RapidoReply("\x04\x03\x02\x01"sv), 0, 0x01020304},
    {R"(, "vendorReply": "", "rapidoReply": "01")", 0, 0},
};
} // namespace

TEST_F(AdapterListTest, DriverAnswersCountBehindTheirHeader)
{
    for (const auto& row : driverCases)
    {
        Select(row.keys);
        EXPECT_EQ(row.lKorvane, IsKorvaneInterface()) << row.keys;
        EXPECT_EQ(row.dwRapido, QueryRapidoCapability()) << row.keys;
    }
}

TEST_F(AdapterListTest, ClientThatCannotOpenAsksNothing)
{
    Select(Vendor("Korvane") + R"(, "rapido": 1)");
    m_service.FailNext("WlanOpenHandle", 1, 2, ERROR_ACCESS_DENIED);
    EXPECT_EQ(0, IsKorvaneInterface());
    EXPECT_EQ(0u, QueryRapidoCapability());
    EXPECT_EQ(std::vector<std::string>{}, Requests());
}

TEST_F(AdapterListTest, ClientKeepsItsFirstErrorUntilItIsOpenedAgain)
{
    Select(Vendor("Korvane"));
    BYTE request[32] = {};
    BYTE reply[128] = {};
    DWORD cbReturned = 0;
    CWlanClient client;
    const auto ask = [&](bool bDriver)
    { return client.IhvControl(bDriver, sizeof(request), request, sizeof(reply), reply, &cbReturned); };
    request[4] = 0x0D, request[5] = 0x01, request[6] = 0x01;
    EXPECT_EQ(DWORD{ERROR_SUCCESS}, ask(true));
    EXPECT_EQ(DWORD{ERROR_NOT_SUPPORTED}, ask(false)) << "there is no one but the driver";
    EXPECT_EQ(DWORD{ERROR_NOT_SUPPORTED}, ask(true));
    ASSERT_EQ(2u, Requests().size());
    EXPECT_NE(std::string::npos, Requests()[1].find(" type=0 "));
    client.Close();
    client.Close();
    client.Open();
    EXPECT_EQ(DWORD{ERROR_SUCCESS}, ask(true));
}
} // namespace tests
