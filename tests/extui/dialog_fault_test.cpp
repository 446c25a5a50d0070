// The dialog when the platform fails it.
#include "platform/testing/Faults.h"
#include "tests/support/DialogScenario.h"

namespace tests
{
using platform::testing::CFailNth;

TEST(DialogFault, WithoutADialogThePreparedRecordIsReturned)
{
    CDialogScenario scenario(makersMachine, OfficeProfile(""));
    const CFailNth fault("DialogBoxParamW", 1);
    const auto outcome = scenario.Show("<CCX><RadioMeasurement><enabled/></RadioMeasurement></CCX>", "box");
    EXPECT_TRUE(fault.HasFired());
    EXPECT_EQ(S_OK, outcome.hr);
    EXPECT_EQ(-1, outcome.bModified);
    EXPECT_EQ(0u, outcome.profile.find("<CCX><RadioMeasurement><enabled><MaxOffChannelTimeMs>50</MaxOffChannelTimeMs>"))
        << outcome.profile;
    EXPECT_EQ("bstrModifiedIHVProfile (OUT): <CCX>", outcome.traced.back());
    EXPECT_EQ(std::vector<std::string>{}, scenario.CalledFunctions());
}

TEST(DialogFault, WithoutTheBoxTheDefaultsAreShownAllTheSame)
{
    CDialogScenario scenario(makersMachine, OfficeProfile(""));
    const CFailNth fault("MessageBoxW", 1);
    const auto outcome = scenario.Show("<CCX><RadioMeasurement><enabled/></RadioMeasurement></CCX>", "look cancel");
    EXPECT_TRUE(fault.HasFired());
    EXPECT_EQ(std::vector<std::string>{"measure+ rapido+ roaming+ level=Default 5GHz+ 2.4GHz+"}, outcome.shown);
}

// The value says to hide the check-box, but cannot be read.
TEST(DialogFault, UnreadableSwitchHidesNothing)
{
    const CRegistryValue noCcx(HKEY_LOCAL_MACHINE, OLESTR("SOFTWARE\\Korvane\\Fenn"), OLESTR("NoCCX"), 1);
    for (const char* szFunction : {"RegOpenKeyExW", "RegQueryValueExW"})
    {
        CDialogScenario scenario(makersMachine, OfficeProfile(""));
        const CFailNth fault(szFunction, 1, ERROR_ACCESS_DENIED);
        const auto outcome = scenario.Show(szAllOff, "look cancel");
        EXPECT_TRUE(fault.HasFired()) << szFunction;
        EXPECT_EQ(std::vector<std::string>{"measure- rapido- roaming- level=Default! 5GHz+ 2.4GHz+"}, outcome.shown)
            << szFunction;
    }
}

// Each document in turn cannot be made: the dialog ends as it should, and the bands are stored as chosen or not at all.
TEST(DialogFault, WithoutADocumentTheOldBandsStand)
{
    const std::string old = OfficeProfile("<connectivity><phyType>a</phyType></connectivity>");
    bool bOldStood = false;
    for (unsigned k = 1;; ++k)
    {
        CDialogScenario scenario(makersMachine, old);
        const CFailNth fault("CoCreateInstance", k);
        const auto outcome = scenario.Show(szAllOff, "2.4GHz ok");
        if (!fault.HasFired())
            break;
        EXPECT_EQ(S_OK, outcome.hr) << k;
        EXPECT_EQ(1, outcome.bModified) << k;
        bOldStood |= outcome.profile == szAllOff && scenario.StoredProfile() == old;
    }
    EXPECT_TRUE(bOldStood);
}
} // namespace tests
