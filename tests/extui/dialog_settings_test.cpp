// The settings that go into the IHV profile: Radio Measurement, Rapido with the machine behind it, Advanced Roaming.
#include "tests/support/DialogScenario.h"

namespace tests
{
namespace
{
#define MEASURE_OFF "<RadioMeasurement><disabled/></RadioMeasurement>"
#define MEASURE(max, min)                                                                                                        \
    "<RadioMeasurement><enabled><MaxOffChannelTimeMs>" max "</MaxOffChannelTimeMs><MinOnChannelTimeMs>" min                      \
    "</MinOnChannelTimeMs></enabled></RadioMeasurement>"
#define RAPIDO(flag) "<Rapido>" flag "</Rapido>"
#define ROAMING_OFF "<AdvancedRoaming><disabled/></AdvancedRoaming>"
#define ROAMING(level) "<AdvancedRoaming><enabled><RoamingOption>" level "</RoamingOption></enabled></AdvancedRoaming>"
#define CCX(elements) "<CCX>" elements "</CCX>"
#define MEASURED(max, min) CCX(MEASURE(max, min) RAPIDO("false") ROAMING_OFF)
#define ROAMED(level) CCX(MEASURE_OFF RAPIDO("false") ROAMING(level))

constexpr const char* rapidoOn = CCX(MEASURE_OFF RAPIDO("true") ROAMING_OFF);
constexpr const char* defaults =
    CCX(MEASURE("50", "400") RAPIDO("true")
            ROAMING("0") "<Diagnostics><AuthorizedProfile>true</AuthorizedProfile><Channel>"
                         "<SSID><Name>Diagnostic Channel</Name></SSID>"
                         "<EnableClientReporting>true</EnableClientReporting></Channel></Diagnostics>");
constexpr const char* kept = "(kept)";

struct SettingsCase
{
    const char* name;
    const char* szIhvProfile;
    const char* szPerson;
    std::vector<std::string> shown; // the bands left away
    const char* szReturned;
};
void PrintTo(const SettingsCase& row, std::ostream* pOut)
{
    *pOut << row.name;
}

const SettingsCase settingsCases[] = {
    {"everything_off", szAllOff, "look ok", {"measure- rapido- roaming- level=Default!"}, szAllOff},
    {"cancel", szAllOff, "measure rapido roaming level:3 cancel", {}, kept},
    {"close", szAllOff, "measure rapido roaming level:3 close", {}, kept},

    {"measure_kept", MEASURED("20", "300"), "look ok", {"measure+ rapido- roaming- level=Default!"}, MEASURED("20", "300")},
    {"measure_on_takes_the_default_times", szAllOff, "measure ok", {}, MEASURED("50", "400")},
    {"measure_off", MEASURED("20", "300"), "measure ok", {}, szAllOff},
    {"measure_off_and_on", MEASURED("20", "300"), "measure measure ok", {}, MEASURED("20", "300")},

    {"rapido_kept", rapidoOn, "look ok", {"measure- rapido+ roaming- level=Default!"}, rapidoOn},
    {"rapido_on", szAllOff, "rapido ok", {}, rapidoOn},
    {"rapido_off", rapidoOn, "rapido ok", {}, szAllOff},

    {"level_kept", ROAMED("3"), "look ok", {"measure- rapido- roaming+ level=Normal"}, ROAMED("3")},
    {"level_picked", ROAMED("0"), "level:5 look ok", {"measure- rapido- roaming+ level=Very High"}, ROAMED("5")},
    {"level_unknown", ROAMED("9"), "look ok", {"measure- rapido- roaming+ level=Default"}, ROAMED("0")},
    {"level_unselected", ROAMED("4"), "level:-1 look ok", {"measure- rapido- roaming+ level=(none)"}, ROAMED("4")},
    {"roaming_clicked",
     szAllOff,
     "roaming look roaming look roaming level:1 ok",
     {"measure- rapido- roaming+ level=Default", "measure- rapido- roaming- level=Default!"},
     ROAMED("1")},
    {"roaming_off", ROAMED("2"), "roaming level:5 look ok", {"measure- rapido- roaming- level=Very High!"}, szAllOff},

    {"empty_profile", "", "look ok", {"measure- rapido- roaming- level=Default!"}, szAllOff},
    {"not_a_profile", "<CCX", "look ok", {"measure- rapido- roaming- level=Default!"}, szAllOff},
    {"profile_that_says_nothing", "<CCX/>", "look cancel", {"measure+ rapido- roaming+ level=Default"}, kept},
};

class DialogSettingsTest : public testing::TestWithParam<SettingsCase>
{
};

std::vector<std::string> WithBands(std::vector<std::string> shown)
{
    for (auto& seen : shown)
        seen += seen.starts_with("measure") ? " 5GHz+ 2.4GHz+" : "";
    return shown;
}
const std::string boxOfInvalidProfile =
    "Korvane Connection Settings|Current settings are invalid and will be set to defaults.|button |icon|";
} // namespace

TEST_P(DialogSettingsTest, AreShownAndReturned)
{
    const SettingsCase& row = GetParam();
    CDialogScenario scenario(makersMachine, OfficeProfile(""));
    const auto outcome = scenario.Show(row.szIhvProfile, row.szPerson);
    CDialogScenario::ExpectOutcome(outcome, row.szIhvProfile, row.szReturned != kept, tracedCapable);
    EXPECT_EQ(WithBands(row.shown), outcome.shown);
    EXPECT_EQ(row.szReturned, outcome.profile);
}

INSTANTIATE_TEST_SUITE_P(Rows, DialogSettingsTest, testing::ValuesIn(settingsCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(DialogSettings, ListHasTheLevelsInTheirOrder)
{
    CDialogScenario scenario(makersMachine, OfficeProfile(""));
    EXPECT_EQ((std::vector<std::string>{"Default", "Very Low", "Low", "Normal", "High", "Very High"}),
              scenario.Show(szAllOff, "levels cancel").shown);
}

TEST(DialogSettings, MissingProfileGetsTheDefaults)
{
    CDialogScenario scenario(makersMachine, OfficeProfile(""));
    const auto outcome = scenario.Show(nullptr, "look ok");
    CDialogScenario::ExpectOutcome(outcome, nullptr, true,
                                   {"--- NULL profile, setting defaults\n", tracedCapable[0], tracedCapable[1]});
    EXPECT_EQ(WithBands({"measure+ rapido+ roaming+ level=Default"}), outcome.shown);
    EXPECT_EQ(defaults, outcome.profile);
}

TEST(DialogSettings, InvalidProfileIsToldAndGetsTheDefaults)
{
    constexpr const char* szInvalid = CCX(MEASURE("60", "400") RAPIDO("false") ROAMING("3"));
    CDialogScenario scenario(makersMachine, OfficeProfile(""));
    const auto outcome = scenario.Show(szInvalid, "box look cancel");
    CDialogScenario::ExpectOutcome(outcome, szInvalid, false,
                                   {"*** Error: invalid profile.\n", tracedCapable[0], tracedCapable[1]});
    EXPECT_EQ(WithBands({boxOfInvalidProfile + "no owner", "measure+ rapido+ roaming+ level=Normal"}), outcome.shown);
}

namespace
{
// A host window: the dialog's own template serves, and it stays hidden while its initialisation runs the case.
INT_PTR CALLBACK RunOverHostWindow(HWND hwnd, UINT uMessage, WPARAM, LPARAM lParam)
{
    if (uMessage != WM_INITDIALOG)
        return FALSE;
    (*reinterpret_cast<std::function<void(HWND)>*>(lParam))(hwnd);
    EndDialog(hwnd, 1);
    return TRUE;
}
} // namespace

TEST(DialogSettings, BoxOfAnInvalidProfileHoldsTheHostsWindow)
{
    CDialogScenario scenario(makersMachine, OfficeProfile(""));
    std::vector<std::string> shown;
    bool bUsableAfterwards = false;
    std::function<void(HWND)> run = [&](HWND hwndHost)
    {
        shown = scenario.Show(CCX(MEASURE("9", "400")), "box cancel", hwndHost).shown;
        bUsableAfterwards = IsWindowEnabled(hwndHost) != FALSE;
    };
    EXPECT_EQ(
        1, DialogBoxParamW(scenario.Module(), MAKEINTRESOURCEW(101), nullptr, RunOverHostWindow, reinterpret_cast<LPARAM>(&run)));
    EXPECT_EQ(std::vector{boxOfInvalidProfile + "owner held"}, shown);
    EXPECT_TRUE(bUsableAfterwards);
}

namespace
{
#define FIRST(keys) R"({"guid": "5b7d2c10-8e46-4f3a-9d21-c07a64e1f3b8", "phyTypes": [4, 6])" keys "}"
#define SECOND(keys) R"({"guid": "91e4a6f2-30bc-4d58-a7e9-5c8f1b2d6073")" keys "}"
#define VENDOR(name) R"(, "vendor": ")" name R"(")"
const std::vector<std::string> notCapable = {"Found Korvane interface\n", "Interface is not capable of RapidoAG\n"};
const std::vector<std::string> notFound = {"Didnt find korvane interface\n", "Interface is not capable of RapidoAG\n"};

struct MachineCase
{
    const char* name;
    const char* szAdapters;
    bool bUsable;
    std::vector<std::string> traced;
};
void PrintTo(const MachineCase& row, std::ostream* pOut)
{
    *pOut << row.name;
}

const MachineCase machineCases[] = {
    {"makers", "[" FIRST(VENDOR("The Korvane Fenn") R"(, "rapido": 2147483648)") "]", true, tracedCapable},
    {"second_is_the_makers",
     "[" FIRST(VENDOR("Plainwave") R"(, "rapido": 0)") "," SECOND(VENDOR("Korvane") R"(, "rapido": 7)") "]", true, tracedCapable},
    {"first_of_two_of_the_makers",
     "[" FIRST(VENDOR("Korvane") R"(, "rapido": 0)") "," SECOND(VENDOR("Korvane") R"(, "rapido": 1)") "]", false, notCapable},
    {"nobodys", "[" FIRST("") "]", false, notFound},
    {"another_makers", "[" FIRST(VENDOR("Plainwave") R"(, "rapido": 1)") "]", false, notFound},
    {"lower_case_name", "[" FIRST(VENDOR("korvane") R"(, "rapido": 1)") "]", false, notFound},
    {"driver_says_no", "[" FIRST(VENDOR("Korvane") R"(, "rapido": 0)") "]", false, notCapable},
    {"driver_does_not_know", "[" FIRST(VENDOR("Korvane")) "]", false, notCapable},
    {"driver_refuses", "[" FIRST(VENDOR("Korvane") R"(, "rapido": 1, "driverError": 31)") "]", false, notFound},
    {"reply_of_24_bytes",
     "[" FIRST(VENDOR("Korvane") R"(, "rapidoReply": "000000000000000000000000000000000000000000000000")") "]", false,
     notCapable},
};

class DialogMachineTest : public testing::TestWithParam<MachineCase>
{
};
} // namespace

TEST_P(DialogMachineTest, DecidesAboutRapido)
{
    const MachineCase& row = GetParam();
    CDialogScenario scenario(row.szAdapters, OfficeProfile(""));
    const auto outcome = scenario.Show(rapidoOn, "look ok");
    CDialogScenario::ExpectOutcome(outcome, rapidoOn, true, row.traced);
    const std::string rapido = row.bUsable ? "rapido+" : "rapido-!";
    EXPECT_EQ(WithBands({"measure- " + rapido + " roaming- level=Default!"}), outcome.shown);
    EXPECT_EQ(row.bUsable ? rapidoOn : szAllOff, outcome.profile);
}

INSTANTIATE_TEST_SUITE_P(Rows, DialogMachineTest, testing::ValuesIn(machineCases),
                         [](const auto& row) { return std::string(row.param.name); });

namespace
{
struct NoCcxCase
{
    const char* name;
    DWORD dwType;
    std::vector<BYTE> bytes;
    bool bHidden;
};
void PrintTo(const NoCcxCase& row, std::ostream* pOut)
{
    *pOut << row.name;
}

const NoCcxCase noCcxCases[] = {
    {"one", REG_DWORD, {1, 0, 0, 0}, true},   {"high_bit", REG_DWORD, {0, 0, 0, 0x80}, true},
    {"zero", REG_DWORD, {0, 0, 0, 0}, false}, {"text_of_one_character", REG_SZ, {'0', 0, 0, 0}, true},
    {"two_bytes", REG_BINARY, {0, 1}, true},  {"eight_bytes", REG_BINARY, {1, 0, 0, 0, 1, 0, 0, 0}, false},
};

class DialogNoCcxTest : public testing::TestWithParam<NoCcxCase>
{
};
} // namespace

TEST_P(DialogNoCcxTest, HidesRadioMeasurement)
{
    const NoCcxCase& row = GetParam();
    const CRegistryValue noCcx(HKEY_LOCAL_MACHINE, OLESTR("SOFTWARE\\Korvane\\Fenn"), OLESTR("NoCCX"), row.dwType, row.bytes);
    CDialogScenario scenario(makersMachine, OfficeProfile(""));
    const std::string hidden = row.bHidden ? "?" : "";

    const auto on = scenario.Show(MEASURED("20", "300"), "look ok");
    EXPECT_EQ(WithBands({"measure+" + hidden + " rapido- roaming- level=Default!"}), on.shown);
    EXPECT_EQ(MEASURED("20", "300"), on.profile);
    const auto off = scenario.Show(szAllOff, "look ok");
    EXPECT_EQ(WithBands({"measure-" + hidden + " rapido- roaming- level=Default!"}), off.shown);
    EXPECT_EQ(szAllOff, off.profile);
}

INSTANTIATE_TEST_SUITE_P(Rows, DialogNoCcxTest, testing::ValuesIn(noCcxCases),
                         [](const auto& row) { return std::string(row.param.name); });
} // namespace tests
