// The settings that go into the IHV profile: Radio Measurement, Rapido with the machine behind it, Advanced Roaming.
#include "platform/testing/Faults.h"
#include "tests/support/DialogScenario.h"

namespace tests
{
namespace
{
using platform::testing::CFailNth;

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
#define DEFAULTS(level)                                                                                                          \
    CCX(MEASURE("50", "400") RAPIDO("true") ROAMING(                                                                             \
        level) "<Diagnostics><AuthorizedProfile>true</AuthorizedProfile><Channel><SSID><Name>Diagnostic Channel</Name></SSID>"   \
               "<EnableClientReporting>true</EnableClientReporting></Channel></Diagnostics>")

constexpr const char* rapidoOn = CCX(MEASURE_OFF RAPIDO("true") ROAMING_OFF);
constexpr const char* invalid = CCX(MEASURE("60", "400") RAPIDO("false") ROAMING("3"));
const std::string boxOfInvalidProfile =
    "Korvane Connection Settings|Current settings are invalid and will be set to defaults.|button |warning|";
const std::vector<std::string> tracedInvalid = {"*** Error: invalid profile.\n", tracedCapable[0], tracedCapable[1]};

const auto nameOfRow = [](const auto& row) { return std::string(row.param.name); };

const DialogCase settingsCases[] = {
    {"everything_off", "look ok", {"as usual"}},
    {"cancel", "measure rapido roaming level:3 cancel"},
    {"close", "measure rapido roaming level:3 close"},
    {"other_notifications", "other:ok other:cancel other:roaming look cancel", {"as usual"}},
    {"levels", "levels cancel", {"Default", "Very Low", "Low", "Normal", "High", "Very High"}},

    {"measure_kept", "look ok", {"measure+"}, MEASURED("20", "300"), MEASURED("20", "300")},
    {"measure_on_takes_the_default_times", "measure ok", {}, szAllOff, MEASURED("50", "400")},
    {"measure_off", "measure ok", {}, MEASURED("20", "300")},
    {"measure_off_and_on", "measure measure ok", {}, MEASURED("20", "300"), MEASURED("20", "300")},

    {"rapido_kept", "look ok", {"rapido+"}, rapidoOn, rapidoOn},
    {"rapido_on", "rapido ok", {}, szAllOff, rapidoOn},
    {"rapido_off", "rapido ok", {}, rapidoOn},

    {"level_kept", "look ok", {"roaming+ level=Normal"}, ROAMED("3"), ROAMED("3")},
    {"level_picked", "level:5 look ok", {"roaming+ level=Very High"}, ROAMED("0"), ROAMED("5")},
    {"level_unknown", "look ok", {"roaming+ level=Default"}, ROAMED("9"), ROAMED("0")},
    {"level_unselected", "level:-1 look ok", {"roaming+ level=(none)"}, ROAMED("4"), ROAMED("4")},
    {"roaming_clicked",
     "roaming look roaming look roaming level:1 ok",
     {"roaming+ level=Default", "as usual"},
     szAllOff,
     ROAMED("1")},
    {"roaming_off", "roaming level:5 look ok", {"level=Very High!"}, ROAMED("2")},

    {"empty_profile", "look ok", {"as usual"}, ""},
    {"profile_that_says_nothing", "look cancel", {"measure+ roaming+ level=Default"}, "<CCX/>"},
    {"no_profile",
     "look ok",
     {"measure+ rapido+ roaming+ level=Default"},
     nullptr,
     DEFAULTS("0"),
     {"--- NULL profile, setting defaults\n", tracedCapable[0], tracedCapable[1]}},
    {"invalid_profile",
     "box look cancel",
     {boxOfInvalidProfile + "no owner", "measure+ rapido+ roaming+ level=Normal"},
     invalid,
     nullptr,
     tracedInvalid},
};

class DialogSettings : public testing::TestWithParam<DialogCase>
{
};
TEST_P(DialogSettings, AreShownAndReturned)
{
    CDialogScenario().Expect(GetParam());
}
INSTANTIATE_TEST_SUITE_P(Rows, DialogSettings, testing::ValuesIn(settingsCases), nameOfRow);

struct FaultCase
{
    const char* szFunction;
    DialogCase dialog;
};
const FaultCase faultCases[] = {
    // The prepared record is handed out.
    {"DialogBoxParamW", {"no_dialog", "box", {boxOfInvalidProfile + "no owner"}, invalid, DEFAULTS("3"), {tracedInvalid[0]}, -1}},
    {"MessageBoxW", {"no_box", "look cancel", {"measure+ rapido+ roaming+ level=Normal"}, invalid, nullptr, tracedInvalid}},
    {"LoadStringW", {"no_title", "look cancel", {"title="}}},
    {"RegOpenKeyExW", {"no_switches", "look cancel", {"as usual"}}},
    {"RegQueryValueExW", {"unreadable_switch", "look cancel", {"as usual"}}},
};

// The switch says to hide the check-box, where it can be read.
TEST(DialogFault, LeavesTheRestAsItIs)
{
    for (const auto& row : faultCases)
    {
        SCOPED_TRACE(row.dialog.name);
        std::optional<CRegistryValue> noCcx;
        if (std::string_view(row.szFunction).starts_with("Reg"))
            noCcx.emplace(HKEY_LOCAL_MACHINE, OLESTR("SOFTWARE\\Korvane\\Fenn"), OLESTR("NoCCX"), DWORD{1});
        CDialogScenario scenario;
        const CFailNth fault(row.szFunction, 1, ERROR_ACCESS_DENIED);
        scenario.Expect(row.dialog);
        EXPECT_TRUE(fault.HasFired());
        EXPECT_EQ(row.dialog.bModified == -1, scenario.CalledFunctions().empty());
    }
}

// A host window: the dialog's own template serves, and it stays hidden while its initialisation runs the case.
INT_PTR CALLBACK RunOverHostWindow(HWND hwnd, UINT uMessage, WPARAM, LPARAM lParam)
{
    if (uMessage != WM_INITDIALOG)
        return FALSE;
    (*reinterpret_cast<std::function<void(HWND)>*>(lParam))(hwnd);
    EndDialog(hwnd, 1);
    return TRUE;
}

TEST(DialogOwner, BoxOfAnInvalidProfileHoldsTheHostsWindow)
{
    CDialogScenario scenario;
    bool bUsableAfterwards = false;
    std::function<void(HWND)> run = [&](HWND hwndHost)
    {
        scenario.Expect({"over_host", "box cancel", {boxOfInvalidProfile + "owner held"}, invalid, nullptr, tracedInvalid},
                        hwndHost);
        bUsableAfterwards = IsWindowEnabled(hwndHost) != FALSE;
    };
    EXPECT_EQ(
        1, DialogBoxParamW(scenario.Module(), MAKEINTRESOURCEW(101), nullptr, RunOverHostWindow, reinterpret_cast<LPARAM>(&run)));
    EXPECT_TRUE(bUsableAfterwards);
}

#define FIRST(keys) R"({"guid": "5b7d2c10-8e46-4f3a-9d21-c07a64e1f3b8", "phyTypes": [4, 6])" keys "}"
#define SECOND(keys) R"({"guid": "91e4a6f2-30bc-4d58-a7e9-5c8f1b2d6073")" keys "}"
#define VENDOR(name) R"(, "vendor": ")" name R"(")"
const std::vector<std::string> tracedNotCapable = {"Found Korvane interface\n", "Interface is not capable of RapidoAG\n"};

struct MachineCase
{
    const char* name;
    const char* szAdapters;
    std::vector<std::string> traced;
};
void PrintTo(const MachineCase& row, std::ostream* pOut)
{
    *pOut << row.name;
}

const MachineCase machineCases[] = {
    {"makers", "[" FIRST(VENDOR("The Korvane Fenn") R"(, "rapido": 2147483648)") "]", tracedCapable},
    {"second_is_the_makers",
     "[" FIRST(VENDOR("Plainwave") R"(, "rapido": 0)") "," SECOND(VENDOR("Korvane") R"(, "rapido": 7)") "]", tracedCapable},
    {"first_of_two_of_the_makers",
     "[" FIRST(VENDOR("Korvane") R"(, "rapido": 0)") "," SECOND(VENDOR("Korvane") R"(, "rapido": 1)") "]", tracedNotCapable},
    {"nobodys", "[" FIRST("") "]", tracedNotFound},
};

class DialogMachine : public testing::TestWithParam<MachineCase>
{
};
TEST_P(DialogMachine, DecidesAboutRapido)
{
    const auto& traced = GetParam().traced;
    const bool bUsable = traced == tracedCapable;
    CDialogScenario(GetParam().szAdapters)
        .Expect({"", "look ok", {bUsable ? "rapido+" : "rapido-!"}, rapidoOn, bUsable ? rapidoOn : szAllOff, traced});
}
INSTANTIATE_TEST_SUITE_P(Rows, DialogMachine, testing::ValuesIn(machineCases), nameOfRow);

TEST(DialogNoCcx, HidesRadioMeasurement)
{
    for (const DWORD dwSwitch : {0u, 1u, 0x80000000u})
    {
        SCOPED_TRACE(dwSwitch);
        const bool bHidden = dwSwitch != 0;
        const CRegistryValue noCcx(HKEY_LOCAL_MACHINE, OLESTR("SOFTWARE\\Korvane\\Fenn"), OLESTR("NoCCX"), dwSwitch);
        CDialogScenario scenario;
        scenario.Expect({"on", "look ok", {bHidden ? "measure+?" : "measure+"}, MEASURED("20", "300"), MEASURED("20", "300")});
        scenario.Expect({"off", "look ok", {bHidden ? "measure-?" : "as usual"}});
    }
}
} // namespace
} // namespace tests
