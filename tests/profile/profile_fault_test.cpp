// Profiles when the platform fails them: each call in turn, and what is then read or written.
#include "platform/testing/Faults.h"
#include "profile/CCXConnectionSettings.h"
#include "tests/support/BandsRewrite.h"
#include "tests/support/ModuleUnderTest.h"
#include "tests/support/Pattern.h"
#include "tests/support/XmlTest.h"

#include <set>

namespace
{
using tests::xml::XmlTest;

// A number, an SSID and a flag, each of which tells in its own way that it could not be read.
std::string ReadConnection()
{
    const CCXConnectionSettings settings(
        OLESTR("<CCX><KeepAliveTimer><Period>9</Period></KeepAliveTimer><Rapido>true</Rapido><Diagnostics><Channel><SSID>"
               "<Hex>41</Hex><Name>Lab</Name></SSID></Channel></Diagnostics></CCX>"));
    return std::to_string(settings.keepAlivePeriod) + " " + std::to_string(settings.diagnosticSsidLength) + " " +
           std::to_string(settings.rapido);
}

std::string WriteConnection()
{
    CBstr bstrWritten;
    *bstrWritten.Put() = CCXConnectionSettings().Serialise();
    return tests::Replaced(tests::ProfileTree(bstrWritten), "</?CCX>", "");
}

constexpr CWideView wirelessProfile = OLESTR(
    "<WLANProfile "
    "xmlns='urn:w'><MSM><connectivity><phyType>a</phyType><phyType>g</phyType></connectivity><security/></MSM></WLANProfile>");

std::string ReadBands()
{
    auto bands = static_cast<WlanProfileBands>(77);
    const bool bResult = ReadProfileBands(wirelessProfile.data(), &bands);
    return (bResult ? "true " : "false ") + std::to_string(bands);
}

// The result and the section's types, one pair of brackets for each section; a dash for a type without text.
std::string WriteBands()
{
    CWideString profile(wirelessProfile);
    const bool bResult = tests::RewriteBands(profile, bandsBoth);
    if (profile == wirelessProfile)
        return bResult ? "true untouched" : "false untouched";
    auto text = tests::Replaced(tests::Narrow(profile), "<phyType(/>|></phyType>)", "-");
    text = tests::Replaced(text, "<connectivity>", "[");
    text = tests::Replaced(text, "</connectivity>", "]");
    return (bResult ? "true " : "false ") + tests::Replaced(text, "<[^>]*>|\\s", "");
}

const std::string first = "<Rapido>false</Rapido>";
const std::string second = "<AdvancedRoaming><disabled/></AdvancedRoaming>";

const struct
{
    std::string (*run)();
    std::vector<const char*> functions;
    std::vector<std::string> outcomes; // with call 1, 2, ... of any of the functions failing, and at last with none
} faultCases[] = {
    {ReadConnection, {"CoCreateInstance", "loadXML", "get_documentElement"}, {"-1 -1 -1", "9 1 1"}},
    {WriteConnection, {"CoCreateInstance", "loadXML", "get_documentElement", "get_xml"}, {"(null)", first + second}},
    {WriteConnection, {"createElement", "appendChild"}, {second, first, first + "<AdvancedRoaming/>", first + second}},
    {WriteConnection, {"put_text"}, {"<Rapido/>" + second, first + second}},
    {WriteConnection, {"setAttribute"}, {first + second, first + second}},
    {ReadBands, {"CoCreateInstance", "loadXML", "get_documentElement", "hasChildNodes"}, {"false 77", "true 3"}},
    {ReadBands, {"selectSingleNode"}, {"true 0", "true 3"}},
    {WriteBands, {"CoCreateInstance", "loadXML", "get_documentElement", "get_xml"}, {"false untouched", "true [ag]"}},
    {WriteBands, {"selectSingleNode"}, {"false [ag]", "true [ag][ag]", "false ", "true [ag]"}},
    {WriteBands, {"removeChild"}, {"true [ag][ag]", "true [ag]"}},
    {WriteBands, {"createElement"}, {"false ", "true [g]", "true [a]", "true [ag]"}},
    {WriteBands, {"appendChild"}, {"true [g]", "true [a]", "true [ag]"}},
    {WriteBands, {"put_text"}, {"true [-g]", "true [a-]", "true [ag]"}},
};

// The outcomes with call 1, 2, ... of the function failing, the last of which had no failure.
std::vector<std::string> EachCallFails(const char* szFunction, std::string (*run)())
{
    constexpr std::size_t tooManyCalls = 1000;
    std::vector<std::string> outcomes;
    for (bool bFired = true; bFired && outcomes.size() < tooManyCalls;)
    {
        const platform::testing::CFailNth fault(szFunction, static_cast<unsigned>(outcomes.size() + 1));
        outcomes.push_back(run());
        bFired = fault.HasFired();
    }
    return outcomes;
}

class ProfileFaults : public XmlTest
{
};

TEST_F(ProfileFaults, EachCallHasItsOutcome)
{
    for (const auto& row : faultCases)
        for (const char* szFunction : row.functions)
            EXPECT_EQ(row.outcomes, EachCallFails(szFunction, row.run)) << szFunction;
}

TEST_F(ProfileFaults, TextThatCannotBeReadWholeIsNotRead)
{
    using Set = std::set<std::string>;
    const auto distinct = [](const std::vector<std::string>& outcomes) { return Set(outcomes.begin(), outcomes.end()); };
    for (const char* szFunction : {"get_firstChild", "get_nextSibling", "get_nodeType", "get_nodeValue"})
    {
        EXPECT_EQ((Set{"-1 1 1", "9 -1 1", "9 1 -2", "9 1 1"}), distinct(EachCallFails(szFunction, ReadConnection)));
        EXPECT_EQ((Set{"false 77", "true 3"}), distinct(EachCallFails(szFunction, ReadBands)));
    }
}

// Some components append by way of this operation, so only its first call is known to be the section's.
TEST_F(ProfileFaults, ASectionThatIsNotInsertedIsGone)
{
    const platform::testing::CFailNth fault("insertBefore", 1);
    EXPECT_EQ("false ", WriteBands());
    EXPECT_TRUE(fault.HasFired());
}
} // namespace
