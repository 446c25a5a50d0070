// The connection options of an IHV profile: what is read from a text, the defaults, the bounds, what is written.
#include "profile/CCXConnectionSettings.h"
#include "profile/IhvProfile.h"
#include "tests/support/ModuleUnderTest.h"
#include "tests/support/XmlTest.h"

#include <cstring>

namespace
{
using S = CCXConnectionSettings;
constexpr LONG lMax = 2147483647;
constexpr LONG lMin = -lMax - 1;

// Values of fields, where they differ from what a row starts from.
using Fields = std::vector<std::pair<LONG S::*, LONG>>;
constexpr auto rm = &S::radioMeasurement;
constexpr auto services = &S::locationBasedServices;
constexpr auto off = &S::maxOffChannelTimeMs;
constexpr auto on = &S::minOnChannelTimeMs;
constexpr auto timer = &S::keepAliveEnabled;
constexpr auto period = &S::keepAlivePeriod;
constexpr auto ssid = &S::diagnosticSsidLength;
constexpr auto reporting = &S::clientReporting;
constexpr auto authorized = &S::authorizedProfile;
constexpr auto rapido = &S::rapido;
constexpr auto roaming = &S::advancedRoaming;
constexpr auto level = &S::roamingOption;
constexpr LONG S::*allFields[] = {rm, services, off, on, timer, period, reporting, authorized, rapido, roaming, level, ssid};

S With(S settings, const Fields& fields)
{
    for (const auto& [field, lValue] : fields)
        settings.*field = lValue;
    return settings;
}

// All that a record says, in the order above; SSID bytes beyond the length do not count.
std::string Describe(const S& settings)
{
    std::string text;
    for (const auto field : allFields)
        text += std::to_string(settings.*field) + ' ';
    for (LONG i = 0; i < settings.diagnosticSsidLength; ++i)
        text += static_cast<char>(settings.diagnosticSsid[i]);
    return text;
}

// A record that was in use before; what no operation may touch is set to be recognised.
constexpr LONG usedLevel = 77;
constexpr BYTE usedByte = 0x55;

S UsedRecord(LONG lEverywhere = 42)
{
    S settings;
    for (const auto field : allFields)
        settings.*field = lEverywhere;
    settings.roamingOption = usedLevel;
    std::memset(settings.diagnosticSsid, usedByte, sizeof(settings.diagnosticSsid));
    settings.connectionContext = &settings.connectionContext;
    return settings;
}

S ClearedRecord()
{
    S settings = UsedRecord();
    settings.Clear();
    return settings;
}

// What a profile without any connection element stands for.
const Fields absentGroups = {{rm, 1}, {services, 1}, {off, 50}, {on, 400}, {timer, 0}, {period, 0}, {roaming, 1}};

class ConnectionSettings : public tests::xml::XmlTest
{
};

#define MEASUREMENT(content) OLESTR("<RadioMeasurement>" content "</RadioMeasurement>")
#define MEASURED(content) MEASUREMENT("<enabled>" content "</enabled>")
#define ROAMING(content) OLESTR("<AdvancedRoaming>" content "</AdvancedRoaming>")
#define OFF_CHANNEL(text) MEASURED("<MaxOffChannelTimeMs>" text "</MaxOffChannelTimeMs>")
#define CHANNEL(content) OLESTR("<Diagnostics><Channel>" content "</Channel></Diagnostics>")
#define SSID_NAME(text) CHANNEL("<SSID><Name>" text "</Name></SSID>")
#define SSID_HEX(text) CHANNEL("<SSID><Name>Name</Name><Hex>" text "</Hex></SSID>")
#define RAPIDO(text) OLESTR("<Rapido>" text "</Rapido>")
#define ONES "11111111111111111111111111111111" // 32 of them

TEST_F(ConnectionSettings, ReadTheElements)
{
    const struct
    {
        CWideString elements;
        Fields fields;         // apart from those of absent groups
        std::string ssid = {}; // where the length is above 0
    } rows[] = {
        {{}, {}},
        {MEASUREMENT("<enabled><MaxOffChannelTimeMs>20</MaxOffChannelTimeMs></enabled><disabled>false</disabled>"),
         {{rm, 0}, {services, -1}, {off, -1}, {on, -1}}},
        {MEASUREMENT("enabled"), {{rm, -1}, {services, -1}, {off, -1}, {on, -1}}},
        {MEASURED("<MinOnChannelTimeMs>300</MinOnChannelTimeMs><MaxOffChannelTimeMs>20</MaxOffChannelTimeMs>"),
         {{off, 20}, {on, 300}}},
        {MEASURED("<disableLocationBasedServices>false</disableLocationBasedServices>"), {{services, 0}, {off, -1}, {on, -1}}},
        {MEASUREMENT("<enabled/><disableLocationBasedServices/>"), {{off, -1}, {on, -1}}},
        // decimal texts
        {OFF_CHANNEL(" \t\r\n +20"), {{off, 20}, {on, -1}}},
        {OFF_CHANNEL("30ms"), {{off, 30}, {on, -1}}},
        {OFF_CHANNEL("ten"), {{off, 0}, {on, -1}}},
        {OFF_CHANNEL("- 5"), {{off, 0}, {on, -1}}},
        {OFF_CHANNEL("4294967316"), {{off, lMax}, {on, -1}}},
        {OFF_CHANNEL("-18446744073709551636"), {{off, lMin}, {on, -1}}},
        // the timer
        {OLESTR("<KeepAliveTimer><Period>300</Period></KeepAliveTimer>"), {{timer, 1}, {period, 300}}},
        {OLESTR("<KeepAliveTimer>5</KeepAliveTimer>"), {{timer, 1}, {period, -1}}},
        // the diagnostic channel
        {SSID_NAME(" ~"), {{ssid, 2}}, " ~"},
        {SSID_NAME("  "), {{ssid, 2}}, "  "},
        {SSID_NAME(""), {{ssid, 0}}},
        {SSID_NAME(ONES), {{ssid, 32}}, ONES},
        {SSID_NAME(ONES "1"), {{ssid, -2}}},
        {SSID_NAME("a\tb"), {{ssid, -2}}},
        {SSID_NAME("a\x7F"), {{ssid, -2}}},
        {SSID_NAME("\u0141\u0142"), {{ssid, -2}}},
        {SSID_HEX("4c6162"), {{ssid, 3}}, "Lab"},
        {SSID_HEX("0123456789abcdefABCDEF"), {{ssid, 11}}, "\x01\x23\x45\x67\x89\xAB\xCD\xEF\xAB\xCD\xEF"},
        {SSID_HEX(ONES ONES), {{ssid, 32}}, std::string(32, '\x11')},
        {SSID_HEX(ONES ONES "11"), {{ssid, -2}}},
        {SSID_HEX("4C616"), {{ssid, -2}}},
        {SSID_HEX("4g"), {{ssid, -2}}},
        {SSID_HEX("+441"), {{ssid, -2}}},
        {CHANNEL("<SSID><Hex>x</Hex></SSID><EnableClientReporting>true</EnableClientReporting>"), {{ssid, -2}, {reporting, 1}}},
        {OLESTR("<Diagnostics><AuthorizedProfile>true</AuthorizedProfile></Diagnostics>"), {{authorized, 1}}},
        // flag texts
        {RAPIDO("<![CDATA[true]]>"), {{rapido, 1}}},
        {RAPIDO("True"), {{rapido, 0}}},
        {RAPIDO(" true"), {{rapido, 0}}},
        {RAPIDO("true<x/> "), {{rapido, 0}}},
        {RAPIDO("true\n"), {{rapido, 0}}},
        // Advanced Roaming
        {ROAMING("<enabled><RoamingOption>2</RoamingOption></enabled><disabled/>"), {{roaming, 0}}},
        {ROAMING("<RoamingOption>2</RoamingOption>"), {{roaming, -1}}},
        {ROAMING("<enabled/>"), {}},
        {ROAMING("<enabled><RoamingOption>-9</RoamingOption></enabled>"), {{level, -9}}},
    };
    for (const auto& row : rows)
        for (const CWideString& text : {OLESTR("<CCX>") + row.elements + OLESTR("</CCX>"),
                                        OLESTR("<CCX xmlns='urn:any'>") + row.elements + OLESTR("</CCX>"),
                                        OLESTR("<vendor><CCX>") + row.elements + OLESTR("</CCX></vendor>")})
        {
            S expected = With(With(ClearedRecord(), absentGroups), row.fields);
            std::memcpy(expected.diagnosticSsid, row.ssid.data(), row.ssid.size());
            S settings = UsedRecord();
            const void* const pContext = settings.connectionContext;
            settings.Parse(text.c_str());
            EXPECT_EQ(Describe(expected), Describe(settings)) << tests::Narrow(text);
            EXPECT_EQ(pContext, settings.connectionContext);
        }
}

TEST_F(ConnectionSettings, ClearAndUnreadableTextsLeaveEveryFieldNotSet)
{
    const S expected = With(UsedRecord(-1), {{timer, 0}});
    for (const WCHAR* szText : {static_cast<const WCHAR*>(nullptr), OLESTR(""), OLESTR("<CCX>"), OLESTR("<CCX/><CCX/>")})
    {
        S settings = UsedRecord();
        settings.Parse(szText);
        EXPECT_EQ(Describe(expected), Describe(settings));
        EXPECT_EQ(usedByte, settings.diagnosticSsid[0]);
        EXPECT_TRUE(settings.IsValid());
    }
    EXPECT_EQ(Describe(With(expected, {{level, 0}})), Describe(S())) << "a fresh record starts as Default";
}

TEST_F(ConnectionSettings, DefaultsOverwriteAllButTimerLevelAndContext)
{
    S settings = UsedRecord();
    const void* const pContext = settings.connectionContext;
    settings.SetDefaults();
    EXPECT_EQ("1 1 50 400 42 0 1 1 1 1 77 18 Diagnostic Channel", Describe(settings));
    EXPECT_EQ(pContext, settings.connectionContext);
}

TEST_F(ConnectionSettings, ValidityHoldsTheBounds)
{
    const struct
    {
        Fields fields; // on a cleared record
        bool bIsValid;
    } rows[] = {
        {{{rm, 1}, {off, 9}, {on, 0}}, false},
        {{{rm, 1}, {off, 10}, {on, 0}}, true},
        {{{rm, 1}, {off, 50}, {on, 500}}, true},
        {{{rm, 1}, {off, 51}, {on, 500}}, false},
        {{{rm, 1}, {off, 50}, {on, 501}}, false},
        {{{rm, 1}, {off, 50}, {on, -1}}, false},
        {{{rm, 0}, {off, 51}, {on, 501}}, true},
        {{{timer, 1}}, false},
        {{{timer, 1}, {period, 0}}, true},
        {{{timer, 1}, {period, 255}}, true},
        {{{timer, 1}, {period, 256}}, false},
        {{{period, 256}}, true},
        {{{ssid, -2}}, false},
        {{{ssid, 33}, {services, -9}, {reporting, -2}, {authorized, -2}, {rapido, -2}, {roaming, 9}, {level, -9}}, true},
    };
    for (const auto& row : rows)
    {
        S settings = With(ClearedRecord(), row.fields);
        EXPECT_EQ(row.bIsValid, settings.IsValid()) << Describe(With(settings, {{ssid, 0}}));
        settings.SetDefaults();
        EXPECT_TRUE(settings.IsValid());
    }
}

const std::string measured = "<RadioMeasurement><enabled><MaxOffChannelTimeMs>50</MaxOffChannelTimeMs>"
                             "<MinOnChannelTimeMs>400</MinOnChannelTimeMs></enabled></RadioMeasurement>";
const std::string roamingOn = "<AdvancedRoaming><enabled><RoamingOption>3</RoamingOption></enabled></AdvancedRoaming>";
const std::string ssidName = "<SSID><Name>Diagnostic Channel</Name></SSID>";
const std::string diagnosed = "<Diagnostics><AuthorizedProfile>true</AuthorizedProfile><Channel>" + ssidName +
                              "<EnableClientReporting>true</EnableClientReporting></Channel></Diagnostics>";
const std::string least = "<Rapido>false</Rapido><AdvancedRoaming><disabled/></AdvancedRoaming>";

// A cleared record lacks Radio Measurement, which reads back with its defaults.
Fields ClearedAnd(Fields fields)
{
    const Fields cleared = {{rm, 1}, {services, 1}, {off, 50}, {on, 400}, {rapido, 0}, {roaming, 0}, {period, 0}};
    fields.insert(fields.begin(), cleared.begin(), cleared.end());
    return fields;
}

TEST_F(ConnectionSettings, WriteTheElementsInOrderAndReadThemBack)
{
    const struct
    {
        bool bFromDefaults; // else from a cleared record; the level starts as 3 in both
        Fields fields;
        std::string tree;
        Fields readBack; // where that differs from what was written
    } rows[] = {
        {false, {}, least, ClearedAnd({})},
        {true, {}, measured + "<Rapido>true</Rapido>" + roamingOn + diagnosed, {}},
        {true,
         {{services, 0}, {off, -1}, {on, 7}, {timer, 1}, {period, lMin}, {level, -5}},
         "<RadioMeasurement><enabled><disableLocationBasedServices/><MaxOffChannelTimeMs>-1</MaxOffChannelTimeMs>"
         "<MinOnChannelTimeMs>7</MinOnChannelTimeMs></enabled></RadioMeasurement><Rapido>true</Rapido>"
         "<AdvancedRoaming><enabled><RoamingOption>-5</RoamingOption></enabled></AdvancedRoaming>"
         "<KeepAliveTimer><Period>-2147483648</Period></KeepAliveTimer>" +
             diagnosed,
         {}},
        {true,
         {{rm, 0}, {rapido, -2}, {authorized, -2}, {reporting, -2}},
         "<RadioMeasurement><disabled/></RadioMeasurement><Rapido>false</Rapido>" + roamingOn +
             "<Diagnostics><AuthorizedProfile>false</AuthorizedProfile><Channel>" + ssidName +
             "<EnableClientReporting>false</EnableClientReporting></Channel></Diagnostics>",
         {{services, -1}, {off, -1}, {on, -1}, {rapido, 0}, {authorized, 0}, {reporting, 0}}},
        {false,
         {{rm, 5}, {timer, 2}, {period, 9}},
         "<RadioMeasurement><disabled/></RadioMeasurement>" + least,
         {{rm, 0}, {rapido, 0}, {roaming, 0}, {timer, 0}, {period, 0}}},
        {false,
         {{ssid, 0}, {reporting, 1}},
         least + "<Diagnostics><Channel><EnableClientReporting>true</EnableClientReporting></Channel></Diagnostics>",
         ClearedAnd({{ssid, -1}})},
        {false,
         {{ssid, -2}, {authorized, 0}},
         least + "<Diagnostics><AuthorizedProfile>false</AuthorizedProfile></Diagnostics>",
         ClearedAnd({{ssid, -1}})},
        {false, {{ssid, 1}}, least + "<Diagnostics><Channel>" + ssidName + "</Channel></Diagnostics>", ClearedAnd({{ssid, 18}})},
    };
    for (const auto& row : rows)
    {
        S settings = With(S(), {{level, 3}});
        if (row.bFromDefaults)
            settings.SetDefaults();
        settings = With(settings, row.fields);
        CBstr bstrWritten;
        *bstrWritten.Put() = settings.Serialise();
        EXPECT_EQ("<CCX>" + row.tree + "</CCX>", tests::ProfileTree(bstrWritten));
        EXPECT_EQ(0u, tests::TextOf(bstrWritten).find("<CCX xmlns=\"http://www.korvane.com/CCX\">"));

        S expected = With(settings, row.readBack);
        std::memcpy(expected.diagnosticSsid, "Diagnostic Channel", 18);
        settings.Parse(bstrWritten.Get());
        EXPECT_EQ(Describe(expected), Describe(settings)) << row.tree;
    }
}

TEST_F(ConnectionSettings, IsWrittenWithoutIndentation)
{
    EXPECT_EQ("<a><b> c </b><d/></a>", tests::Narrow(WithoutIndentation(OLESTR("<a>\n \t<b> c </b>\r\n<d/> </a>\r\n"))));
    EXPECT_EQ("<a> b<c/>d </a>", tests::Narrow(WithoutIndentation(OLESTR("<a> b<c/>d </a>"))));
}

} // namespace
