// The settings that go into the IHV profile: Radio Measurement, Rapido with the machine behind it, Advanced Roaming.
#include "platform/testing/Faults.h"
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
#define DEFAULTS(level)                                                                                                          \
    CCX(MEASURE("50", "400") RAPIDO("true") ROAMING(                                                                             \
        level) "<Diagnostics><AuthorizedProfile>true</AuthorizedProfile><Channel><SSID><Name>Diagnostic Channel</Name></SSID>"   \
               "<EnableClientReporting>true</EnableClientReporting></Channel></Diagnostics>")

constexpr const char* rapidoOn = CCX(MEASURE_OFF RAPIDO("true") ROAMING_OFF);
constexpr const char* invalid = CCX(MEASURE("60", "400") RAPIDO("false") ROAMING("3"));
const std::string boxOfInvalidProfile =
    "Korvane Connection Settings|Current settings are invalid and will be set to defaults.|button |warning|";
const std::vector<std::string> tracedInvalid = {"*** Error: invalid profile.\n", tracedCapable[0], tracedCapable[1]};

const DialogCase settingsCases[] = {
    {"everything_off", "look ok", {"as usual"}},
    {"cancel", "measure rapido roaming level:3 cancel"},
    {"other_notifications", "other:ok other:cancel other:roaming look cancel", {"as usual"}},
    {"levels", "levels cancel", {"Default", "Very Low", "Low", "Normal", "High", "Very High"}},

    {"measure_kept", "look ok", {"measure+"}, MEASURED("20", "300"), MEASURED("20", "300")},
    {"measure_on_takes_the_default_times", "measure ok", {}, szAllOff, MEASURED("50", "400")},

    {"rapido_kept", "look ok", {"rapido+"}, rapidoOn, rapidoOn},
    {"rapido_on", "rapido ok", {}, szAllOff, rapidoOn},

    {"level_kept", "look ok", {"roaming+ level=Normal"}, ROAMED("3"), ROAMED("3")},
    {"level_picked", "level:5 look ok", {"roaming+ level=Very High"}, ROAMED("0"), ROAMED("5")},
    {"level_unknown", "look ok", {"roaming+ level=Default"}, ROAMED("9"), ROAMED("0")},
    {"level_unselected", "level:-1 look ok", {"roaming+ level=(none)"}, ROAMED("4"), ROAMED("4")},
    {"roaming_clicked",
     "roaming look roaming look roaming level:1 ok",
     {"roaming+ level=Default", "as usual"},
     szAllOff,
     ROAMED("1")},

    {"empty_profile", "look ok", {"as usual"}, ""},
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

TEST(DialogSettings, AreShownAndReturned)
{
    for (const auto& row : settingsCases)
    {
        SCOPED_TRACE(row.name);
        CDialogScenario().Expect(row);
    }
}

TEST(DialogFault, OneThatDoesNotComeUpReturnsThePreparedRecord)
{
    CDialogScenario scenario;
    const platform::testing::CFailNth fault("DialogBoxParamW", 1);
    scenario.Expect({"", "box", {boxOfInvalidProfile + "no owner"}, invalid, DEFAULTS("3"), {tracedInvalid[0]}, -1});
    EXPECT_TRUE(fault.HasFired());
}

// As the dialog does, but that nobody is told.
TEST(ConnectionSelection, ReplacesAnInvalidProfile)
{
    CTraceLog log;
    const CModuleUnderTest module;
    const auto property = module.Property(propertyKindConnection);
    const CBstr profile(Widen(invalid).c_str());
    CBstr modified;
    BOOL bIsModified = FALSE;
    log.Take();
    EXPECT_EQ(S_OK, property->Dot11ExtUIPropertySetSelected(profile.Get(), nullptr, modified.Put(), &bIsModified));
    EXPECT_EQ(TRUE, bIsModified);
    EXPECT_EQ(DEFAULTS("3"), ProfileTree(modified));
    EXPECT_EQ((std::vector<std::string>{"bstrIHVProfile (IN): " + TextOf(profile) + "\n", tracedInvalid[0],
                                        "bstrModifiedIHVProfile (OUT): " + TextOf(modified) + "\n"}),
              log.Take());
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

TEST(DialogMachine, DecidesAboutRapido)
{
    const std::pair<std::string, std::vector<std::string>> machines[] = {
        {"[" FIRST(VENDOR("Plainwave") R"(, "rapido": 0)") "," SECOND(VENDOR("Korvane") R"(, "rapido": 2147483648)") "]",
         tracedCapable},
        {"[" FIRST(VENDOR("Korvane") R"(, "rapido": 0)") "," SECOND(VENDOR("Korvane") R"(, "rapido": 1)") "]", tracedNotCapable},
        {"[" FIRST("") "]", tracedNotFound},
    };
    for (const auto& [adapters, traced] : machines)
    {
        SCOPED_TRACE(adapters);
        const bool bUsable = traced == tracedCapable;
        CDialogScenario(adapters).Expect(
            {"", "look ok", {bUsable ? "rapido+" : "rapido-!"}, rapidoOn, bUsable ? rapidoOn : szAllOff, traced});
    }
}

TEST(DialogNoCcx, HidesRadioMeasurement)
{
    for (const DWORD dwSwitch : {0u, 0x80000000u})
    {
        const CRegistryValue noCcx(HKEY_LOCAL_MACHINE, OLESTR("SOFTWARE\\Korvane\\Fenn"), OLESTR("NoCCX"), dwSwitch);
        CDialogScenario().Expect(
            {"", "look ok", {dwSwitch ? "measure+?" : "measure+"}, MEASURED("20", "300"), MEASURED("20", "300")});
    }
}
} // namespace
} // namespace tests
