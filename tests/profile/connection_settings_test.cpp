// The connection options of an IHV profile: what is read from a text, the defaults, the bounds, what is written.
#include "profile/CCXConnectionSettings.h"
#include "profile/IhvProfile.h"
#include "tests/support/ModuleUnderTest.h"
#include "tests/support/XmlVerbs.h"

#include <cstring>

namespace
{
using tests::xml::CaseName;
using tests::xml::XmlCaseTest;
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

struct ReadCase
{
    const char* name;
    CWideString elements;
    Fields fields;         // apart from those of absent groups
    std::string ssid = {}; // where the length is above 0
};

class ConnectionReading : public XmlCaseTest<ReadCase>
{
};

TEST_P(ConnectionReading, GivesTheFields)
{
    const auto& param = GetParam();
    S expected = With(With(ClearedRecord(), absentGroups), param.fields);
    std::memcpy(expected.diagnosticSsid, param.ssid.data(), param.ssid.size());

    const CWideString forms[] = {OLESTR("<CCX>") + param.elements + OLESTR("</CCX>"),
                                 OLESTR("<CCX xmlns='urn:any'>") + param.elements + OLESTR("</CCX>"),
                                 OLESTR("<vendor><CCX>") + param.elements + OLESTR("</CCX></vendor>")};
    for (const auto& text : forms)
    {
        S settings = UsedRecord();
        const void* const pContext = settings.connectionContext;
        settings.Parse(text.c_str());
        EXPECT_EQ(Describe(expected), Describe(settings)) << tests::Narrow(text);
        EXPECT_EQ(pContext, settings.connectionContext);
    }
}

#define MEASUREMENT(content) OLESTR("<RadioMeasurement>" content "</RadioMeasurement>")
#define MEASURED(content) MEASUREMENT("<enabled>" content "</enabled>")
#define ROAMING(content) OLESTR("<AdvancedRoaming>" content "</AdvancedRoaming>")
#define OFF_CHANNEL(text) MEASURED("<MaxOffChannelTimeMs>" text "</MaxOffChannelTimeMs>")
#define CHANNEL(content) OLESTR("<Diagnostics><Channel>" content "</Channel></Diagnostics>")
#define SSID_NAME(text) CHANNEL("<SSID><Name>" text "</Name></SSID>")
#define SSID_HEX(text) CHANNEL("<SSID><Name>Name</Name><Hex>" text "</Hex></SSID>")
#define RAPIDO(text) OLESTR("<Rapido>" text "</Rapido>")
#define ONES "11111111111111111111111111111111" // 32 of them

const ReadCase readCases[] = {
    {"nothing", {}, {}},
    {"measurement_disabled_wins",
     MEASUREMENT("<enabled><MaxOffChannelTimeMs>20</MaxOffChannelTimeMs></enabled><disabled>false</disabled>"),
     {{rm, 0}, {services, -1}, {off, -1}, {on, -1}}},
    {"measurement_neither", MEASUREMENT("enabled"), {{rm, -1}, {services, -1}, {off, -1}, {on, -1}}},
    {"measurement_with_times",
     MEASURED("<MinOnChannelTimeMs>300</MinOnChannelTimeMs><MaxOffChannelTimeMs>20</MaxOffChannelTimeMs>"),
     {{off, 20}, {on, 300}}},
    {"services_disabled_by_presence",
     MEASURED("<disableLocationBasedServices>false</disableLocationBasedServices>"),
     {{services, 0}, {off, -1}, {on, -1}}},
    {"services_only_under_enabled", MEASUREMENT("<enabled/><disableLocationBasedServices/>"), {{off, -1}, {on, -1}}},
    // decimal texts
    {"decimal_blanks_and_sign", OFF_CHANNEL(" \t\r\n +20"), {{off, 20}, {on, -1}}},
    {"decimal_then_letters", OFF_CHANNEL("30ms"), {{off, 30}, {on, -1}}},
    {"decimal_letters_alone", OFF_CHANNEL("ten"), {{off, 0}, {on, -1}}},
    {"decimal_blank_behind_sign", OFF_CHANNEL("- 5"), {{off, 0}, {on, -1}}},
    {"decimal_beyond_32_bits", OFF_CHANNEL("4294967316"), {{off, lMax}, {on, -1}}},
    {"decimal_beyond_64_bits", OFF_CHANNEL("-18446744073709551636"), {{off, lMin}, {on, -1}}},
    // the timer
    {"timer", OLESTR("<KeepAliveTimer><Period>300</Period></KeepAliveTimer>"), {{timer, 1}, {period, 300}}},
    {"timer_without_period", OLESTR("<KeepAliveTimer>5</KeepAliveTimer>"), {{timer, 1}, {period, -1}}},
    // the diagnostic channel
    {"ssid_name_of_first_and_last_printable", SSID_NAME(" ~"), {{ssid, 2}}, " ~"},
    {"ssid_name_of_blanks", SSID_NAME("  "), {{ssid, 2}}, "  "},
    {"ssid_name_empty", SSID_NAME(""), {{ssid, 0}}},
    {"ssid_name_longest", SSID_NAME(ONES), {{ssid, 32}}, ONES},
    {"ssid_name_too_long", SSID_NAME(ONES "1"), {{ssid, -2}}},
    {"ssid_name_with_tab", SSID_NAME("a\tb"), {{ssid, -2}}},
    {"ssid_name_with_delete", SSID_NAME("a\x7F"), {{ssid, -2}}},
    {"ssid_name_whose_low_bytes_are_printable", SSID_NAME("\u0141\u0142"), {{ssid, -2}}},
    {"ssid_hex_wins", SSID_HEX("4c6162"), {{ssid, 3}}, "Lab"},
    {"ssid_hex_every_digit", SSID_HEX("0123456789abcdefABCDEF"), {{ssid, 11}}, "\x01\x23\x45\x67\x89\xAB\xCD\xEF\xAB\xCD\xEF"},
    {"ssid_hex_longest", SSID_HEX(ONES ONES), {{ssid, 32}}, std::string(32, '\x11')},
    {"ssid_hex_too_long", SSID_HEX(ONES ONES "11"), {{ssid, -2}}},
    {"ssid_hex_odd", SSID_HEX("4C616"), {{ssid, -2}}},
    {"ssid_hex_second_letter_beyond_f", SSID_HEX("4g"), {{ssid, -2}}},
    {"ssid_hex_sign", SSID_HEX("+441"), {{ssid, -2}}},
    {"reporting_beside_bad_ssid",
     CHANNEL("<SSID><Hex>x</Hex></SSID><EnableClientReporting>true</EnableClientReporting>"),
     {{ssid, -2}, {reporting, 1}}},
    {"authorized", OLESTR("<Diagnostics><AuthorizedProfile>true</AuthorizedProfile></Diagnostics>"), {{authorized, 1}}},
    // flag texts
    {"rapido_true_in_cdata", RAPIDO("<![CDATA[true]]>"), {{rapido, 1}}},
    {"rapido_other_case", RAPIDO("True"), {{rapido, 0}}},
    {"rapido_leading_blank", RAPIDO(" true"), {{rapido, 0}}},
    {"rapido_blank_behind_a_child", RAPIDO("true<x/> "), {{rapido, 0}}},
    {"rapido_trailing_line_feed", RAPIDO("true\n"), {{rapido, 0}}},
    // Advanced Roaming
    {"roaming_disabled_wins", ROAMING("<enabled><RoamingOption>2</RoamingOption></enabled><disabled/>"), {{roaming, 0}}},
    {"roaming_neither", ROAMING("<RoamingOption>2</RoamingOption>"), {{roaming, -1}}},
    {"roaming_without_level", ROAMING("<enabled/>"), {}},
    {"roaming_with_level", ROAMING("<enabled><RoamingOption>-9</RoamingOption></enabled>"), {{level, -9}}},
};
INSTANTIATE_TEST_SUITE_P(Texts, ConnectionReading, testing::ValuesIn(readCases), CaseName<ReadCase>);

class ConnectionRecord : public tests::xml::XmlTest
{
};

TEST_F(ConnectionRecord, ClearAndUnreadableTextsLeaveEveryFieldNotSet)
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

TEST_F(ConnectionRecord, DefaultsOverwriteAllButTimerLevelAndContext)
{
    S settings = UsedRecord();
    const void* const pContext = settings.connectionContext;
    settings.SetDefaults();
    EXPECT_EQ("1 1 50 400 42 0 1 1 1 1 77 18 Diagnostic Channel", Describe(settings));
    EXPECT_EQ(pContext, settings.connectionContext);
}

TEST_F(ConnectionRecord, ValidityHoldsTheBounds)
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

struct WriteCase
{
    const char* name;
    bool bFromDefaults; // else from a cleared record; the level starts as 3 in both
    Fields fields;
    std::string tree;
    Fields readBack; // where that differs from what was written
};

class ConnectionWriting : public XmlCaseTest<WriteCase>
{
};

TEST_P(ConnectionWriting, GivesTheElementsInOrderAndReadsBack)
{
    const auto& param = GetParam();
    S settings = With(S(), {{level, 3}});
    if (param.bFromDefaults)
        settings.SetDefaults();
    settings = With(settings, param.fields);
    CBstr bstrWritten;
    *bstrWritten.Put() = settings.Serialise();
    EXPECT_EQ("<CCX>" + param.tree + "</CCX>", tests::ProfileTree(bstrWritten));
    EXPECT_EQ(0u, tests::TextOf(bstrWritten).find("<CCX xmlns=\"http://www.korvane.com/CCX\">"));

    S expected = With(settings, param.readBack);
    std::memcpy(expected.diagnosticSsid, "Diagnostic Channel", 18);
    settings.Parse(bstrWritten.Get());
    EXPECT_EQ(Describe(expected), Describe(settings));
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

const WriteCase writeCases[] = {
    {"cleared", false, {}, least, ClearedAnd({})},
    {"defaults", true, {}, measured + "<Rapido>true</Rapido>" + roamingOn + diagnosed, {}},
    {"everything",
     true,
     {{services, 0}, {off, -1}, {on, 7}, {timer, 1}, {period, lMin}, {level, -5}},
     "<RadioMeasurement><enabled><disableLocationBasedServices/><MaxOffChannelTimeMs>-1</MaxOffChannelTimeMs>"
     "<MinOnChannelTimeMs>7</MinOnChannelTimeMs></enabled></RadioMeasurement><Rapido>true</Rapido>"
     "<AdvancedRoaming><enabled><RoamingOption>-5</RoamingOption></enabled></AdvancedRoaming>"
     "<KeepAliveTimer><Period>-2147483648</Period></KeepAliveTimer>" +
         diagnosed,
     {}},
    {"measurement_disabled_and_flags_not_readable",
     true,
     {{rm, 0}, {rapido, -2}, {authorized, -2}, {reporting, -2}},
     "<RadioMeasurement><disabled/></RadioMeasurement><Rapido>false</Rapido>" + roamingOn +
         "<Diagnostics><AuthorizedProfile>false</AuthorizedProfile><Channel>" + ssidName +
         "<EnableClientReporting>false</EnableClientReporting></Channel></Diagnostics>",
     {{services, -1}, {off, -1}, {on, -1}, {rapido, 0}, {authorized, 0}, {reporting, 0}}},
    {"measurement_and_timer_beyond_their_values",
     false,
     {{rm, 5}, {timer, 2}, {period, 9}},
     "<RadioMeasurement><disabled/></RadioMeasurement>" + least,
     {{rm, 0}, {rapido, 0}, {roaming, 0}, {timer, 0}, {period, 0}}},
    {"reporting_alone",
     false,
     {{ssid, 0}, {reporting, 1}},
     least + "<Diagnostics><Channel><EnableClientReporting>true</EnableClientReporting></Channel></Diagnostics>",
     ClearedAnd({{ssid, -1}})},
    {"authorization_alone",
     false,
     {{ssid, -2}, {authorized, 0}},
     least + "<Diagnostics><AuthorizedProfile>false</AuthorizedProfile></Diagnostics>",
     ClearedAnd({{ssid, -1}})},
    {"ssid_of_any_name",
     false,
     {{ssid, 1}},
     least + "<Diagnostics><Channel>" + ssidName + "</Channel></Diagnostics>",
     ClearedAnd({{ssid, 18}})},
};
TEST_F(ConnectionRecord, IsWrittenWithoutIndentation)
{
    EXPECT_EQ("<a><b> c </b><d/></a>", tests::Narrow(WithoutIndentation(OLESTR("<a>\n \t<b> c </b>\r\n<d/> </a>\r\n"))));
    EXPECT_EQ("<a> b<c/>d </a>", tests::Narrow(WithoutIndentation(OLESTR("<a> b<c/>d </a>"))));
}

INSTANTIATE_TEST_SUITE_P(Records, ConnectionWriting, testing::ValuesIn(writeCases), CaseName<WriteCase>);
} // namespace
