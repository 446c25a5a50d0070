// What the dialog asks of the WLAN service, in which order, and what it leaves open.
#include "tests/support/DialogScenario.h"

namespace tests
{
namespace
{
using Calls = std::vector<std::string>;

constexpr const char* twoAdapters =
    R"([{"guid": "5b7d2c10-8e46-4f3a-9d21-c07a64e1f3b8", "phyTypes": [4, 6], "vendor": "Plainwave"},
    {"guid": "91e4a6f2-30bc-4d58-a7e9-5c8f1b2d6073", "vendor": "Korvane", "rapido": 1}])";

Calls operator+(Calls left, const Calls& right)
{
    left.insert(left.end(), right.begin(), right.end());
    return left;
}
const Calls listAdapters = {"WlanOpenHandle", "WlanEnumInterfaces", "WlanFreeMemory"};
const Calls openShared = {"WlanOpenHandle"};
const Calls readProfile = {"WlanGetProfile", "WlanFreeMemory"};
const Calls readCapabilities = {"WlanGetInterfaceCapability", "WlanFreeMemory"};
const Calls close = {"WlanCloseHandle"};
const Calls select = listAdapters + close;
const Calls askDriver = {"WlanOpenHandle", "WlanIhvControl", "WlanCloseHandle"};
const std::vector<std::string> notFound = {"Didnt find korvane interface\n", "Interface is not capable of RapidoAG\n"};
const Calls storeProfile = {"WlanSetProfile"};
} // namespace

TEST(DialogService, IsAskedInThisOrder)
{
    CDialogScenario scenario(twoAdapters, OfficeProfile(""));
    const Calls look = readProfile + readCapabilities + select + askDriver + select + askDriver + askDriver;
    const Calls first = listAdapters + openShared + look;
    scenario.Show(szAllOff, "cancel");
    EXPECT_EQ(first, scenario.CalledFunctions());

    // The adapters are listed once for the process, the shared handle opened once.
    const Calls second = first + look + readProfile + storeProfile;
    scenario.Show(szAllOff, "ok");
    EXPECT_EQ(second, scenario.CalledFunctions());
    scenario.Unload();
    EXPECT_EQ(second + close, scenario.CalledFunctions());
}

TEST(DialogService, IsPassedWhatTheContextNames)
{
    CDialogScenario scenario(twoAdapters, OfficeProfile(""));
    scenario.Show(szAllOff, "ok");
    const std::string office = "interface=5b7d2c10-8e46-4f3a-9d21-c07a64e1f3b8 ";
    const std::string get = "WlanGetProfile " + office + "name=\"Office\" flags=null access=null -> 0";
    EXPECT_EQ((Calls{get, get}), scenario.CallsOf("WlanGetProfile"));
    EXPECT_EQ((Calls{"WlanSetProfile " + office + "flags=0x5 security=null overwrite=1 name=\"Office\" -> 0"}),
              scenario.CallsOf("WlanSetProfile"));
    EXPECT_EQ(1u, scenario.CallsOf("WlanGetInterfaceCapability").size());
    EXPECT_NE(std::string::npos, scenario.CallsOf("WlanGetInterfaceCapability")[0].find(office));
}

TEST(DialogService, GetsEverythingBackButTheKeptHandle)
{
    LONG lHandles = 0;
    {
        CDialogScenario scenario(twoAdapters, OfficeProfile(""));
        lHandles = scenario.Service().LiveHandles();
        scenario.Show(nullptr, "5GHz 2.4GHz ok box 5GHz ok");
        scenario.Show(szAllOff, "cancel");
        EXPECT_EQ(lHandles + 2, scenario.Service().LiveHandles()) << "the list's and the shared one";
        EXPECT_EQ(0, scenario.Service().LiveBlocks());
        scenario.Unload();
        EXPECT_EQ(lHandles + 1, scenario.Service().LiveHandles()) << "the shared one is never closed";
        EXPECT_EQ(0, scenario.Service().LiveBlocks());
    }
}

TEST(DialogService, KeepsTheAdaptersOfItsFirstDialog)
{
    CDialogScenario scenario("[]", "");
    CDialogScenario::ExpectOutcome(scenario.Show(szAllOff, "cancel"), szAllOff, false, notFound);
    scenario.Service().SetAdapters(makersMachine);
    const auto outcome = scenario.Show(szAllOff, "look cancel");
    CDialogScenario::ExpectOutcome(outcome, szAllOff, false, notFound);
    // The bands are asked for anew.
    EXPECT_EQ(Calls{"measure- rapido-! roaming- level=Default! 5GHz+ 2.4GHz+"}, outcome.shown);
}

TEST(DialogService, DriverOfNoInterfaceIsAskedWhereNoneCouldBeSelected)
{
    CDialogScenario scenario(makersMachine, OfficeProfile(""));
    scenario.Service().FailNext("WlanEnumInterfaces", 2, 1, ERROR_GEN_FAILURE);
    const auto outcome = scenario.Show(szAllOff, "cancel");
    CDialogScenario::ExpectOutcome(outcome, szAllOff, false, notFound);
    ASSERT_EQ(1u, scenario.CallsOf("WlanIhvControl").size());
    EXPECT_TRUE(
        scenario.CallsOf("WlanIhvControl")[0].starts_with("WlanIhvControl interface=00000000-0000-0000-0000-000000000000 "));
}

TEST(DialogService, IsOpenedAnewAsLongAsItDoesNotOpen)
{
    CDialogScenario scenario(makersMachine, OfficeProfile(""));
    scenario.Service().FailNext("WlanOpenHandle", 1, 100, ERROR_SERVICE_NOT_ACTIVE);
    auto outcome = scenario.Show(szAllOff, "look 5GHz ok");
    EXPECT_EQ(Calls{"measure- rapido-! roaming- level=Default! 5GHz- 2.4GHz-"}, outcome.shown);
    EXPECT_EQ(szAllOff, outcome.profile);
    // For the list, the profile, the capabilities and, on OK, the profile again.
    EXPECT_EQ(4u, scenario.CallsOf("WlanOpenHandle").size());
    scenario.Service().ClearFaults();
    EXPECT_EQ(OfficeProfile(""), scenario.StoredProfile());

    outcome = scenario.Show(szAllOff, "look ok");
    EXPECT_EQ(Calls{"measure- rapido-! roaming- level=Default! 5GHz+ 2.4GHz+"}, outcome.shown);
    EXPECT_NE(OfficeProfile(""), scenario.StoredProfile());
}

TEST(DialogService, IsNotAskedAboutAMissingContext)
{
    CDialogScenario scenario(makersMachine, OfficeProfile(""));
    scenario.SetContext(nullptr);
    const auto outcome = scenario.Show(szAllOff, "look 5GHz ok");
    CDialogScenario::ExpectOutcome(outcome, szAllOff, true, tracedCapable);
    EXPECT_EQ(Calls{"measure- rapido- roaming- level=Default! 5GHz- 2.4GHz-"}, outcome.shown);
    EXPECT_EQ(Calls{}, scenario.CallsOf("WlanGetProfile"));
    EXPECT_EQ(Calls{}, scenario.CallsOf("WlanSetProfile"));
    EXPECT_EQ(OfficeProfile(""), scenario.StoredProfile());
}
} // namespace tests
