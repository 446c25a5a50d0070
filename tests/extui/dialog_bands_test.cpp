// The band check-boxes: what the interface is capable of, what the wireless profile says, what is stored.
#include "tests/support/DialogScenario.h"

namespace tests
{
namespace
{
// The machine's adapter, the maker's, with these PHY types.
#define MACHINE(phyTypes)                                                                                                        \
    R"([{"guid": "5b7d2c10-8e46-4f3a-9d21-c07a64e1f3b8", "vendor": "Korvane", "rapido": 1, "phyTypes": )" phyTypes "}]"
#define CONNECTIVITY(phyTypes) "<connectivity>" phyTypes "</connectivity>"
#define A "<phyType>a</phyType>"
#define G "<phyType>g</phyType>"
constexpr const char* all = MACHINE("[4, 5, 6, 7]");
constexpr const char* onlyG = MACHINE("[6]");
constexpr const char* onlyA = MACHINE("[4]");
constexpr const char* neither = MACHINE("[5, 7]");
constexpr const char* listsNothing = MACHINE("[]");
constexpr const char* a = CONNECTIVITY(A);
constexpr const char* g = CONNECTIVITY(G);
constexpr const char* ag = CONNECTIVITY(A G);
constexpr const char* kept = nullptr;

constexpr const char* noBandBox =
    "Korvane Connection Settings|Atleast one wireless band must be selected|button |no icon|no owner";

struct BandCase
{
    const char* name;
    const char* szAdapters;
    const char* szConnectivity; // of the stored profile
    const char* szPerson;
    std::vector<std::string> shown;
    const char* szStored; // the connectivity afterwards
};
void PrintTo(const BandCase& row, std::ostream* pOut)
{
    *pOut << row.name;
}

const BandCase bandCases[] = {
    {"both", all, ag, "look ok", {"5GHz+ 2.4GHz+"}, ag},
    {"both_and_more", all, CONNECTIVITY(A G "<phyType>n</phyType>"), "look ok", {"5GHz+ 2.4GHz+"}, ag},
    {"only_5_GHz", all, a, "look ok", {"5GHz+ 2.4GHz-"}, a},
    {"only_2_4_GHz", all, g, "look ok", {"5GHz- 2.4GHz+"}, g},
    {"named_the_other_way_round", all, CONNECTIVITY(G A), "look ok", {"5GHz- 2.4GHz+"}, g},
    {"names_neither", all, CONNECTIVITY("<phyType>n</phyType>"), "look ok", {"5GHz+ 2.4GHz+"}, ag},
    {"no_connectivity", all, "", "look ok", {"5GHz+ 2.4GHz+"}, ag},
    {"empty_connectivity", all, "<connectivity/>", "look cancel", {"5GHz+ 2.4GHz+"}, kept},
    {"interface_of_2_4_GHz", onlyG, ag, "look ok", {"5GHz-! 2.4GHz+"}, g},
    {"interface_of_5_GHz", onlyA, ag, "look ok", {"5GHz+ 2.4GHz-!"}, a},
    {"interface_without_the_profiles_band", onlyG, a, "look ok box 2.4GHz ok", {"5GHz-! 2.4GHz-", noBandBox}, g},
    {"interface_of_neither", neither, ag, "look ok box ok box cancel", {"5GHz-! 2.4GHz-!", noBandBox, noBandBox}, kept},
    {"interface_that_lists_nothing", listsNothing, ag, "look cancel", {"5GHz-! 2.4GHz-!"}, kept},
    {"changed", all, ag, "5GHz look ok", {"5GHz- 2.4GHz+"}, g},
    {"changed_and_back", all, a, "2.4GHz look 2.4GHz ok", {"5GHz+ 2.4GHz+"}, a},
    {"none_twice", all, ag, "5GHz 2.4GHz ok box ok box look 5GHz ok", {noBandBox, noBandBox, "5GHz- 2.4GHz-"}, a},
    {"none_then_cancel", all, ag, "5GHz 2.4GHz ok box cancel", {noBandBox}, kept},
    {"changed_then_closed", all, ag, "5GHz close", {}, kept},
};

class DialogBandsTest : public testing::TestWithParam<BandCase>
{
};

// With everything else off.
std::vector<std::string> WithTheRest(std::vector<std::string> shown)
{
    for (auto& seen : shown)
        seen = (seen.starts_with("5GHz") ? "measure- rapido- roaming- level=Default! " : "") + seen;
    return shown;
}
} // namespace

TEST_P(DialogBandsTest, AreShownAndStored)
{
    const BandCase& row = GetParam();
    const std::string before = OfficeProfile(row.szConnectivity);
    CDialogScenario scenario(row.szAdapters, before);
    const bool bConfirmed = std::string_view(row.szPerson).ends_with("ok");

    const auto outcome = scenario.Show(szAllOff, row.szPerson);
    CDialogScenario::ExpectOutcome(outcome, szAllOff, bConfirmed, tracedCapable);
    EXPECT_EQ(WithTheRest(row.shown), outcome.shown);

    const std::string after = scenario.StoredProfile();
    if (row.szStored)
        EXPECT_EQ(TreeOf(OfficeProfile(row.szStored)), TreeOf(after));
    else
        EXPECT_EQ(before, after);
    EXPECT_EQ(std::string::npos, after.find(R"( xmlns="")"));
    EXPECT_EQ(row.szStored ? 1u : 0u, scenario.CallsOf("WlanSetProfile").size());
}

INSTANTIATE_TEST_SUITE_P(Rows, DialogBandsTest, testing::ValuesIn(bandCases),
                         [](const auto& row) { return std::string(row.param.name); });

namespace
{
// A profile that cannot be read, or not be stored, and a service that does not answer.
struct ServiceCase
{
    const char* name;
    const char* szFailing; // the function; null for none
    DWORD dwError;
    std::string before; // "" for no profile
    const char* szPerson;
    std::vector<std::string> shown;
};
void PrintTo(const ServiceCase& row, std::ostream* pOut)
{
    *pOut << row.name;
}

constexpr const char* noSecurity = "<WLANProfile><name>Office</name><MSM>" CONNECTIVITY(A) "</MSM></WLANProfile>";
const ServiceCase serviceCases[] = {
    {"no_profile", nullptr, 0, "", "look ok", {"5GHz+ 2.4GHz+"}},
    {"profile_without_security", nullptr, 0, noSecurity, "look 2.4GHz ok", {"5GHz+ 2.4GHz-"}},
    {"profile_not_given", "WlanGetProfile", ERROR_ACCESS_DENIED, OfficeProfile(a), "look ok", {"5GHz+ 2.4GHz+"}},
    {"success_without_a_text", "WlanGetProfile", ERROR_SUCCESS, OfficeProfile(a), "look ok", {"5GHz+ 2.4GHz+"}},
    {"profile_not_stored", "WlanSetProfile", ERROR_ACCESS_DENIED, OfficeProfile(a), "2.4GHz ok", {}},
    {"capabilities_not_given",
     "WlanGetInterfaceCapability",
     ERROR_GEN_FAILURE,
     OfficeProfile(a),
     "look ok box cancel",
     {"5GHz- 2.4GHz-", noBandBox}},
};

class DialogServiceTest : public testing::TestWithParam<ServiceCase>
{
};
} // namespace

TEST_P(DialogServiceTest, OldProfileStands)
{
    const ServiceCase& row = GetParam();
    CDialogScenario scenario(all, row.before);
    if (row.szFailing)
        scenario.Service().FailNext(row.szFailing, 1, 100, row.dwError);
    const bool bConfirmed = std::string_view(row.szPerson).ends_with("ok");

    const auto outcome = scenario.Show(szAllOff, row.szPerson);
    CDialogScenario::ExpectOutcome(outcome, szAllOff, bConfirmed, tracedCapable);
    EXPECT_EQ(WithTheRest(row.shown), outcome.shown);
    EXPECT_TRUE(!row.szFailing || scenario.Service().CountCalls(row.szFailing) != 0);
    scenario.Service().ClearFaults();
    EXPECT_EQ(row.before, scenario.StoredProfile());
    EXPECT_EQ(0, scenario.Service().LiveBlocks());
}

INSTANTIATE_TEST_SUITE_P(Rows, DialogServiceTest, testing::ValuesIn(serviceCases),
                         [](const auto& row) { return std::string(row.param.name); });
} // namespace tests
