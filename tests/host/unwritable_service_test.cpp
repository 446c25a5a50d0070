// A service that cannot store: the dialog says nothing about it, the host program does, and leaves everything as it was.
#include "tests/support/HostWorld.h"

#include <gtest/gtest.h>

namespace
{
using namespace tests;

class UnwritableServiceTest : public testing::TestWithParam<std::vector<std::string>>
{
};

TEST_P(UnwritableServiceTest, IsToldAndNothingIsChanged)
{
    const CHostWorld world;
    // A folder where the service's temporary file has to be: it can be neither written nor, being full, taken away.
    std::filesystem::create_directories(world.File(std::string(officeStored) + ".tmp/full"));
    const auto before = world.Snapshot();
    std::vector<std::string> arguments = {"configure", "--service", std::string("@") + rapidoMachine, "--adapter", rapidoAdapter};
    arguments.insert(arguments.end(), GetParam().begin(), GetParam().end());
    const ProgramRun run = world.Host(arguments);
    EXPECT_EQ(1, run.nExitCode) << run.strOutput;
    EXPECT_TRUE(
        run.strErrors.starts_with("korihost: stored profile Office: the WLAN service answered WlanSetProfile with error "))
        << run.strErrors;
    EXPECT_NE(std::string::npos, run.strErrors.find("(access is denied)")) << run.strErrors;
    EXPECT_EQ(before, world.Snapshot());
}

INSTANTIATE_TEST_SUITE_P(Stores, UnwritableServiceTest,
                         testing::Values(std::vector<std::string>{"@office.xml", "--in-place", "--set", "bands=5", "--set",
                                                                  "rapido=off"},
                                         std::vector<std::string>{"--name", "Office", "--set", "bands=5"},
                                         std::vector<std::string>{"--name", "Office", "--set", "rapido=off"}));
} // namespace
