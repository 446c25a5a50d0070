// The language search when the platform fails it. Native alone: only here is a file of the user's language found.
#include "platform/testing/Faults.h"
#include "tests/support/ModuleUnderTest.h"

namespace
{
using platform::testing::CFailNth;
using tests::CModuleUnderTest;

TEST(ModuleEntryFaults, WithoutALocaleNameTheEnglishFileServes)
{
    SetEnvironmentVariableW(OLESTR("LC_ALL"), OLESTR("de_DE.UTF-8"));
    ASSERT_TRUE(SetCurrentDirectoryW(tests::PlatformNameOf(tests::BuildFolder()).c_str())); // where a German file lies
    const auto title = []
    {
        const CModuleUnderTest module(CModuleUnderTest::Registration::None);
        CBstr name;
        EXPECT_EQ(S_OK, module.Create<ICCXExtUICon>(IID_ICCXExtUICon)->Dot11ExtUIPropertyGetName(name.Put()));
        return tests::TextOf(name);
    };
    const auto usual = title();
    ASSERT_NE("Korvane Connection Settings", usual) << "the German file was not found";
    const CFailNth fault("GetUserDefaultLocaleName", 1);
    EXPECT_EQ("Korvane Connection Settings", title());
    EXPECT_TRUE(fault.HasFired());
}
} // namespace
