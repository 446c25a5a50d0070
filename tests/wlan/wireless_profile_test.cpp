// The wireless profile and the capabilities: what is asked, what is told from the answer.
#include "tests/support/ModuleUnderTest.h"
#include "tests/support/SimulatedService.h"
#include "wlan/WirelessProfile.h"

#include <memory>
#include <regex>

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
    void TearDown() override
    {
        EXPECT_EQ(0, m_service.LiveBlocks());
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
    std::string LastCall() const
    {
        static const std::regex changing(R"( (handle|xml\.length)=\S+)");
        const auto calls = m_service.Calls();
        return calls.empty() ? "" : std::regex_replace(calls.back(), changing, "");
    }

    CSimulatedService m_service{makersMachine};
    CConnectionContext m_office{OLESTR("Office"), adapterGuid, 0x80000003};
};
} // namespace

TEST_F(WirelessProfileTest, IsCopied)
{
    EXPECT_EQ(office, Read(m_office.Get()));
}

TEST_F(WirelessProfileTest, IsFalseForWhatIsNotThere)
{
    EXPECT_EQ("false", Read(CConnectionContext(OLESTR("office"), adapterGuid).Get()));
    EXPECT_EQ("false", Read(CConnectionContext(OLESTR("Office"), otherAdapterGuid).Get()));
    EXPECT_EQ("false", Read(nullptr));
    EXPECT_FALSE(SetWirelessProfile(nullptr, OLESTR("<WLANProfile/>")));
}

TEST_F(WirelessProfileTest, SuccessWithoutATextLeavesTheOutParameter)
{
    m_service.FailNext("WlanGetProfile", 1, 1, ERROR_SUCCESS);
    EXPECT_EQ("(none)", Read(m_office.Get()));
    WCHAR before[] = OLESTR("before");
    WCHAR* szProfile = before;
    m_service.FailNext("WlanGetProfile", 1, 2, ERROR_SUCCESS);
    EXPECT_TRUE(GetWirelessProfile(m_office.Get(), &szProfile));
    EXPECT_EQ(before, szProfile);
    m_service.FailNext("WlanGetProfile", 1, 1, ERROR_ACCESS_DENIED);
    EXPECT_FALSE(GetWirelessProfile(m_office.Get(), &szProfile));
    EXPECT_EQ(before, szProfile);
}

// The flags follow the name in the context; they must not be read as part of it.
TEST_F(WirelessProfileTest, NameMayFillItsField)
{
    const CWideString name(256, WCHAR{'n'});
    EXPECT_EQ("false", Read(CConnectionContext(name, adapterGuid, 0x00410041).Get()));
    EXPECT_NE(std::string::npos, LastCall().find("name=\"" + std::string(256, 'n') + "\""));
}

TEST_F(WirelessProfileTest, IsStoredWithTheContextsFlagsOverTheOld)
{
    constexpr const WCHAR* szNew = OLESTR("<WLANProfile><name>Office</name><MSM/></WLANProfile>");
    EXPECT_TRUE(SetWirelessProfile(m_office.Get(), szNew));
    EXPECT_EQ("WlanSetProfile interface=5b7d2c10-8e46-4f3a-9d21-c07a64e1f3b8 flags=0x80000003 security=null overwrite=1 "
              "name=\"Office\" -> 0",
              LastCall());
    EXPECT_EQ(Narrow(szNew), Read(m_office.Get()));
}

TEST_F(WirelessProfileTest, RefusedTextLeavesTheOld)
{
    EXPECT_FALSE(SetWirelessProfile(m_office.Get(), OLESTR("<OtherProfile/>")));
    EXPECT_FALSE(SetWirelessProfile(CConnectionContext(OLESTR("Office"), nobodysGuid).Get(), OLESTR("<WLANProfile/>")));
    EXPECT_EQ(office, Read(m_office.Get()));
}

TEST_F(WirelessProfileTest, HandleIsOpenedOnceForAll)
{
    PhyCapabilities capabilities = {};
    EXPECT_EQ(office, Read(m_office.Get()));
    const unsigned uOpened = m_service.CountCalls("WlanOpenHandle");
    EXPECT_LE(uOpened, 1u);
    EXPECT_TRUE(GetPhyCapabilities(adapterGuid, &capabilities));
    EXPECT_TRUE(SetWirelessProfile(m_office.Get(), Widen(office).c_str()));
    EXPECT_EQ(office, Read(m_office.Get()));
    EXPECT_EQ(uOpened, m_service.CountCalls("WlanOpenHandle"));
    EXPECT_EQ(0u, m_service.CountCalls("WlanCloseHandle"));
}

namespace
{
struct PhyCase
{
    const char* szPhyTypes;
    DWORD ofdm, hrDsss, erp, ht;
};
constexpr PhyCase phyCases[] = {
    {"6, 7", 0, 0, 1, 1}, {"4, 5, 6, 7", 1, 1, 1, 1}, {"", 0, 0, 0, 0},        {"4", 1, 0, 0, 0},
    {"5", 0, 1, 0, 0},    {"7, 7, 4, 4", 1, 0, 0, 1}, {"0, 8, 3", 0, 0, 0, 0},
};
} // namespace

TEST_F(WirelessProfileTest, CapabilitiesAreFlagsOfTheListedTypes)
{
    for (const auto& row : phyCases)
    {
        m_service.SetAdapters(R"([{"guid": "5b7d2c10-8e46-4f3a-9d21-c07a64e1f3b8", "phyTypes": [)" + std::string(row.szPhyTypes) +
                              "]}]");
        PhyCapabilities capabilities = {9, 9, 9, 9};
        EXPECT_TRUE(GetPhyCapabilities(adapterGuid, &capabilities)) << row.szPhyTypes;
        EXPECT_EQ(row.ofdm, capabilities.ofdm) << row.szPhyTypes;
        EXPECT_EQ(row.hrDsss, capabilities.hrDsss) << row.szPhyTypes;
        EXPECT_EQ(row.erp, capabilities.erp) << row.szPhyTypes;
        EXPECT_EQ(row.ht, capabilities.ht) << row.szPhyTypes;
    }
}

TEST_F(WirelessProfileTest, CapabilitiesStayWhereTheQueryFails)
{
    PhyCapabilities capabilities = {9, 8, 7, 6};
    EXPECT_FALSE(GetPhyCapabilities(nobodysGuid, &capabilities));
    EXPECT_EQ(9u, capabilities.ofdm);
    EXPECT_EQ(8u, capabilities.hrDsss);
    EXPECT_EQ(7u, capabilities.erp);
    EXPECT_EQ(6u, capabilities.ht);
}
} // namespace tests
