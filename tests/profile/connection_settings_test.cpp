// The connection options of an IHV profile: what is read from a text, the defaults, the bounds, what is written.
#include "profile/CCXConnectionSettings.h"
#include "tests/support/ModuleUnderTest.h"
#include "tests/support/XmlVerbs.h"

#include <cstring>
#include <sstream>

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

void Set(S& settings, const Fields& fields)
{
    for (const auto& [field, lValue] : fields)
        settings.*field = lValue;
}

// All that a record says; SSID bytes beyond the length do not count.
std::string Describe(const S& settings)
{
    std::ostringstream text;
    const std::pair<const char*, LONG S::*> names[] = {
        {"rm", rm},
        {"services", services},
        {"off", off},
        {"on", on},
        {"timer", timer},
        {"period", period},
        {"reporting", reporting},
        {"authorized", authorized},
        {"rapido", rapido},
        {"roaming", roaming},
        {"level", level},
    };
    for (const auto& [szName, field] : names)
        text << szName << ' ' << settings.*field << ", ";
    text << "ssid " << settings.diagnosticSsidLength << " '";
    for (LONG i = 0; i < settings.diagnosticSsidLength; ++i)
        text << static_cast<char>(settings.diagnosticSsid[i]);
    text << "'";
    return text.str();
}

// A record that was in use before; what no operation may touch is set to be recognised.
constexpr LONG usedLevel = 77;
constexpr BYTE usedByte = 0x55;

S UsedRecord(LONG lEverywhere = 42)
{
    S settings;
    for (const auto field : {rm, services, off, on, timer, period, ssid, reporting, authorized, rapido, roaming})
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
    Fields fields;           // apart from those of absent groups
    const char* szSsid = ""; // where the length is above 0
};

class ConnectionReading : public XmlCaseTest<ReadCase>
{
};

TEST_P(ConnectionReading, GivesTheFields)
{
    const auto& param = GetParam();
    S expected = ClearedRecord();
    Set(expected, absentGroups);
    Set(expected, param.fields);
    std::memcpy(expected.diagnosticSsid, param.szSsid, std::strlen(param.szSsid));

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
        EXPECT_EQ(usedByte, settings.diagnosticSsid[maxSsidLength - 1]);
    }
}

#define MEASUREMENT(content) OLESTR("<RadioMeasurement>" content "</RadioMeasurement>")
#define MEASURED(content) MEASUREMENT("<enabled>" content "</enabled>")
#define ROAMING(content) OLESTR("<AdvancedRoaming>" content "</AdvancedRoaming>")
#define OFF_CHANNEL(text) MEASURED("<MaxOffChannelTimeMs>" text "</MaxOffChannelTimeMs>")
#define CHANNEL(content) OLESTR("<Diagnostics><Channel>" content "</Channel></Diagnostics>")
#define RAPIDO(text) OLESTR("<Rapido>" text "</Rapido>")

const Fields measurementOff = {{rm, 0}, {services, -1}, {off, -1}, {on, -1}};

const ReadCase readCases[] = {
    {"nothing", {}, {}},
    {"unknown_elements", OLESTR("<openNetwork/><Radio>x</Radio>"), {}},
    // Radio Measurement
    {"measurement_disabled", MEASUREMENT("<disabled/>"), measurementOff},
    {"measurement_disabled_wins",
     MEASUREMENT("<enabled><MaxOffChannelTimeMs>20</MaxOffChannelTimeMs></enabled><disabled>false</disabled>"), measurementOff},
    {"measurement_neither", MEASUREMENT("enabled"), {{rm, -1}, {services, -1}, {off, -1}, {on, -1}}},
    {"measurement_without_times", MEASURED(""), {{off, -1}, {on, -1}}},
    {"measurement_with_times",
     MEASURED("<MinOnChannelTimeMs>300</MinOnChannelTimeMs><MaxOffChannelTimeMs>20</MaxOffChannelTimeMs>"),
     {{off, 20}, {on, 300}}},
    {"services_disabled_by_presence",
     MEASURED("<disableLocationBasedServices>false</disableLocationBasedServices>"),
     {{services, 0}, {off, -1}, {on, -1}}},
    {"services_only_under_enabled", MEASUREMENT("<enabled/><disableLocationBasedServices/>"), {{off, -1}, {on, -1}}},
    {"first_group_counts", MEASUREMENT("<disabled/>") MEASURED(""), measurementOff},
    {"names_are_case_sensitive", OLESTR("<radioMeasurement><disabled/></radioMeasurement>"), {}},
    // decimal texts
    {"decimal_blanks_and_sign", OFF_CHANNEL(" \t\r\n +20"), {{off, 20}, {on, -1}}},
    {"decimal_negative", OFF_CHANNEL("-7"), {{off, -7}, {on, -1}}},
    {"decimal_then_letters", OFF_CHANNEL("30ms"), {{off, 30}, {on, -1}}},
    {"decimal_then_blank", OFF_CHANNEL("3 0"), {{off, 3}, {on, -1}}},
    {"decimal_letters_alone", OFF_CHANNEL("ten"), {{off, 0}, {on, -1}}},
    {"decimal_empty", OFF_CHANNEL(""), {{off, 0}, {on, -1}}},
    {"decimal_blank_behind_sign", OFF_CHANNEL("- 5"), {{off, 0}, {on, -1}}},
    {"decimal_largest", OFF_CHANNEL("2147483647"), {{off, lMax}, {on, -1}}},
    {"decimal_smallest", OFF_CHANNEL("-2147483648"), {{off, lMin}, {on, -1}}},
    {"decimal_beyond_32_bits", OFF_CHANNEL("4294967316"), {{off, lMax}, {on, -1}}},
    {"decimal_beyond_64_bits", OFF_CHANNEL("-18446744073709551636"), {{off, lMin}, {on, -1}}},
    {"decimal_comment_inside", OFF_CHANNEL("2<!-- -->0"), {{off, 20}, {on, -1}}},
    // the timer
    {"timer", OLESTR("<KeepAliveTimer><Period>300</Period></KeepAliveTimer>"), {{timer, 1}, {period, 300}}},
    {"timer_without_period", OLESTR("<KeepAliveTimer>5</KeepAliveTimer>"), {{timer, 1}, {period, -1}}},
    // the diagnostic channel
    {"ssid_name", CHANNEL("<SSID><Name>Lab 4</Name></SSID>"), {{ssid, 5}}, "Lab 4"},
    {"ssid_name_of_blanks", CHANNEL("<SSID><Name>  </Name></SSID>"), {{ssid, 2}}, "  "},
    {"ssid_name_with_entity", CHANNEL("<SSID><Name>R&amp;D</Name></SSID>"), {{ssid, 3}}, "R&D"},
    {"ssid_name_empty", CHANNEL("<SSID><Name/></SSID>"), {{ssid, 0}}},
    {"ssid_name_too_long", CHANNEL("<SSID><Name>123456789012345678901234567890123</Name></SSID>"), {{ssid, -2}}},
    {"ssid_name_not_ascii", CHANNEL("<SSID><Name>B\u00FCro</Name></SSID>"), {{ssid, -2}}},
    {"ssid_hex", CHANNEL("<SSID><Hex>4C6162</Hex></SSID>"), {{ssid, 3}}, "Lab"},
    {"ssid_hex_wins", CHANNEL("<SSID><Name>Name</Name><Hex>4c6162</Hex></SSID>"), {{ssid, 3}}, "Lab"},
    {"ssid_hex_odd_beside_good_name", CHANNEL("<SSID><Name>Name</Name><Hex>4C616</Hex></SSID>"), {{ssid, -2}}},
    {"ssid_missing", CHANNEL("<SSID/>"), {}},
    {"reporting_false", CHANNEL("<EnableClientReporting>false</EnableClientReporting>"), {{reporting, 0}}},
    {"reporting_beside_bad_ssid",
     CHANNEL("<SSID><Hex>x</Hex></SSID><EnableClientReporting>true</EnableClientReporting>"),
     {{ssid, -2}, {reporting, 1}}},
    {"authorized", OLESTR("<Diagnostics><AuthorizedProfile>true</AuthorizedProfile></Diagnostics>"), {{authorized, 1}}},
    {"authorized_not_in_the_channel", CHANNEL("<AuthorizedProfile>true</AuthorizedProfile>"), {}},
    // flag texts
    {"rapido_true_in_cdata", RAPIDO("<![CDATA[true]]>"), {{rapido, 1}}},
    {"rapido_false", RAPIDO("false"), {{rapido, 0}}},
    {"rapido_other_case", RAPIDO("True"), {{rapido, 0}}},
    {"rapido_leading_blank", RAPIDO(" true"), {{rapido, 0}}},
    {"rapido_trailing_line_feed", RAPIDO("true\n"), {{rapido, 0}}},
    {"rapido_empty", RAPIDO(""), {{rapido, 0}}},
    // Advanced Roaming
    {"roaming_disabled", ROAMING("<disabled/>"), {{roaming, 0}}},
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
    S expected = UsedRecord(-1);
    expected.keepAliveEnabled = 0;
    const WCHAR* const unreadable[] = {nullptr, OLESTR(""), OLESTR("<CCX>"), OLESTR("Rapido"), OLESTR("<CCX/><CCX/>")};
    for (const WCHAR* szText : unreadable)
    {
        S settings = UsedRecord();
        const void* const pContext = settings.connectionContext;
        settings.Parse(szText);
        EXPECT_EQ(Describe(expected), Describe(settings));
        EXPECT_EQ(pContext, settings.connectionContext);
        EXPECT_EQ(usedByte, settings.diagnosticSsid[0]);
        EXPECT_TRUE(settings.IsValid());
    }
    EXPECT_EQ(Describe(expected), Describe(ClearedRecord()));
    expected.roamingOption = 0; // a fresh record starts as Default
    EXPECT_EQ(Describe(expected), Describe(S()));
}

TEST_F(ConnectionRecord, DefaultsOverwriteAllButTimerLevelAndContext)
{
    S settings = UsedRecord();
    const void* const pContext = settings.connectionContext;
    settings.SetDefaults();
    EXPECT_EQ("rm 1, services 1, off 50, on 400, timer 42, period 0, reporting 1, authorized 1, rapido 1, roaming 1, level 77, "
              "ssid 18 'Diagnostic Channel'",
              Describe(settings));
    EXPECT_EQ(pContext, settings.connectionContext);
}

struct ValidityCase
{
    const char* name;
    Fields fields; // on a cleared record
    bool bIsValid;
};

class ConnectionValidity : public XmlCaseTest<ValidityCase>
{
};

TEST_P(ConnectionValidity, HoldsTheBounds)
{
    S settings = ClearedRecord();
    Set(settings, GetParam().fields);
    EXPECT_EQ(GetParam().bIsValid, settings.IsValid());
    settings.SetDefaults();
    EXPECT_TRUE(settings.IsValid());
}

const ValidityCase validityCases[] = {
    {"off_channel_9", {{rm, 1}, {off, 9}, {on, 0}}, false},
    {"off_channel_10_on_channel_0", {{rm, 1}, {off, 10}, {on, 0}}, true},
    {"off_channel_50_on_channel_500", {{rm, 1}, {off, 50}, {on, 500}}, true},
    {"off_channel_51", {{rm, 1}, {off, 51}, {on, 500}}, false},
    {"on_channel_501", {{rm, 1}, {off, 50}, {on, 501}}, false},
    {"on_channel_not_set", {{rm, 1}, {off, 50}, {on, -1}}, false},
    {"times_of_disabled_measurement", {{rm, 0}, {off, 51}, {on, 501}}, true},
    {"times_of_unknown_measurement", {{off, 51}, {on, 501}}, true},
    {"period_not_set", {{timer, 1}}, false},
    {"period_0", {{timer, 1}, {period, 0}}, true},
    {"period_255", {{timer, 1}, {period, 255}}, true},
    {"period_256", {{timer, 1}, {period, 256}}, false},
    {"period_of_stopped_timer", {{period, 256}}, true},
    {"ssid_not_converted", {{ssid, -2}}, false},
    {"ssid_beyond_its_bytes", {{ssid, 33}}, true},
    {"unchecked_fields", {{services, -9}, {reporting, -2}, {authorized, -2}, {rapido, -2}, {roaming, 9}, {level, -9}}, true},
};
INSTANTIATE_TEST_SUITE_P(Bounds, ConnectionValidity, testing::ValuesIn(validityCases), CaseName<ValidityCase>);

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
    S settings;
    settings.roamingOption = 3;
    if (param.bFromDefaults)
        settings.SetDefaults();
    Set(settings, param.fields);
    const auto before = Describe(settings);
    CBstr bstrWritten;
    *bstrWritten.Put() = settings.Serialise();
    EXPECT_EQ("<CCX>" + param.tree + "</CCX>", tests::ProfileTree(bstrWritten));
    EXPECT_EQ(0u, tests::TextOf(bstrWritten).find("<CCX xmlns=\"http")) << "no declaration, and the namespace on the root";
    EXPECT_EQ(before, Describe(settings));

    S expected = settings;
    NameToSsid(OLESTR("Diagnostic Channel"), expected.diagnosticSsid, &expected.diagnosticSsidLength);
    expected.diagnosticSsidLength = settings.diagnosticSsidLength;
    Set(expected, param.readBack);
    settings.Parse(bstrWritten.Get());
    EXPECT_EQ(Describe(expected), Describe(settings));
}

const std::string measured = "<RadioMeasurement><enabled><MaxOffChannelTimeMs>50</MaxOffChannelTimeMs>"
                             "<MinOnChannelTimeMs>400</MinOnChannelTimeMs></enabled></RadioMeasurement>";
const std::string rapidoOn = "<Rapido>true</Rapido>";
const std::string rapidoOff = "<Rapido>false</Rapido>";
const std::string roamingOn = "<AdvancedRoaming><enabled><RoamingOption>3</RoamingOption></enabled></AdvancedRoaming>";
const std::string roamingOff = "<AdvancedRoaming><disabled/></AdvancedRoaming>";
const std::string ssidName = "<SSID><Name>Diagnostic Channel</Name></SSID>";
const std::string diagnosed = "<Diagnostics><AuthorizedProfile>true</AuthorizedProfile><Channel>" + ssidName +
                              "<EnableClientReporting>true</EnableClientReporting></Channel></Diagnostics>";
const std::string least = rapidoOff + roamingOff;

// A cleared record lacks Radio Measurement, which reads back with its defaults.
const Fields clearedReadBack = {{rm, 1}, {services, 1}, {off, 50}, {on, 400}, {rapido, 0}, {roaming, 0}, {period, 0}};
Fields ClearedAnd(Fields fields)
{
    fields.insert(fields.begin(), clearedReadBack.begin(), clearedReadBack.end());
    return fields;
}

const WriteCase writeCases[] = {
    {"cleared", false, {}, least, clearedReadBack},
    {"defaults", true, {}, measured + rapidoOn + roamingOn + diagnosed, {}},
    {"everything",
     true,
     {{services, 0}, {off, -1}, {on, 7}, {timer, 1}, {period, lMin}, {level, -5}},
     "<RadioMeasurement><enabled><disableLocationBasedServices/><MaxOffChannelTimeMs>-1</MaxOffChannelTimeMs>"
     "<MinOnChannelTimeMs>7</MinOnChannelTimeMs></enabled></RadioMeasurement>" +
         rapidoOn +
         "<AdvancedRoaming><enabled><RoamingOption>-5</RoamingOption></enabled></AdvancedRoaming>"
         "<KeepAliveTimer><Period>-2147483648</Period></KeepAliveTimer>" +
         diagnosed,
     {}},
    {"measurement_disabled",
     true,
     {{rm, 0}},
     "<RadioMeasurement><disabled/></RadioMeasurement>" + rapidoOn + roamingOn + diagnosed,
     {{services, -1}, {off, -1}, {on, -1}}},
    {"measurement_out_of_range",
     false,
     {{rm, 5}},
     "<RadioMeasurement><disabled/></RadioMeasurement>" + least,
     {{rm, 0}, {rapido, 0}, {roaming, 0}, {period, 0}}},
    {"services_not_set", true, {{services, -1}}, measured + rapidoOn + roamingOn + diagnosed, {{services, 1}}},
    {"timer_only_when_1", false, {{timer, 2}, {period, 9}}, least, ClearedAnd({{timer, 0}})},
    {"flags_not_readable",
     true,
     {{rapido, -2}, {authorized, -2}, {reporting, -2}},
     measured + rapidoOff + roamingOn + "<Diagnostics><AuthorizedProfile>false</AuthorizedProfile><Channel>" + ssidName +
         "<EnableClientReporting>false</EnableClientReporting></Channel></Diagnostics>",
     {{rapido, 0}, {authorized, 0}, {reporting, 0}}},
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
    {"empty_ssid", false, {{ssid, 0}}, least, ClearedAnd({{ssid, -1}})},
};
INSTANTIATE_TEST_SUITE_P(Records, ConnectionWriting, testing::ValuesIn(writeCases), CaseName<WriteCase>);
} // namespace
