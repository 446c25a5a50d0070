// What registration leaves in the registry, step by step.
#include "tests/server/RegistrationTest.h"

namespace
{
using namespace tests::registration;
using tests::CRegistryValue;
using Registration = RegistrationTest;

TEST_F(Registration, TwiceWritesTheSameAndUnregisteringRemovesIt)
{
    for (int i = 0; i < 2; ++i)
    {
        EXPECT_EQ(S_OK, Register());
        EXPECT_EQ(Expected(false), Lines());
        ExpectRegistered();
    }
    EXPECT_EQ(S_OK, Unregister());
    EXPECT_EQ(Expected(true), Lines());
    EXPECT_FALSE(Exists(szClassKey));
}

TEST_F(Registration, NeverRegisteredLeavesAnEmptyClassKey)
{
    EXPECT_EQ(S_FALSE, Unregister());
    EXPECT_EQ(Expected(true), Lines());
    EXPECT_TRUE(Exists(szClassKey));
    EXPECT_FALSE(Exists(szServerKey));
    EXPECT_EQ(std::nullopt, Read(szClassKey, nullptr));
}

TEST_F(Registration, ForeignSubKeyKeepsTheClassKey)
{
    EXPECT_EQ(S_OK, Register());
    {
        const CRegistryValue foreign(HKEY_CLASSES_ROOT, szForeignKey, OLESTR("Kept"), 1);
        Lines();
        EXPECT_EQ(S_FALSE, Unregister());
        EXPECT_EQ(Expected(true), Lines());
        EXPECT_FALSE(Exists(szServerKey));
        EXPECT_EQ(Text(OLESTR("Korvane WLAN IHV Extension UI")), Read(szClassKey, nullptr));
        EXPECT_NE(std::nullopt, Read(szForeignKey, OLESTR("Kept")));
    }
    EXPECT_EQ(S_OK, Register()) << "beside a foreign key";
    ExpectRegistered();
}

TEST_F(Registration, OtherValuesAreReplaced)
{
    const CRegistryValue other(HKEY_CLASSES_ROOT, szServerKey, OLESTR("ThreadingModel"), CWideString(OLESTR("Apartment")));
    const CRegistryValue path(HKEY_CLASSES_ROOT, szServerKey, nullptr, 7);
    EXPECT_EQ(S_OK, Register());
    ExpectRegistered();
}
} // namespace
