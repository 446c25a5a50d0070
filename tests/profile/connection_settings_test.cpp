// The connection options of an IHV profile: what is read from a text, whether it is valid, what is written; the defaults.
#include "profile/CCXConnectionSettings.h"
#include "profile/IhvProfile.h"
#include "tests/support/ModuleUnderTest.h"
#include "tests/support/XmlTest.h"
#include "values/Utf8Text.h"

#include <algorithm>
#include <cstring>

namespace
{
using S = CCXConnectionSettings;

constexpr LONG usedLevel = 77;
constexpr BYTE usedByte = 0x55;

struct Field
{
    const char* szName;
    LONG S::*pField;
    LONG lAbsent; // in a profile without any connection element
};
constexpr Field fields[] = {
    {"rm", &S::radioMeasurement, 1},        {"services", &S::locationBasedServices, 1}, {"off", &S::maxOffChannelTimeMs, 50},
    {"on", &S::minOnChannelTimeMs, 400},    {"timer", &S::keepAliveEnabled, 0},         {"period", &S::keepAlivePeriod, 0},
    {"reporting", &S::clientReporting, -1}, {"authorized", &S::authorizedProfile, -1},  {"rapido", &S::rapido, -1},
    {"roaming", &S::advancedRoaming, 1},    {"level", &S::roamingOption, usedLevel},    {"ssid", &S::diagnosticSsidLength, -1},
};

// What a record says beyond a profile without elements, and the SSID; its bytes beyond the length do not count.
std::string Describe(const S& settings)
{
    std::string text;
    for (const auto& field : fields)
    {
        if (settings.*field.pField != field.lAbsent)
            text += (text.empty() ? "" : " ") + std::string(field.szName) + "=" + std::to_string(settings.*field.pField);
    }
    const auto nSsid = static_cast<std::size_t>(std::max<LONG>(settings.diagnosticSsidLength, 0));
    const std::string ssid(settings.diagnosticSsid, settings.diagnosticSsid + nSsid);
    return text + (ssid.empty() ? "" : " " + ssid);
}

// A record that was in use before; what no operation may touch is set to be recognised.
S UsedRecord()
{
    S settings;
    for (const auto& field : fields)
        settings.*field.pField = 42;
    settings.roamingOption = usedLevel;
    std::memset(settings.diagnosticSsid, usedByte, sizeof(settings.diagnosticSsid));
    settings.connectionContext = &settings.connectionContext;
    return settings;
}

class ConnectionSettings : public tests::xml::XmlTest
{
};

#define MEASUREMENT(content) "<RadioMeasurement>" content "</RadioMeasurement>"
#define MEASURED(content) MEASUREMENT("<enabled>" content "</enabled>")
#define TIMES(off, on) "<MaxOffChannelTimeMs>" off "</MaxOffChannelTimeMs><MinOnChannelTimeMs>" on "</MinOnChannelTimeMs>"
#define OFF_CHANNEL(text) MEASURED(TIMES(text, "0"))
#define TIMER(period) "<KeepAliveTimer><Period>" period "</Period></KeepAliveTimer>"
#define DIAGNOSED(content) "<Diagnostics>" content "</Diagnostics>"
#define CHANNEL(content) DIAGNOSED("<Channel>" content "</Channel>")
#define SSID_NAME(text) CHANNEL("<SSID><Name>" text "</Name></SSID>")
#define SSID_HEX(text) CHANNEL("<SSID><Name>Name</Name><Hex>" text "</Hex></SSID>")
#define REPORTING(flag) "<EnableClientReporting>" flag "</EnableClientReporting>"
#define AUTHORIZED(flag) "<AuthorizedProfile>" flag "</AuthorizedProfile>"
#define RAPIDO(text) "<Rapido>" text "</Rapido>"
#define ROAMING(content) "<AdvancedRoaming>" content "</AdvancedRoaming>"
#define LEVEL(text) ROAMING("<enabled><RoamingOption>" text "</RoamingOption></enabled>")
#define DEFAULT_TIMES MEASURED(TIMES("50", "400"))
#define USUAL DEFAULT_TIMES RAPIDO("false") LEVEL("77") // what is written for a profile that says nothing
#define ONES "11111111111111111111111111111111"         // 32 of them

TEST_F(ConnectionSettings, AreReadAndWritten)
{
    const struct
    {
        const char* szElements;
        std::string record;
        bool bIsValid = true;
        const char* szWritten = nullptr; // null where nobody asks
    } rows[] = {
        {"", "", true, USUAL},
        {MEASUREMENT("<enabled>" TIMES("20", "7") "</enabled><disabled>false</disabled>"), "rm=0 services=-1 off=-1 on=-1", true,
         MEASUREMENT("<disabled/>") RAPIDO("false") LEVEL("77")},
        {MEASUREMENT("enabled"), "rm=-1 services=-1 off=-1 on=-1", true, RAPIDO("false") LEVEL("77")},
        {MEASURED("<MinOnChannelTimeMs>300</MinOnChannelTimeMs><MaxOffChannelTimeMs>20</MaxOffChannelTimeMs>"), "off=20 on=300"},
        {MEASURED("<disableLocationBasedServices>false</disableLocationBasedServices>"), "services=0 off=-1 on=-1", false,
         MEASURED("<disableLocationBasedServices/>" TIMES("-1", "-1")) RAPIDO("false") LEVEL("77")},
        {MEASUREMENT("<enabled/><disableLocationBasedServices/>"), "off=-1 on=-1", false},
        // bounds
        {MEASURED(TIMES("9", "0")), "off=9 on=0", false},
        {MEASURED(TIMES("10", "0")), "off=10 on=0"},
        {MEASURED(TIMES("50", "500")), "on=500"},
        {MEASURED(TIMES("51", "500")), "off=51 on=500", false},
        {MEASURED(TIMES("50", "501")), "on=501", false},
        {MEASURED(TIMES("50", "-1")), "on=-1", false},
        // decimal texts
        {OFF_CHANNEL(" \t\r\n +20"), "off=20 on=0"},
        {OFF_CHANNEL("30ms"), "off=30 on=0"},
        {OFF_CHANNEL("ten"), "off=0 on=0", false},
        {OFF_CHANNEL("- 5"), "off=0 on=0", false},
        {OFF_CHANNEL("4294967316"), "off=2147483647 on=0", false},
        // the timer
        {TIMER("0"), "timer=1"},
        {TIMER("255"), "timer=1 period=255"},
        {TIMER("256"), "timer=1 period=256", false},
        {"<KeepAliveTimer>5</KeepAliveTimer>", "timer=1 period=-1", false},
        {TIMER("-18446744073709551636"), "timer=1 period=-2147483648", false, USUAL TIMER("-2147483648")},
        // the diagnostic channel
        {SSID_NAME(" ~"), "ssid=2  ~"},
        {SSID_NAME("  "), "ssid=2   "},
        {SSID_NAME("a"), "ssid=1 a", true, USUAL SSID_NAME("Diagnostic Channel")},
        {SSID_NAME(""), "ssid=0", true, USUAL},
        {SSID_NAME(ONES), "ssid=32 " ONES},
        {SSID_NAME(ONES "1"), "ssid=-2", false, USUAL},
        {SSID_NAME("a\tb"), "ssid=-2", false},
        {SSID_NAME("a\x7F"), "ssid=-2", false},
        {SSID_NAME("\u0141\u0142"), "ssid=-2", false},
        {SSID_HEX("4c6162"), "ssid=3 Lab"},
        {SSID_HEX("0123456789abcdefABCDEF"), "ssid=11 \x01\x23\x45\x67\x89\xAB\xCD\xEF\xAB\xCD\xEF"},
        {SSID_HEX(ONES ONES), "ssid=32 " + std::string(32, '\x11')},
        {SSID_HEX(ONES ONES "11"), "ssid=-2", false},
        {SSID_HEX("4C616"), "ssid=-2", false},
        {SSID_HEX("4g"), "ssid=-2", false},
        {SSID_HEX("+441"), "ssid=-2", false},
        {CHANNEL("<SSID><Hex>x</Hex></SSID>" REPORTING("true")), "reporting=1 ssid=-2", false, USUAL CHANNEL(REPORTING("true"))},
        {DIAGNOSED(AUTHORIZED("true")) TIMER("9"), "timer=1 period=9 authorized=1", true,
         USUAL TIMER("9") DIAGNOSED(AUTHORIZED("true"))},
        {DIAGNOSED(AUTHORIZED("no") "<Channel>" REPORTING("") "<SSID><Hex>78</Hex></SSID></Channel>"),
         "reporting=0 authorized=0 ssid=1 x", true,
         USUAL DIAGNOSED(
             AUTHORIZED("false") "<Channel><SSID><Name>Diagnostic Channel</Name></SSID>" REPORTING("false") "</Channel>")},
        // flag texts
        {RAPIDO("<![CDATA[true]]>"), "rapido=1", true, DEFAULT_TIMES RAPIDO("true") LEVEL("77")},
        {RAPIDO("True"), "rapido=0", true, USUAL},
        {RAPIDO(" true"), "rapido=0"},
        {RAPIDO("true<x/> "), "rapido=0"},
        {RAPIDO("true\n"), "rapido=0"},
        // Advanced Roaming
        {ROAMING("<enabled><RoamingOption>2</RoamingOption></enabled><disabled/>"), "roaming=0", true,
         DEFAULT_TIMES RAPIDO("false") ROAMING("<disabled/>")},
        {ROAMING("<RoamingOption>2</RoamingOption>"), "roaming=-1", true, DEFAULT_TIMES RAPIDO("false") ROAMING("<disabled/>")},
        {ROAMING("<enabled/>"), ""},
        {LEVEL("-9"), "level=-9", true, DEFAULT_TIMES RAPIDO("false") LEVEL("-9")},
    };
    for (const auto& row : rows)
        for (const auto& [before, after] :
             {std::pair("<CCX>", "</CCX>"), {"<CCX xmlns='urn:any'>", "</CCX>"}, {"<vendor><CCX>", "</CCX></vendor>"}})
        {
            const CWideString text = WideOf(std::string(before) + row.szElements + after);
            SCOPED_TRACE(tests::Narrow(text));
            S settings = UsedRecord();
            const void* const pContext = settings.connectionContext;
            settings.Parse(text.c_str());
            EXPECT_EQ(row.record, Describe(settings));
            EXPECT_EQ(pContext, settings.connectionContext);
            EXPECT_EQ(row.bIsValid, settings.IsValid());
            CBstr bstrWritten;
            *bstrWritten.Put() = settings.Serialise();
            EXPECT_EQ(0u, tests::TextOf(bstrWritten).find("<CCX xmlns=\"http://www.korvane.com/CCX\">"));
            if (row.szWritten)
            {
                EXPECT_EQ("<CCX>" + std::string(row.szWritten) + "</CCX>", tests::ProfileTree(bstrWritten));
            }
        }
}

TEST_F(ConnectionSettings, UnreadableTextsLeaveEveryFieldNotSet)
{
    for (const WCHAR* szText : {static_cast<const WCHAR*>(nullptr), OLESTR(""), OLESTR("<CCX>"), OLESTR("<CCX/><CCX/>")})
    {
        S settings = UsedRecord();
        settings.Parse(szText);
        EXPECT_EQ("rm=-1 services=-1 off=-1 on=-1 period=-1 roaming=-1", Describe(settings));
        EXPECT_EQ(usedByte, settings.diagnosticSsid[0]);
        EXPECT_TRUE(settings.IsValid());
    }
    EXPECT_EQ("rm=-1 services=-1 off=-1 on=-1 period=-1 roaming=-1 level=0", Describe(S())) << "a fresh record starts as Default";
}

TEST_F(ConnectionSettings, DefaultsOverwriteAllButTimerLevelAndContext)
{
    S settings = UsedRecord();
    const void* const pContext = settings.connectionContext;
    settings.SetDefaults();
    EXPECT_EQ("timer=42 reporting=1 authorized=1 rapido=1 ssid=18 Diagnostic Channel", Describe(settings));
    EXPECT_EQ(pContext, settings.connectionContext);
}

TEST_F(ConnectionSettings, IsWrittenWithoutIndentation)
{
    EXPECT_EQ("<a><b> c </b><d/></a>", tests::Narrow(WithoutIndentation(OLESTR("<a>\n \t<b> c </b>\r\n<d/> </a>\r\n"))));
    EXPECT_EQ("<a> b<c/>d </a>", tests::Narrow(WithoutIndentation(OLESTR("<a> b<c/>d </a>"))));
}
} // namespace
