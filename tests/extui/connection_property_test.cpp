// The connection property on selection: whatever the profile holds, a whole one is handed back.
#include "tests/support/ModuleUnderTest.h"
#include "tests/support/TraceLog.h"

namespace
{
struct SelectCase
{
    const char* name;
    const WCHAR* szProfile;
    const char* szNoticeLine; // null where there is none
    const char* szTree;
};

#define MEASURED(off, on)                                                                                                        \
    "<RadioMeasurement><enabled><MaxOffChannelTimeMs>" off "</MaxOffChannelTimeMs><MinOnChannelTimeMs>" on                       \
    "</MinOnChannelTimeMs></enabled></RadioMeasurement>"
#define ROAMING(level) "<AdvancedRoaming><enabled><RoamingOption>" level "</RoamingOption></enabled></AdvancedRoaming>"
#define DIAGNOSED                                                                                                                \
    "<Diagnostics><AuthorizedProfile>true</AuthorizedProfile><Channel><SSID><Name>Diagnostic Channel</Name></SSID>"              \
    "<EnableClientReporting>true</EnableClientReporting></Channel></Diagnostics>"
#define DEFAULTS "<CCX>" MEASURED("50", "400") "<Rapido>true</Rapido>" ROAMING("0") DIAGNOSED "</CCX>"
#define LEAST "<CCX><Rapido>false</Rapido><AdvancedRoaming><disabled/></AdvancedRoaming></CCX>"

constexpr const char* szInvalid = "*** Error: invalid profile.\n";
constexpr SelectCase selectCases[] = {
    {"none", nullptr, "--- NULL profile, setting defaults\n", DEFAULTS},
    {"empty", OLESTR(""), nullptr, LEAST},
    {"valid_loses_what_others_wrote",
     OLESTR("<CCX><openNetwork/><!-- x "
            "--><Rapido>true</Rapido><RadioMeasurement><enabled><MaxOffChannelTimeMs>20</MaxOffChannelTimeMs>"
            "<MinOnChannelTimeMs>7</MinOnChannelTimeMs></enabled></RadioMeasurement></CCX>"),
     nullptr, "<CCX>" MEASURED("20", "7") "<Rapido>true</Rapido>" ROAMING("0") "</CCX>"},
    {"time_out_of_range",
     OLESTR(
         "<CCX><RadioMeasurement><enabled><MaxOffChannelTimeMs>60</MaxOffChannelTimeMs><MinOnChannelTimeMs>7</MinOnChannelTimeMs>"
         "</enabled></RadioMeasurement><Rapido>false</Rapido></CCX>"),
     szInvalid, DEFAULTS},
};

TEST(ConnectionPropertySelection, AlwaysHandsBackAWholeProfile)
{
    tests::CTraceLog log;
    const tests::CModuleUnderTest module;
    const auto property = module.Property(propertyKindConnection);
    for (const auto& row : selectCases)
    {
        SCOPED_TRACE(row.name);
        const CBstr bstrProfile(row.szProfile);
        CBstr bstrModified;
        BOOL bIsModified = FALSE;
        log.Take();
        EXPECT_EQ(S_OK, property->Dot11ExtUIPropertySetSelected(bstrProfile.Get(), nullptr, bstrModified.Put(), &bIsModified));
        EXPECT_EQ(TRUE, bIsModified);
        EXPECT_EQ(row.szTree, tests::ProfileTree(bstrModified));
        std::vector<std::string> expected = {"bstrIHVProfile (IN): " + tests::TextOf(bstrProfile) + "\n"};
        if (row.szNoticeLine)
            expected.push_back(row.szNoticeLine);
        expected.push_back("bstrModifiedIHVProfile (OUT): " + tests::TextOf(bstrModified) + "\n");
        EXPECT_EQ(expected, log.Take());
    }
}
} // namespace
