// The band check-boxes and the WLAN service behind the dialog: what the interface is capable of, what the wireless profile
// says, what is stored, and what is asked in which order.
#include "tests/support/DialogScenario.h"

namespace tests
{
namespace
{
using Calls = std::vector<std::string>;

// The machine's adapter, the maker's, with these PHY types.
#define MACHINE(phyTypes)                                                                                                        \
    R"([{"guid": "5b7d2c10-8e46-4f3a-9d21-c07a64e1f3b8", "vendor": "Korvane", "rapido": 1, "phyTypes": )" phyTypes "}]"
#define CONNECTIVITY(phyTypes) "<connectivity>" phyTypes "</connectivity>"
#define A "<phyType>a</phyType>"
#define G "<phyType>g</phyType>"
constexpr const char* all = MACHINE("[4, 5, 6, 7]");
constexpr const char* onlyG = MACHINE("[6]");
constexpr const char* onlyA = MACHINE("[4]");
constexpr const char* a = CONNECTIVITY(A);
constexpr const char* g = CONNECTIVITY(G);
constexpr const char* ag = CONNECTIVITY(A G);
constexpr const char* unchanged = nullptr;

constexpr const char* noBandBox =
    "Korvane Connection Settings|Atleast one wireless band must be selected|button |no icon|no owner";

struct BandCase
{
    const char* szAdapters;
    std::string before; // the stored profile, or its connectivity
    DialogCase dialog;
    const char* szStored;            // the connectivity afterwards
    const char* szFailing = nullptr; // a function of the service
    DWORD dwError = ERROR_GEN_FAILURE;
};

constexpr const char* noSecurity = "<WLANProfile><name>Office</name><MSM>" CONNECTIVITY(A) "</MSM></WLANProfile>";
const BandCase bandCases[] = {
    {all, ag, {"both", "look ok", {"as usual"}}, ag},
    {all, a, {"only_5_GHz", "look ok", {"2.4GHz-"}}, a},
    {all, g, {"only_2_4_GHz", "look ok", {"5GHz-"}}, g},
    {all, "", {"no_connectivity", "look ok", {"as usual"}}, ag},
    {onlyG, ag, {"interface_of_2_4_GHz", "look ok", {"5GHz-!"}}, g},
    {onlyA, ag, {"interface_of_5_GHz", "look ok", {"2.4GHz-!"}}, a},
    {onlyG, a, {"interface_without_the_profiles_band", "look ok box 2.4GHz ok", {"5GHz-! 2.4GHz-", noBandBox}}, g},
    {all, ag, {"changed", "5GHz look ok", {"5GHz-"}}, g},
    {all, ag, {"none_twice", "5GHz 2.4GHz ok box ok box look 5GHz ok", {noBandBox, noBandBox, "5GHz- 2.4GHz-"}}, a},
    {all, ag, {"changed_then_closed", "5GHz close"}, unchanged},
    {all, "no profile", {"no_profile", "look ok", {"as usual"}}, unchanged},
    {all, noSecurity, {"profile_without_security", "look 2.4GHz ok", {"2.4GHz-"}}, unchanged},
    {all, a, {"success_without_a_text", "look ok", {"as usual"}}, unchanged, "WlanGetProfile", ERROR_SUCCESS},
    {all,
     a,
     {"capabilities_not_given", "look ok box cancel", {"5GHz- 2.4GHz-", noBandBox}},
     unchanged,
     "WlanGetInterfaceCapability"},
};

TEST(DialogBands, AreShownAndStored)
{
    for (const auto& row : bandCases)
    {
        SCOPED_TRACE(row.dialog.name);
        const std::string before = row.before == "no profile" ? ""
                                   : row.before == noSecurity ? noSecurity
                                                              : OfficeProfile(row.before);
        CDialogScenario scenario(row.szAdapters, before);
        if (row.szFailing)
            CSimulatedService::FailNext(row.szFailing, 1, 100, row.dwError);
        scenario.Expect(row.dialog);
        EXPECT_TRUE(!row.szFailing || SimulatedWlanCalls(row.szFailing) != 0);
        SimulatedWlanClearFaults();

        const std::string after = scenario.StoredProfile();
        EXPECT_EQ(row.szStored ? TreeOf(OfficeProfile(row.szStored)) : TreeOf(before), TreeOf(after));
        EXPECT_EQ(std::string::npos, after.find(R"( xmlns="")"));
        EXPECT_EQ(row.szStored ? 1u : 0u, scenario.CallsOf("WlanSetProfile").size());
        EXPECT_EQ(0, SimulatedWlanLiveBlocks());
    }
}

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
const Calls storeProfile = {"WlanSetProfile"};

TEST(DialogService, IsAskedInThisOrderAndGetsBackAllButTheSharedHandle)
{
    CDialogScenario scenario(twoAdapters);
    const LONG lHandles = SimulatedWlanLiveHandles();
    const Calls look = readProfile + readCapabilities + select + askDriver + select + askDriver + askDriver;
    const Calls first = listAdapters + openShared + look;
    scenario.Expect({"", "cancel"});
    EXPECT_EQ(first, scenario.CalledFunctions());

    // The adapters are listed once for the process, the shared handle opened once.
    const Calls second = first + look + readProfile + storeProfile;
    scenario.Expect({"", "ok"});
    EXPECT_EQ(second, scenario.CalledFunctions());
    // All of it about what the context names.
    const std::string office = "interface=5b7d2c10-8e46-4f3a-9d21-c07a64e1f3b8 ";
    EXPECT_EQ("WlanGetProfile " + office + "name=\"Office\" flags=null access=null -> 0",
              scenario.CallsOf("WlanGetProfile").at(0));
    EXPECT_EQ("WlanSetProfile " + office + "flags=0x5 security=null overwrite=1 name=\"Office\" -> 0",
              scenario.CallsOf("WlanSetProfile").at(0));
    EXPECT_NE(std::string::npos, scenario.CallsOf("WlanGetInterfaceCapability").at(0).find(office));
    EXPECT_EQ(lHandles + 2, SimulatedWlanLiveHandles()) << "the list's and the shared one";
    scenario.Unload();
    EXPECT_EQ(second + close, scenario.CalledFunctions());
    EXPECT_EQ(lHandles + 1, SimulatedWlanLiveHandles()) << "the shared one is never closed";
    EXPECT_EQ(0, SimulatedWlanLiveBlocks());
}

TEST(DialogService, IsNotAskedAboutAMissingContext)
{
    CDialogScenario scenario;
    const std::string before = scenario.StoredProfile();
    scenario.SetContext(nullptr);
    scenario.Expect({"", "look 5GHz ok", {"5GHz- 2.4GHz-"}});
    EXPECT_EQ(Calls{}, scenario.CallsOf("WlanGetInterfaceCapability"));
    EXPECT_EQ(before, scenario.StoredProfile());
}
} // namespace
} // namespace tests
