// The host program as it is run: what it changes, what it leaves alone, what it says and how it ends.
#include "tests/support/HostWorld.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace
{
using namespace tests;

using Arguments = std::vector<std::string>;

Arguments operator+(Arguments left, const Arguments& right)
{
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

Arguments OnMachine(const std::string& strMachine, const std::string& strAdapter)
{
    return {"--service", "@" + strMachine, "--adapter", strAdapter};
}
const Arguments onRapidoMachine = OnMachine(rapidoMachine, rapidoAdapter);
const Arguments onMachineWithoutMaker = OnMachine("service/none-of-the-makers", "3d6f90b4-1c27-4e8a-b5d0-72a9e4c8165f");
const Arguments onWornOutCard = OnMachine("service/none-of-the-makers", "e80b47a3-95d2-4c61-8f1e-0d3b6c92a75e");
const Arguments onSecondOfTwo = OnMachine("service/second-is-the-makers", "c2085e7d-64f1-49ab-8b3c-1f9ad7e052c6");
const Arguments onFirstOfTwo = OnMachine("service/second-is-the-makers", "91e4a6f2-30bc-4d58-a7e9-5c8f1b2d6073");

// Each of the sample profiles

class SampleTest : public testing::TestWithParam<const char*>
{
};

TEST_P(SampleTest, SelectLeavesEveryByteAroundItsOwnPlace)
{
    const CHostWorld world;
    const ProgramRun run = world.Host({"select", std::string("@") + GetParam(), "--cipher", "wep", "-o", "@out.xml"});
    ASSERT_EQ(0, run.nExitCode) << run.strErrors;
    const std::string strBefore = ReadBytes(world.File(GetParam()));
    const std::string strAfter = ReadBytes(world.File("out.xml"));
    ASSERT_FALSE(strAfter.empty());
    const auto first = std::mismatch(strBefore.begin(), strBefore.end(), strAfter.begin(), strAfter.end());
    const auto last = std::mismatch(strBefore.rbegin(), std::make_reverse_iterator(first.first), strAfter.rbegin(),
                                    std::make_reverse_iterator(first.second));
    const std::string strTakenOut(first.first, last.first.base());
    const std::string strPutIn(first.second, last.second.base());
    // Where nothing of the vendor's was there, nothing is taken out.
    if (strBefore.find("authenticatingNetwork") == std::string::npos)
        EXPECT_EQ("", strTakenOut);
    else
        EXPECT_LT(strBefore.rfind("<security>", strBefore.find("authenticatingNetwork")),
                  static_cast<std::size_t>(first.first - strBefore.begin()));
    EXPECT_EQ(strBefore.size() - strTakenOut.size(), strAfter.size() - strPutIn.size());
    EXPECT_EQ(strBefore, ReadBytes(world.File(GetParam())));
    EXPECT_NE(std::string::npos, run.strOutput.find("authenticatingNetwork")) << run.strOutput;
}

TEST_P(SampleTest, ShowNamesProfileAndExtension)
{
    const CHostWorld world;
    const auto before = world.Snapshot();
    const ProgramRun run = world.Host({"show", std::string("@") + GetParam()});
    EXPECT_EQ(0, run.nExitCode) << run.strErrors;
    for (const char* szRow :
         {"Profile   ", "Korvane Connection Settings", "CCKM", "WEP         data key 5", "Connection settings\n"})
        EXPECT_NE(std::string::npos, run.strOutput.find(szRow)) << szRow << "\n" << run.strOutput;
    EXPECT_EQ(before, world.Snapshot());
}

INSTANTIATE_TEST_SUITE_P(Samples, SampleTest,
                         testing::Values("buero-umlaut.xml", "campus-enterprise.xml", "depot-prefixed.xml", "home-wpa2psk.xml",
                                         "kiosk-one-line.xml", "open-cafe.xml", "warehouse-ccx.xml", "warehouse-invalid.xml"),
                         [](const auto& instance)
                         {
                             std::string strName = instance.param;
                             std::erase_if(strName, [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); });
                             return strName;
                         });

// What is said of a profile and a machine

struct ShowCase
{
    const char* szName;
    Arguments arguments;
    std::vector<std::string> rows; // blanks count once
};

std::string SingleBlanks(std::string strText)
{
    strText.erase(std::unique(strText.begin(), strText.end(), [](char left, char right) { return left == ' ' && right == ' '; }),
                  strText.end());
    return strText;
}

class ShowTest : public testing::TestWithParam<ShowCase>
{
};

TEST_P(ShowTest, HasTheRows)
{
    const CHostWorld world;
    const ProgramRun run = world.Host(Arguments{"show"} + GetParam().arguments);
    EXPECT_EQ(0, run.nExitCode) << run.strErrors;
    for (const std::string& strRow : GetParam().rows)
        EXPECT_NE(std::string::npos, SingleBlanks(run.strOutput).find("\n " + strRow + "\n")) << strRow << "\n" << run.strOutput;
}

INSTANTIATE_TEST_SUITE_P(
    Rows, ShowTest,
    testing::Values(ShowCase{"record",
                             {"@warehouse-ccx.xml"},
                             {"radioMeasurement 1", "locationBasedServices 1", "maxOffChannelTimeMs 50", "minOnChannelTimeMs 400",
                              "rapido 1", "advancedRoaming 1", "roamingOption 2", "keepAliveEnabled 1", "keepAlivePeriod 60",
                              "authorizedProfile 1", "clientReporting 1", "diagnosticSsidLength 18"}},
                    ShowCase{"not_set", {"@office.xml"}, {"authorizedProfile not set", "diagnosticSsidLength not set"}},
                    ShowCase{
                        "nothing_stored", {"@home-wpa2psk.xml"}, {"none in the profile; the dialog begins with its defaults"}},
                    ShowCase{"makers_adapter",
                             Arguments{"@office.xml"} + onRapidoMachine,
                             {"of the maker's yes", "Rapido 1 (offered)", "bands 5 GHz and 2.4 GHz (written: ag)"}},
                    ShowCase{"other_adapter",
                             Arguments{"@office.xml"} + onMachineWithoutMaker,
                             {"of the maker's no", "Rapido not asked", "PHY types HR/DSSS (802.11b)"}}),
    [](const auto& instance) { return instance.param.szName; });

// Registering for the machine, and using the class from there

TEST(RegistrationTest, TheRegisteredModuleIsUsedUntilItIsGone)
{
    const CHostWorld world;
    EXPECT_EQ(1, world.Host({"show", "@office.xml", "--registered"}).nExitCode);
    const ProgramRun registered = world.Host({"register"});
    EXPECT_EQ(0, registered.nExitCode) << registered.strErrors;
    const ProgramRun shown = world.Host({"show", "@office.xml", "--registered"});
    EXPECT_EQ(0, shown.nExitCode) << shown.strErrors;
    EXPECT_EQ(world.Host({"show", "@office.xml"}).strOutput, shown.strOutput);
    EXPECT_EQ(0, world.Host({"unregister"}).nExitCode);

    const ProgramRun again = world.Host({"unregister"});
    EXPECT_EQ(1, again.nExitCode);
    EXPECT_NE(std::string::npos, again.strErrors.find("it was not registered")) << again.strErrors;
    EXPECT_EQ(1, world.Host({"show", "@office.xml", "--registered"}).nExitCode);
}

// What the dialog is asked for, and what becomes of it

struct ConfigureCase
{
    const char* szName;
    const char* szSetting;
    const char* szInProfile; // without white space
    const char* szInService;
};

class ConfigureTest : public testing::TestWithParam<ConfigureCase>
{
};

constexpr const char* bothBands = "<connectivity><phyType>a</phyType><phyType>g</phyType></connectivity>";

TEST_P(ConfigureTest, ChangesTheFileAndTheServicesBands)
{
    const CHostWorld world;
    const ProgramRun run = world.Host(Arguments{"configure", "@office.xml"} + onRapidoMachine +
                                      Arguments{"--set", GetParam().szSetting, "--in-place"});
    EXPECT_EQ(0, run.nExitCode) << run.strErrors;
    EXPECT_NE(std::string::npos, world.Condensed(officeFile).find(GetParam().szInProfile)) << world.Condensed(officeFile);
    EXPECT_NE(std::string::npos, world.Condensed(officeFile).find(bothBands));
    EXPECT_NE(std::string::npos, world.Condensed(officeStored).find(GetParam().szInService)) << world.Condensed(officeStored);
    EXPECT_NE(std::string::npos, run.strOutput.find("The WLAN service's stored profile:\n")) << run.strOutput;
}

TEST_P(ConfigureTest, ChangesTheStoredProfile)
{
    const CHostWorld world;
    const std::string strFile = ReadBytes(world.File(officeFile));
    const ProgramRun run =
        world.Host(Arguments{"configure", "--name", "Office"} + onRapidoMachine + Arguments{"--set", GetParam().szSetting});
    EXPECT_EQ(0, run.nExitCode) << run.strErrors;
    EXPECT_NE(std::string::npos, world.Condensed(officeStored).find(GetParam().szInProfile)) << world.Condensed(officeStored);
    EXPECT_NE(std::string::npos, world.Condensed(officeStored).find(GetParam().szInService));
    EXPECT_EQ(strFile, ReadBytes(world.File(officeFile)));
}

INSTANTIATE_TEST_SUITE_P(
    Settings, ConfigureTest,
    testing::Values(ConfigureCase{"radio_measurement", "radio-measurement=off", "<RadioMeasurement><disabled", bothBands},
                    ConfigureCase{"rapido", "rapido=off", "<Rapido>false<", bothBands},
                    ConfigureCase{"advanced_roaming", "advanced-roaming=off", "<AdvancedRoaming><disabled", bothBands},
                    ConfigureCase{"roaming", "roaming=Very High", "<RoamingOption>5<", bothBands},
                    ConfigureCase{"bands_5", "bands=5", "<RoamingOption>3<", "<connectivity><phyType>a</phyType></connectivity>"},
                    ConfigureCase{"bands_24", "bands=2.4", "<Period>60<", "<connectivity><phyType>g</phyType></connectivity>"},
                    ConfigureCase{"bands_both", "bands=both", "<MaxOffChannelTimeMs>40<", bothBands}),
    [](const auto& instance) { return instance.param.szName; });

TEST(ConfigureTwiceTest, WhatWasSwitchedOffComesBack)
{
    const CHostWorld world;
    for (const char* szState : {"off", "on"})
    {
        const ProgramRun run =
            world.Host(Arguments{"configure", "@office.xml"} + onRapidoMachine +
                       Arguments{"--set", std::string("radio-measurement=") + szState, "--set", std::string("rapido=") + szState,
                                 "--set", std::string("advanced-roaming=") + szState, "--in-place"});
        EXPECT_EQ(0, run.nExitCode) << run.strErrors;
    }
    const std::string strProfile = world.Condensed(officeFile);
    for (const char* szPart : {"<RadioMeasurement><enabled>", "<Rapido>true<", "<AdvancedRoaming><enabled>"})
        EXPECT_NE(std::string::npos, strProfile.find(szPart)) << strProfile;
}

TEST(ConfigureTwiceTest, MessagesAreToldAndAnswered)
{
    const CHostWorld world;
    const ProgramRun run = world.Host(Arguments{"configure", "@warehouse-invalid.xml"} + onRapidoMachine);
    EXPECT_EQ(0, run.nExitCode) << run.strErrors;
    for (const char* szLine :
         {"Message box: Current settings are invalid and will be set to defaults.\n", "the bands will not be stored"})
        EXPECT_NE(std::string::npos, run.strOutput.find(szLine)) << run.strOutput;
}

// What is refused, with nothing changed on the disk

struct RefusedCase
{
    const char* szName;
    int nExitCode;
    Arguments arguments;
    std::vector<std::string> reasons;
};

class RefusedTest : public testing::TestWithParam<RefusedCase>
{
};

TEST_P(RefusedTest, SaysWhyAndChangesNothing)
{
    const CHostWorld world;
    const auto before = world.Snapshot();
    const ProgramRun run = world.Host(GetParam().arguments);
    EXPECT_EQ(GetParam().nExitCode, run.nExitCode);
    for (const std::string& strReason : GetParam().reasons)
        EXPECT_NE(std::string::npos, run.strErrors.find(strReason)) << strReason << "\n" << run.strErrors;
    EXPECT_EQ(before, world.Snapshot());
}

const Arguments configureInPlace = {"configure", "@office.xml", "--in-place"};

INSTANTIATE_TEST_SUITE_P(
    Reasons, RefusedTest,
    testing::Values(
        RefusedCase{"no_command", 2, {}, {"subcommand"}},
        RefusedCase{"no_file", 1, {"show", "@absent.xml"}, {"absent.xml: there is no such file"}},
        RefusedCase{"no_profile", 1, {"select", "@service/no-adapter/adapters.json", "--in-place"}, {"not well-formed XML"}},
        RefusedCase{"unknown_cipher", 2, {"select", "@office.xml", "--cipher", "ROT13", "--in-place"}, {"ROT13"}},
        RefusedCase{"output_is_input", 1, {"select", "@office.xml", "-o", "@office.xml"}, {"use --in-place"}},
        RefusedCase{"unknown_setting",
                    2,
                    configureInPlace + onRapidoMachine + Arguments{"--set", "rapid=on"},
                    {"radio-measurement, rapido, advanced-roaming, roaming, bands"}},
        RefusedCase{"unknown_value",
                    2,
                    configureInPlace + onRapidoMachine + Arguments{"--set", "roaming=Extreme"},
                    {"Default, Very Low, Low, Normal, High, Very High"}},
        RefusedCase{"set_twice",
                    2,
                    configureInPlace + onRapidoMachine + Arguments{"--set", "bands=5", "--set", "bands=2.4"},
                    {"bands is set twice"}},
        RefusedCase{"no_guid", 2, configureInPlace + OnMachine(rapidoMachine, "first"), {"first is not a GUID"}},
        RefusedCase{"no_service", 1, configureInPlace + OnMachine("service", rapidoAdapter), {"is not a service folder"}},
        RefusedCase{"no_such_adapter",
                    1,
                    configureInPlace + OnMachine(rapidoMachine, "3d6f90b4-1c27-4e8a-b5d0-72a9e4c8165f"),
                    {"there is no adapter 3d6f90b4", rapidoAdapter}},
        RefusedCase{"no_stored_profile",
                    1,
                    Arguments{"configure", "--name", "Nowhere"} + onRapidoMachine,
                    {"has no profile Nowhere on adapter"}},
        RefusedCase{"neither_file_nor_name", 2, Arguments{"configure"} + onRapidoMachine, {"is needed"}},
        RefusedCase{"rapido_not_reported",
                    1,
                    configureInPlace + onMachineWithoutMaker + Arguments{"--set", "rapido=on"},
                    {"Enable Rapido A/G (control 1003) is disabled"}},
        RefusedCase{"no_5_ghz",
                    1,
                    configureInPlace + onFirstOfTwo + Arguments{"--set", "bands=5"},
                    {"Enable 5 GHz Band (control 1008) is disabled: the interface does not support 5 GHz"}},
        RefusedCase{"roaming_off",
                    1,
                    configureInPlace + onRapidoMachine + Arguments{"--set", "advanced-roaming=off", "--set", "roaming=High"},
                    {"Roaming Option (control 1005) is disabled: Advanced Roaming is off"}},
        RefusedCase{"no_band_at_all", 1, configureInPlace + onWornOutCard, {"Atleast one wireless band must be selected"}}),
    [](const auto& instance) { return instance.param.szName; });

// The dialog says nothing about a service that cannot store; the host program does.
TEST(ConfigureBrokenServiceTest, TellsThatNothingCouldBeStoredAndChangesNothing)
{
    const CHostWorld world;
    std::filesystem::permissions(world.File(officeStored), std::filesystem::perms::owner_write,
                                 std::filesystem::perm_options::remove);
    const auto before = world.Snapshot();
    for (const Arguments& arguments :
         {Arguments{"@office.xml", "--in-place", "--set", "bands=5", "--set", "rapido=off"},
          Arguments{"--name", "Office", "--set", "bands=5"}, Arguments{"--name", "Office", "--set", "rapido=off"}})
    {
        const ProgramRun run = world.Host(Arguments{"configure"} + onRapidoMachine + arguments);
        EXPECT_EQ(1, run.nExitCode) << run.strOutput;
        for (const char* szPart :
             {"korihost: stored profile Office: the WLAN service answered WlanSetProfile with error ", "(access is denied)"})
            EXPECT_NE(std::string::npos, run.strErrors.find(szPart)) << run.strErrors;
        EXPECT_EQ(before, world.Snapshot());
    }
    std::filesystem::permissions(world.File(officeStored), std::filesystem::perms::owner_write,
                                 std::filesystem::perm_options::add);
}

TEST(ConfigureBrokenServiceTest, TellsWhereTheFaultIs)
{
    const CHostWorld world;
    WriteBytes(world.File(rapidoMachine) / "adapters.json", "[{}]");
    const ProgramRun run = world.Host(configureInPlace + onRapidoMachine);
    EXPECT_EQ(1, run.nExitCode);
    EXPECT_NE(std::string::npos, run.strErrors.find("error 13 (invalid data")) << run.strErrors;
}

// A control that already stands as it is wanted needs no hand.
TEST(ConfigureTwiceTest, ADisabledControlMayStayAsItIs)
{
    const CHostWorld world;
    const ProgramRun run = world.Host(Arguments{"configure", "@office.xml"} + onSecondOfTwo +
                                      Arguments{"--set", "bands=both", "--set", "rapido=on"});
    EXPECT_EQ(0, run.nExitCode) << run.strErrors;
    const ProgramRun other =
        world.Host(Arguments{"configure", "@office.xml"} + onFirstOfTwo + Arguments{"--set", "bands=2.4", "--set", "rapido=on"});
    EXPECT_EQ(0, other.nExitCode) << other.strErrors;
}
} // namespace
