// The host program as it is run: what it changes, what it leaves alone, what it says and how it ends.
#include "tests/support/HostWorld.h"
#include "tests/support/Pattern.h"

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

void ExpectParts(const std::string& strText, const std::vector<std::string>& parts)
{
    for (const std::string& strPart : parts)
        EXPECT_NE(std::string::npos, strText.find(strPart)) << strPart << "\nin\n" << strText;
}

// Runs a command that has to succeed.
ProgramRun Done(const CHostWorld& world, const Arguments& arguments)
{
    ProgramRun run = world.Host(arguments);
    EXPECT_EQ(0, run.nExitCode) << run.strErrors;
    return run;
}

TEST(SampleTest, SelectLeavesEveryByteAroundItsOwnPlace)
{
    const CHostWorld world;
    for (const std::string strName : {"buero-umlaut.xml", "campus-enterprise.xml", "depot-prefixed.xml", "home-wpa2psk.xml",
                                      "kiosk-one-line.xml", "open-cafe.xml", "warehouse-ccx.xml", "warehouse-invalid.xml"})
    {
        SCOPED_TRACE(strName);
        ExpectParts(Done(world, {"show", "@" + strName}).strOutput,
                    {"Profile   ", "Korvane Connection Settings", "CCKM", "WEP         data key 5", "Connection settings\n"});
        const std::string strBefore = ReadBytes(world.File(strName));
        Done(world, {"select", "@" + strName, "--cipher", "wep", "-o", "@out.xml"});
        const std::string strAfter = ReadBytes(world.File("out.xml"));
        const auto first = std::mismatch(strBefore.begin(), strBefore.end(), strAfter.begin(), strAfter.end());
        const auto last = std::mismatch(strBefore.rbegin(), std::make_reverse_iterator(first.first), strAfter.rbegin(),
                                        std::make_reverse_iterator(first.second));
        const std::string strTakenOut(first.first, last.first.base());
        EXPECT_NE(first.second, last.second.base()) << "nothing was put in";
        // Where nothing of the vendor's was there, nothing is taken out.
        if (const std::size_t nOwn = strBefore.find("authenticatingNetwork"); nOwn == std::string::npos)
            EXPECT_EQ("", strTakenOut);
        else
            EXPECT_LT(strBefore.rfind("<security>", nOwn), static_cast<std::size_t>(first.first - strBefore.begin()));
        std::string strCondensed = world.Condensed("out.xml");
        std::erase(strCondensed, '\0'); // of UTF-16
        ExpectParts(strCondensed,
                    {"<CCXxmlns=\"http://www.korvane.com/CCX\"><authenticatingNetwork><cckm><encryption>WEP</encryption></cckm>"
                     "</authenticatingNetwork></CCX>"});
        EXPECT_EQ(strBefore, ReadBytes(world.File(strName)));
    }
}

TEST(ShowTest, TellsOfTheRecordAndTheMachine)
{
    const CHostWorld world;
    WriteBytes(world.File("hostile.xml"),
               "<WLANProfile><name>a&#10;b&#x9b;&#x202e;&lt;Password>copper-kettle-93-finch</name><IHV><security><CCX>"
               "<!-- <keyMaterial>copper-kettle-93-finch --></CCX></security></IHV></WLANProfile>");
    const std::pair<Arguments, std::vector<std::string>> cases[] = {
        {{"@warehouse-ccx.xml"},
         {"radioMeasurement 1\n locationBasedServices 1\n maxOffChannelTimeMs 50\n minOnChannelTimeMs 400\n rapido 1\n "
          "advancedRoaming 1\n roamingOption 2\n keepAliveEnabled 1\n keepAlivePeriod 60\n authorizedProfile 1\n "
          "clientReporting 1\n diagnosticSsidLength 18\n"}},
        {{"@office.xml"}, {"authorizedProfile not set\n", "diagnosticSsidLength not set\n"}},
        {{"@hostile.xml", "--trace", "-"}, {"Profile a\\nb\\x9b\\u202e<Password>********\n", "<!-- <keyMaterial>********-->"}},
        {{"@home-wpa2psk.xml"},
         {"Verdict valid\n", "selected no, the profile uses WPA2PSK with AES\n",
          "none in the profile; the dialog begins with its defaults\n"}},
        {{"@warehouse-invalid.xml"},
         {"Verdict invalid, 2 errors\n", "[off-channel-time]", "selected yes, the profile uses CCKM"}},
        {{"@warehouse-ccx.xml", "@warehouse-invalid.xml", "@open-cafe.xml"},
         {"Warehouse Floor Korvane CCKM with TKIP yes valid 5 GHz and 2.4 GHz ",
          "Warehouse Ramp Korvane CCKM with AES yes invalid 2.4 GHz ", "Harbour Cafe the platform open with none no none 5 GHz"}},
        {{"--service", "@service/second-is-the-makers"}, {"Hotel Guests the platform", "Office the platform"}},
        {Arguments{"--name", "Office"} + onSecondOfTwo, {"Profile Office\n", "Stored profile Office\n"}},
        {Arguments{"@office.xml"} + onRapidoMachine,
         {"of the maker's yes\n", "Rapido 1 (offered)\n", "bands 5 GHz and 2.4 GHz (written: ag)\n"}},
        {Arguments{"@office.xml"} + onMachineWithoutMaker,
         {"of the maker's no\n", "Rapido not asked\n", "PHY types HR/DSSS (802.11b)\n"}},
    };
    for (const auto& [arguments, rows] : cases)
        ExpectParts(Replaced(Done(world, Arguments{"show"} + arguments).strOutput, " +", " "), rows);
}

TEST(RegistrationTest, TheRegisteredModuleIsUsedUntilItIsGone)
{
    const CHostWorld world;
    const Arguments showRegistered = {"show", "@office.xml", "--registered"};
    EXPECT_EQ(1, world.Host(showRegistered).nExitCode);
    Done(world, {"register"});
    EXPECT_EQ(Done(world, {"show", "@office.xml"}).strOutput, Done(world, showRegistered).strOutput);
    Done(world, {"unregister"});
    const ProgramRun again = world.Host({"unregister"});
    EXPECT_EQ(1, again.nExitCode);
    ExpectParts(again.strErrors, {"it was not registered"});
    EXPECT_EQ(1, world.Host(showRegistered).nExitCode);
}

// What the dialog is asked for, and what becomes of it

struct ConfigureCase
{
    const char* szSetting;
    const char* szInProfile; // without white space
    const char* szInService;
};
constexpr const char* bothBands = "<connectivity><phyType>a</phyType><phyType>g</phyType></connectivity>";
constexpr ConfigureCase configureCases[] = {
    {"radio-measurement=off", "<RadioMeasurement><disabled", bothBands},
    {"rapido=off", "<Rapido>false<", bothBands},
    {"advanced-roaming=off", "<AdvancedRoaming><disabled", bothBands},
    {"Roaming=very high", "<RoamingOption>5<", bothBands},
    {"bands=5", "<RoamingOption>3<", "<connectivity><phyType>a</phyType></connectivity>"},
    {"bands=2.4", "<Period>60<", "<connectivity><phyType>g</phyType></connectivity>"},
    {"bands=both", "<MaxOffChannelTimeMs>40<", bothBands},
};

TEST(ConfigureTest, ChangesTheFileOrTheStoredProfile)
{
    for (const ConfigureCase& row : configureCases)
    {
        SCOPED_TRACE(row.szSetting);
        const CHostWorld world;
        const std::string strFile = ReadBytes(world.File(officeFile));
        Done(world, Arguments{"configure", "--name", "Office"} + onRapidoMachine + Arguments{"--set", row.szSetting});
        ExpectParts(world.Condensed(officeStored), {row.szInProfile, row.szInService});
        EXPECT_EQ(strFile, ReadBytes(world.File(officeFile)));

        const ProgramRun run = Done(world, Arguments{"configure", "@office.xml"} + onRapidoMachine +
                                               Arguments{"--set", row.szSetting, "--in-place"});
        ExpectParts(world.Condensed(officeFile), {row.szInProfile, bothBands});
        ExpectParts(world.Condensed(officeStored), {row.szInService});
        ExpectParts(run.strOutput, {"The WLAN service's stored profile:\n"});
    }
}

TEST(ConfigureTest, WhatWasSwitchedOffComesBack)
{
    const CHostWorld world;
    for (const std::string strState : {"off", "on"})
        Done(world, Arguments{"configure", "@office.xml", "--in-place"} + onRapidoMachine +
                        Arguments{"--set", "radio-measurement=" + strState, "--set", "rapido=" + strState, "--set",
                                  "advanced-roaming=" + strState});
    ExpectParts(world.Condensed(officeFile), {"<RadioMeasurement><enabled>", "<Rapido>true<", "<AdvancedRoaming><enabled>"});
}

TEST(ConfigureTest, MessagesAreToldAndAnswered)
{
    const CHostWorld world;
    ExpectParts(Done(world, Arguments{"configure", "@warehouse-invalid.xml"} + onRapidoMachine).strOutput,
                {"Message box: Current settings are invalid and will be set to defaults.\n", "the bands will not be stored"});
}

// A control that already stands as it is wanted needs no hand.
TEST(ConfigureTest, ADisabledControlMayStayAsItIs)
{
    const CHostWorld world;
    Done(world, Arguments{"configure", "@office.xml"} + onSecondOfTwo + Arguments{"--set", "bands=both", "--set", "rapido=on"});
    Done(world, Arguments{"configure", "@office.xml"} + onFirstOfTwo + Arguments{"--set", "bands=2.4", "--set", "rapido=on"});
}

// What is refused, with nothing changed on the disk

struct RefusedCase
{
    int nExitCode;
    Arguments arguments;
    std::vector<std::string> reasons;
};

void ExpectRefusal(const CHostWorld& world, const RefusedCase& expected)
{
    const auto before = world.Snapshot();
    const ProgramRun run = world.Host(expected.arguments);
    EXPECT_EQ(expected.nExitCode, run.nExitCode) << run.strOutput;
    ExpectParts(run.strErrors, expected.reasons);
    EXPECT_EQ(before, world.Snapshot()) << expected.reasons.front();
}

const Arguments inPlace = {"configure", "@office.xml", "--in-place"};
const RefusedCase refusedCases[] = {
    {2, {}, {"a command is missing; there are check, show"}},
    {2, {"shwo", "@office.xml"}, {"there is no command shwo"}},
    {2, {"select", "@.", "-o", "@new.xml"}, {"--output: takes one profile"}},
    {2, {"select", "@."}, {"--in-place"}},
    {1, {"show", "@office.xml", "--module", "@office.xml"}, {"error 193 (it is no module"}},
    {1, {"show", "@absent.xml"}, {"absent.xml: there is no such file"}},
    {1, {"select", "@service/no-adapter/adapters.json", "--in-place"}, {"not well-formed XML"}},
    {1, {"show", "@typed.xml"}, {"it has a document type declaration"}},
    {1, {"show", "@flood.xml"}, {"an element has more than 4000 attributes"}},
    {1, {"show", "@tags.xml"}, {"has more than 200000 tags and attributes"}},
    {1, {"show", "@named.xml"}, {"its name holds an element"}},
    {2, {"select", "@office.xml", "--cipher", "ROT13", "--in-place"}, {"ROT13"}},
    {1, {"select", "@office.xml", "-o", "@office.xml"}, {"--output would write what PATH uses"}},
    {1, {"select", "@office.xml", "-o", "@new.xml", "--trace", "@service/../new.xml"}, {"--trace would", "--output uses"}},
    {1, {"select", "@office.xml", "-o", "-", "--trace", "-"}, {"cannot both go to standard output"}},
    {1, {"show", "@.", "--trace", "@office.xml"}, {"--trace would write what PATH uses"}},
    {1, {"show", "@office.xml", "--trace", "@service"}, {"service: is not a regular file"}},
    {1, Arguments{"show", "@office.xml", "--trace", "@" + std::string(officeStored)} + onRapidoMachine, {"--service uses"}},
    {2,
     inPlace + onRapidoMachine + Arguments{"--set", "rapid=on"},
     {"radio-measurement, rapido, advanced-roaming, roaming, bands"}},
    {2, inPlace + onRapidoMachine + Arguments{"--set", "roaming=No"}, {"Default, Very Low, Low, Normal, High, Very High"}},
    {2, inPlace + onRapidoMachine + Arguments{"--set", "bands=5", "--set", "bands=2.4"}, {"bands is set twice"}},
    {2, inPlace + OnMachine(rapidoMachine, "first"), {"first is not a GUID"}},
    {1, inPlace + OnMachine("service", rapidoAdapter), {"is not a service folder"}},
    {1, inPlace + OnMachine(rapidoMachine, onFirstOfTwo.back()), {"there is no adapter 91e4a6f2", rapidoAdapter}},
    {1, Arguments{"configure", "--name", "Nowhere"} + onRapidoMachine, {"has no profile Nowhere on adapter"}},
    {2, Arguments{"configure"} + onRapidoMachine, {"is needed"}},
    {1, inPlace + onMachineWithoutMaker + Arguments{"--set", "rapido=on"}, {"Enable Rapido A/G (control 1003) is disabled"}},
    {1,
     inPlace + onFirstOfTwo + Arguments{"--set", "bands=5"},
     {"Enable 5 GHz Band (control 1008) is disabled: the interface does not support 5 GHz"}},
    {1,
     inPlace + onRapidoMachine + Arguments{"--set", "advanced-roaming=off", "--set", "roaming=High"},
     {"Roaming Option (control 1005) is disabled: Advanced Roaming is off"}},
    {1, inPlace + onWornOutCard, {"Atleast one wireless band must be selected"}},
};

TEST(RefusedTest, SaysWhyAndChangesNothing)
{
    const CHostWorld world;
    WriteBytes(world.File("typed.xml"), "<!DOCTYPE WLANProfile><WLANProfile><name>x</name></WLANProfile>");
    WriteBytes(world.File("named.xml"), "<WLANProfile><name><x/></name></WLANProfile>");
    std::string strTags;
    for (int n = 0; n <= 200'000; ++n)
        strTags += "<a/>";
    WriteBytes(world.File("tags.xml"), strTags);
    std::string strFlood = "<WLANProfile";
    for (int n = 0; n <= 4000; ++n)
        strFlood += " a" + std::to_string(n) + "=''";
    WriteBytes(world.File("flood.xml"), strFlood + "/>");
    for (const RefusedCase& row : refusedCases)
        ExpectRefusal(world, row);
}

// The dialog says nothing about a service that cannot store; the host program does.
TEST(RefusedTest, TellsWhatIsWrongWithTheService)
{
    const CHostWorld world;
    const auto writing = std::filesystem::perms::owner_write;
    std::filesystem::permissions(world.File(officeStored), writing, std::filesystem::perm_options::remove);
    for (const Arguments& arguments : {inPlace + Arguments{"--set", "bands=5", "--set", "rapido=off"},
                                       Arguments{"configure", "--name", "Office", "--set", "bands=5"},
                                       Arguments{"configure", "--name", "Office", "--set", "rapido=off"}})
        ExpectRefusal(world, {1,
                              arguments + onRapidoMachine,
                              {"korihost: stored profile Office: the WLAN service answered WlanSetProfile with error ",
                               "(access is denied)"}});
    std::filesystem::permissions(world.File(officeStored), writing, std::filesystem::perm_options::add);
    WriteBytes(world.File(rapidoMachine) / "adapters.json", "[{}]");
    ExpectRefusal(world, {1, inPlace + onRapidoMachine, {"error 13 (invalid data"}});
}

// Many at once

struct ManyCase
{
    Arguments arguments;
    std::vector<std::string> changed;
    std::vector<std::string> said;
};
const std::vector<std::string> mended = {"warehouse-invalid.xml: before: encryption is WEP104", ".xml: after: CCKM with WEP\n"};
const ManyCase manyCases[] = {
    {{"select", "--cipher", "WEP", "--dry-run"}, {}, mended + Arguments{"3 profiles: 2 would change, 0 unchanged, 1 refused"}},
    {{"select", "--cipher", "WEP", "--in-place"}, {officeFile, "warehouse-invalid.xml"}, mended},
    {Arguments{"configure", "--set", "bands=5", "--dry-run"} + onRapidoMachine, {}, {"The WLAN service's stored profile:"}},
    {Arguments{"configure", "--set", "bands=5", "--in-place"} + onRapidoMachine,
     {officeFile, officeStored, "warehouse-invalid.xml"},
     {".xml: before: MaxOffChannelTimeMs is 60, allowed 10 to 50", ".xml: after: the settings are valid\n"}},
};

TEST(ManyTest, ChangesEachOrLeavesItAsItIs)
{
    for (const ManyCase& row : manyCases)
    {
        SCOPED_TRACE(row.arguments.front());
        const CHostWorld world;
        WriteBytes(world.File("broken.xml"), "<a");
        auto before = world.Snapshot();
        const ProgramRun run = world.Host(row.arguments + Arguments{"@broken.xml", "@office.xml", "@warehouse-invalid.xml"});
        EXPECT_EQ(1, run.nExitCode);
        ExpectParts(run.strErrors, {"broken.xml: not well-formed XML"});
        ExpectParts(run.strOutput, row.said);
        const auto after = world.Snapshot();
        std::vector<std::string> changed;
        for (const auto& [strName, strBytes] : after)
            if (before[strName] != strBytes)
                changed.push_back(strName);
        EXPECT_EQ(row.changed, changed);
    }
}

// One name would get the new content, the other keep the old; the bands that are stored by then go back.
TEST(ManyTest, RefusesAFileOfSeveralNames)
{
    const CHostWorld world;
    std::filesystem::create_hard_link(world.File(officeFile), world.File("other.xml"));
    for (const Arguments& arguments :
         {Arguments{"select", "@office.xml", "--in-place"}, inPlace + onRapidoMachine + Arguments{"--set", "bands=5"}})
        ExpectRefusal(world, {1, arguments, {"it has 2 names (hard links)"}});
}

TEST(StandardStreamsTest, HandsAProfileOn)
{
    const CHostWorld world;
    Done(world, {"select", "@open-cafe.xml", "-o", "@expected.xml"});
    const ProgramRun run = Done(world, {"select", "@open-cafe.xml", "-o", "-"});
    EXPECT_EQ(ReadBytes(world.File("expected.xml")), run.strOutput);
    ExpectParts(run.strErrors, {"+++ standard output"});
}
} // namespace
