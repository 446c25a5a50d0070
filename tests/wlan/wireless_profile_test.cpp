// The wireless profile and the capabilities: what is asked, what is told from the answer.
#include "tests/support/ModuleUnderTest.h"
#include "tests/support/SimulatedService.h"
#include "wlan/WirelessProfile.h"

#include <memory>

namespace tests
{
namespace
{
constexpr std::string_view office = "<WLANProfile><name>Office</name></WLANProfile>";
constexpr GUID nobodysGuid = {1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};

class WirelessProfileTest : public testing::Test
{
protected:
    void SetUp() override
    {
        m_service.AddProfile(adapterGuid, "office.xml", office);
    }

    // The text, "(none)" where the out parameter stayed as it was, or "false".
    static std::string Read(void* pContext)
    {
        WCHAR* szProfile = nullptr;
        const bool bRead = GetWirelessProfile(pContext, &szProfile);
        const std::unique_ptr<WCHAR[]> owner(szProfile);
        EXPECT_TRUE(bRead || !szProfile);
        return !bRead ? "false" : szProfile ? Narrow(szProfile) : "(none)";
    }
    // ofdm, hrDsss, erp and ht as digits, "9876" where they stayed as they were.
    static std::string Capabilities(const GUID& adapter, bool bRead)
    {
        PhyCapabilities capabilities = {9, 8, 7, 6};
        EXPECT_EQ(bRead, GetPhyCapabilities(adapter, &capabilities));
        std::string digits;
        for (const DWORD dwFlag : {capabilities.ofdm, capabilities.hrDsss, capabilities.erp, capabilities.ht})
            digits += std::to_string(dwFlag);
        return digits;
    }

    CSimulatedService m_service{makersMachine};
    CConnectionContext m_office{OLESTR("Office"), adapterGuid};
};
} // namespace

// What fails to open is tried again at the next need. The handle is the process's: this case has one of its own.
class WirelessClientTest : public WirelessProfileTest
{
};

TEST_F(WirelessClientTest, HandleIsOpenedOnceForAll)
{
    m_service.FailNext("WlanOpenHandle", 1, 2, ERROR_SERVICE_NOT_ACTIVE);
    EXPECT_EQ("false", Read(m_office.Get()));
    EXPECT_FALSE(OpenWlanClient());
    EXPECT_EQ(office, Read(m_office.Get()));
    EXPECT_EQ("1111", Capabilities(adapterGuid, true));
    EXPECT_TRUE(SetWirelessProfile(m_office.Get(), Widen(office).c_str()));
    EXPECT_EQ(3u, SimulatedWlanCalls("WlanOpenHandle"));
}

TEST_F(WirelessProfileTest, IsFalseForWhatIsNotThere)
{
    EXPECT_EQ("false", Read(nullptr));
    EXPECT_FALSE(SetWirelessProfile(nullptr, OLESTR("<WLANProfile/>")));
    m_service.FailNext("WlanGetProfile", 1, 1, ERROR_SUCCESS);
    EXPECT_EQ("(none)", Read(m_office.Get())) << "a success without a text";
}

// The flags follow the name in the context; they must not be read as part of it.
TEST_F(WirelessProfileTest, NameMayFillItsField)
{
    EXPECT_EQ("false", Read(CConnectionContext(CWideString(256, WCHAR{'n'}), adapterGuid, 0x00410041).Get()));
    EXPECT_NE(std::string::npos, m_service.Calls().back().find("name=\"" + std::string(256, 'n') + "\""));
}

TEST_F(WirelessProfileTest, CapabilitiesAreFlagsOfTheListedTypes)
{
    std::string zeros;
    for (int i = 0; i < 63; ++i)
        zeros += "0, ";
    const struct
    {
        std::string phyTypes;
        const char* szFlags;
    } rows[] = {
        {zeros + "4", "1000"}, {zeros + "0, 4", "0000"}, // more than the record holds
        {"5", "0100"},         {"6, 7", "0011"},         {"0, 8, 3", "0000"},
    };
    for (const auto& row : rows)
    {
        m_service.SetAdapters(R"([{"guid": "5b7d2c10-8e46-4f3a-9d21-c07a64e1f3b8", "phyTypes": [)" + row.phyTypes + "]}]");
        EXPECT_EQ(row.szFlags, Capabilities(adapterGuid, true)) << row.phyTypes;
    }
    m_service.FailNext("WlanGetInterfaceCapability", 1, 1, ERROR_SUCCESS);
    EXPECT_EQ("0000", Capabilities(adapterGuid, true)) << "a success without a record";
    EXPECT_EQ("9876", Capabilities(nobodysGuid, false));
}
} // namespace tests
