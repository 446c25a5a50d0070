// korihost trace: what it makes of a log.
#include "tests/support/HostWorld.h"

#include <gtest/gtest.h>

namespace
{
// Two threads, a writer that was killed within its line, midnight, a text of several lines with a key, the two operations that
// begin with one line.
constexpr const char* log =
    "the rest of a line\r\n"
    "23:59:59.900 [     A3C]   Ihvui: GetClassObject\r\n"
    "23:59:59.950 [      B1]   Ihvui: \nCExtUIKey::Dot11ExtUIPropertyGetSelected\r\n"
    "23:59:59.940 [     A3C]   Ihvui: CFactory::CreateInstance\r\n"
    "23:59:59.960 [      B1]   Ihvui: bstrIHVProfile: <CCX>\r\n<sharedKey>secret</sharedKey>\r\n</CCX>\r\n"
    "00:00:01.000 [     A3C]   Ihvui: -- IID_ICCX00:00:01.001 [      B1]   Ihvui: *pfIsSelected: TRUE\r\n"
    "00:00:02.000 [FFFFFFFE]   Ihvui: \nCExtUICon::Dot11ExtUIPropertySetSelected\r\n"
    "00:00:02.001 [FFFFFFFE]   Ihvui: bstrIHVProfile (IN): (null)\r\n"
    "00:00:03.000 [FFFFFFFE]   Ihvui: bstrIHVProfile (IN): a\x1b]b\r\n\r\n"
    "00:00:03.001 [FFFFFFFE]   Ihvui: *** Error: invalid profile.\n\n";

constexpr const char* key =
    "23:59:59.950 [B1] CExtUIKey::Dot11ExtUIPropertyGetSelected\n"
    "    bstrIHVProfile: <CCX>\n    <sharedKey>********</sharedKey>\n    </CCX>\n    *pfIsSelected: TRUE\n";
constexpr const char* dialog = "00:00:02.000 [FFFFFFFE] CExtUICon::Dot11ExtUIPropertyShowDialog\n"
                               "    bstrIHVProfile (IN): (null)\n";
constexpr const char* failed = "00:00:03.000 [FFFFFFFE] CExtUICon::Dot11ExtUIPropertySetSelected\n"
                               "    bstrIHVProfile (IN): a\\x1b]b\n    *** Error: invalid profile.\n";

TEST(TraceTest, TellsCallByCall)
{
    const tests::CHostWorld world;
    tests::WriteBytes(world.File("log.txt"), log);
    tests::WriteBytes(world.File("other.txt"), "no log\n");
    const struct
    {
        std::vector<std::string> options;
        std::string strOutput;
    } rows[] = {
        {{},
         std::string("23:59:59.900 [A3C] DllGetClassObject\n") + dialog + key +
             "23:59:59.940 [A3C] CFactory::CreateInstance\n    -- IID_ICCX\n" + failed},
        {{"--thread", "b1"}, key},
        {{"--errors"}, failed},
        {{"--since", "00:00:02"}, std::string(dialog) + failed},
        {{"--summary", "--thread", "FFFFFFFE"},
         "       1  CExtUICon::Dot11ExtUIPropertySetSelected\n                 1  bstrIHVProfile (IN): a\\x1b]b\n"
         "                 1  *** Error: invalid profile.\n"
         "       1  CExtUICon::Dot11ExtUIPropertyShowDialog\n                 1  bstrIHVProfile (IN): (null)\n"},
    };
    for (const auto& row : rows)
    {
        std::vector<std::string> arguments{"trace", "@log.txt"};
        arguments.insert(arguments.end(), row.options.begin(), row.options.end());
        EXPECT_EQ(row.strOutput, world.Host(arguments).strOutput);
    }
    EXPECT_EQ(1, world.Host({"trace", "@other.txt"}).nExitCode);
    EXPECT_EQ(2, world.Host({"trace", "@log.txt", "--since", "24:00:00"}).nExitCode);
}
} // namespace
