// The list of adapters, the selected one, and the questions to its driver.
#include "platform/testing/Faults.h"
#include "tests/support/Pattern.h"
#include "tests/support/SimulatedService.h"
#include "wlan/IhvControl.h"
#include "wlan/SelectedInterface.h"
#include "wlan/WlanAdapterList.h"

#include <gtest/gtest.h>

namespace tests
{
namespace
{
#define FIRST "5b7d2c10-8e46-4f3a-9d21-c07a64e1f3b8"
#define SECOND "91e4a6f2-30bc-4d58-a7e9-5c8f1b2d6073"
using Texts = std::vector<std::string>;

LONG Select(std::string_view guid)
{
    return SelectIhvInterface(Widen(guid).c_str());
}

Texts List()
{
    const CWlanAdapterList adapters;
    Texts texts;
    for (LONG i = 0; i < adapters.GetCount(); ++i)
        texts.push_back(Narrow(adapters.GetGuidString(i)));
    EXPECT_EQ(nullptr, adapters.GetGuidString(adapters.GetCount()));
    EXPECT_EQ(nullptr, adapters.GetGuidString(-1));
    return texts;
}

class AdapterListTest : public testing::Test
{
protected:
    Texts Requests() const
    {
        Texts requests;
        for (const auto& line : m_service.Calls())
        {
            if (line.starts_with("WlanIhvControl "))
                requests.push_back(tests::Replaced(line, R"( handle=\S+)", ""));
        }
        return requests;
    }

    CSimulatedService m_service{R"([{"guid": "5B7D2C10-8E46-4F3A-9D21-C07A64E1F3B8"}, {"guid": ")" SECOND
                                R"(", "vendor": "Korvane", "rapido": 1}])"};
};
} // namespace

TEST_F(AdapterListTest, HasTheAdaptersInTheServicesOrder)
{
    EXPECT_EQ((Texts{FIRST, SECOND}), List());
    {
        const platform::testing::CFailNth fault("UuidToStringW", 1);
        EXPECT_EQ(Texts{SECOND}, List()) << "one without a text is left out";
    }
    for (const char* szFunction : {"WlanOpenHandle", "WlanEnumInterfaces"})
        for (const DWORD dwError : {DWORD{ERROR_SERVICE_NOT_ACTIVE}, DWORD{ERROR_SUCCESS}})
        {
            m_service.FailNext(szFunction, 1, 1, dwError);
            EXPECT_EQ(Texts{}, List()) << szFunction;
        }
}

TEST_F(AdapterListTest, SelectsWhatIsListedAsWritten)
{
    EXPECT_EQ(GUID{}, SelectedInterfaceGuid());
    EXPECT_EQ(0, Select(SECOND));
    EXPECT_EQ(otherAdapterGuid, SelectedInterfaceGuid());
    EXPECT_EQ(0, Select(FIRST));
    EXPECT_EQ(-1, Select("91E4A6F2-30BC-4D58-A7E9-5C8F1B2D6073"));
    EXPECT_EQ(-1, Select(SECOND "0"));
    EXPECT_EQ(-1, SelectIhvInterface(nullptr));
    // The service may convert texts as well, to read its adapters: the last conversion is the selection's own.
    LONG lLast = 0;
    for (unsigned uCall = 1;; ++uCall)
    {
        const platform::testing::CFailNth fault("UuidFromStringW", uCall);
        const LONG lResult = Select(FIRST);
        if (!fault.HasFired())
            break;
        lLast = lResult;
    }
    EXPECT_EQ(-2, lLast);
    m_service.SetAdapters("[]");
    EXPECT_EQ(-1, Select(SECOND));
    EXPECT_EQ(adapterGuid, SelectedInterfaceGuid());
}

TEST_F(AdapterListTest, RequestsAreLaidOutAsTheDriverReadsThem)
{
    EXPECT_EQ(0, Select(SECOND));
    EXPECT_EQ(1, IsKorvaneInterface());
    EXPECT_EQ(1u, QueryRapidoCapability());
    const std::string head = "WlanIhvControl interface=" SECOND " type=1 in=32 input=00000000";
    const std::string zeros(32, '0');
    EXPECT_EQ((Texts{head + "0d0101000000000000000000" + zeros + " out=128 returned=32 -> 0",
                     head + "400000ff0000000008000000" + zeros + " out=32 returned=28 -> 0"}),
              Requests());
    m_service.FailNext("WlanOpenHandle", 1, 2, ERROR_ACCESS_DENIED);
    EXPECT_EQ(0, IsKorvaneInterface());
    EXPECT_EQ(0u, QueryRapidoCapability());
    EXPECT_EQ(2u, Requests().size()) << "a client that is not open asks nothing";
}

namespace
{
// A reply in hexadecimal digits: the header and this answer.
std::string Reply(std::string_view answer)
{
    std::string digits(48, '0');
    for (const char ch : answer)
        digits += {"0123456789abcdef"[(ch >> 4) & 15], "0123456789abcdef"[ch & 15]};
    return digits;
}
std::string Replies(std::string_view vendor, std::string_view rapido)
{
    return R"(, "vendorReply": ")" + Reply(vendor) + R"(", "rapidoReply": ")" + Reply(rapido) + "\"";
}
} // namespace

TEST_F(AdapterListTest, DriverAnswersCountBehindTheirHeader)
{
    using namespace std::string_view_literals;
    const struct
    {
        std::string keys;
        LONG lKorvane;
        DWORD dwRapido;
    } rows[] = {
        {"", 0, 0},
        {Replies("A Korvane Fenn", "\xFF\xFF\xFF\xFF"), 1, 0xFFFFFFFF},
        {Replies("korvane KORVANE", ""), 0, 0},
        {Replies(std::string(97, 'x') + "Korvane", ""), 1, 0}, // the last bytes of the buffer
        {Replies(std::string(98, 'x') + "Korvane", ""), 0, 0}, // cut there
        {Replies("", ""), 0, 0},                               // 24 bytes are no answer
        {Replies("Korvane", "\x01"), 1, 1},                    // a number of less than its four bytes
        {Replies("Korvane", "\x01") + R"(, "driverError": 31)", 1, 1},
        {Replies("Ko", "\x01\x02"), 0, 0x0201},
        {Replies("K", "\x01\x02\x03"), 0, 0x00030201},
        {Replies("x\0Korvane"sv, "\x04\x03\x02\x01"), 0, 0x01020304},
    };
    for (const auto& row : rows)
    {
        SCOPED_TRACE(row.keys);
        m_service.SetAdapters(R"([{"guid": ")" FIRST "\"" + row.keys + "}]");
        EXPECT_EQ(0, Select(FIRST));
        EXPECT_EQ(row.lKorvane, IsKorvaneInterface());
        EXPECT_EQ(row.dwRapido, QueryRapidoCapability());
    }
}

TEST_F(AdapterListTest, ClientKeepsItsFirstErrorUntilItIsOpenedAgain)
{
    BYTE request[32] = {0, 0, 0, 0, 0x0D, 0x01, 0x01};
    BYTE reply[128] = {};
    DWORD cbReturned = 0;
    CWlanClient client;
    const auto ask = [&](bool bDriver)
    { return client.IhvControl(bDriver, sizeof(request), request, sizeof(reply), reply, &cbReturned); };
    EXPECT_EQ(0, Select(SECOND));
    EXPECT_EQ(DWORD{ERROR_NOT_SUPPORTED}, ask(false)) << "there is no one but the driver";
    EXPECT_EQ(DWORD{ERROR_NOT_SUPPORTED}, ask(true));
    ASSERT_EQ(1u, Requests().size());
    EXPECT_NE(std::string::npos, Requests()[0].find(" type=0 "));
    client.Close();
    client.Close();
    client.Open();
    EXPECT_EQ(DWORD{ERROR_SUCCESS}, ask(true));
    EXPECT_EQ(2u, SimulatedWlanCalls("WlanCloseHandle")) << "of the selection and of the client";
}
} // namespace tests
