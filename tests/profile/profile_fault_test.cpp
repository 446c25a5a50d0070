// Profiles when the platform fails them: each call in turn, and what is then read or written.
#include "profile/CCXConnectionSettings.h"
#include "profile/CCXSecuritySettings.h"
#include "profile/WlanProfileBands.h"
#include "tests/profile/EachCallFails.h"
#include "tests/support/ModuleUnderTest.h"
#include "tests/support/XmlVerbs.h"

#include <cstring>
#include <memory>
#include <regex>

namespace
{
using tests::xml::CaseName;
using tests::xml::XmlCaseTest;
using Outcomes = std::vector<std::string>;

std::string ReadSecurity()
{
    const CCXSecuritySettings settings(OLESTR("<CCX><authenticatingNetwork><cckm><encryption>TKIP</encryption></cckm>"
                                              "</authenticatingNetwork></CCX>"));
    const auto word = [](DWORD value) { return value == CCXSecuritySettings::invalid ? "none" : std::to_string(value); };
    return word(settings.auth) + " " + word(settings.cipher);
}

std::string ReadConnection()
{
    const CCXConnectionSettings s(OLESTR(
        "<CCX><RadioMeasurement><enabled><disableLocationBasedServices/><MaxOffChannelTimeMs>20</MaxOffChannelTimeMs>"
        "<MinOnChannelTimeMs>300</MinOnChannelTimeMs></enabled></RadioMeasurement>"
        "<KeepAliveTimer><Period>9</Period></KeepAliveTimer><Diagnostics><AuthorizedProfile>true</AuthorizedProfile>"
        "<Channel><SSID><Hex>414243</Hex></SSID><EnableClientReporting>true</EnableClientReporting></Channel></Diagnostics>"
        "<Rapido>true</Rapido><AdvancedRoaming><enabled><RoamingOption>4</RoamingOption></enabled></AdvancedRoaming></CCX>"));
    std::string text;
    for (const LONG lField : {s.radioMeasurement, s.locationBasedServices, s.maxOffChannelTimeMs, s.minOnChannelTimeMs,
                              s.keepAliveEnabled, s.keepAlivePeriod, s.diagnosticSsidLength, s.clientReporting,
                              s.authorizedProfile, s.rapido, s.advancedRoaming, s.roamingOption})
        text += (text.empty() ? "" : " ") + std::to_string(lField);
    return text;
}

template <class Settings>
std::string WrittenTree(const Settings& settings)
{
    try
    {
        CBstr bstrWritten;
        *bstrWritten.Put() = settings.Serialise();
        return tests::ProfileTree(bstrWritten);
    }
    catch (const CAtlException& e)
    {
        return e.Result() == E_OUTOFMEMORY ? "out of memory" : "raised";
    }
}

std::string WriteSecurity()
{
    CCXSecuritySettings settings;
    settings.SetDefaults();
    return WrittenTree(settings);
}

std::string WriteConnection()
{
    CCXConnectionSettings settings;
    settings.SetDefaults();
    settings.locationBasedServices = 0;
    settings.keepAliveEnabled = 1;
    return WrittenTree(settings);
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
    auto owner = std::make_unique<WCHAR[]>(wirelessProfile.size() + 1);
    wirelessProfile.copy(owner.get(), wirelessProfile.size());
    WCHAR* szProfile = owner.release();
    const bool bResult = WriteProfileBands(&szProfile, bandsBoth);
    owner.reset(szProfile);
    if (szProfile == wirelessProfile)
        return bResult ? "true untouched" : "false untouched";
    auto text = std::regex_replace(tests::Narrow(szProfile), std::regex(R"(\s+<|<\?.*?\?>\s*)"), "<");
    text = std::regex_replace(text, std::regex("<phyType(/>|></phyType>)"), "-");
    text = std::regex_replace(text, std::regex("<connectivity>"), "[");
    text = std::regex_replace(text, std::regex("</connectivity>"), "]");
    text = std::regex_replace(text, std::regex("<[^>]*>|[<\\r\\n]"), "");
    return (bResult ? "true " : "false ") + text;
}

struct FaultCase
{
    const char* name;
    std::string (*run)();
    const char* szFunction;
    Outcomes outcomes; // with call 1, 2, ... failing, and at last with none
};

class ProfileFaults : public XmlCaseTest<FaultCase>
{
};

TEST_P(ProfileFaults, EachCallHasItsOutcome)
{
    const auto& param = GetParam();
    const auto undisturbed = param.run();
    std::size_t nCalls = 0;
    tests::EachCallFails(param.szFunction, param.run,
                         [&](unsigned uCall, const std::string& outcome, bool bFired)
                         {
                             ASSERT_LE(uCall, param.outcomes.size()) << outcome;
                             EXPECT_EQ(param.outcomes[uCall - 1], outcome);
                             nCalls += bFired ? 1u : 0u;
                         });
    EXPECT_EQ(param.outcomes.size(), nCalls + 1);
    EXPECT_EQ(undisturbed, param.run()) << "everything works afterwards";
}

const std::string cckmTkip = "2147483649 2";
const std::string cckmAlone = "2147483649 none";
const std::string nothing = "none none";
const std::string whole = "1 0 20 300 1 9 3 1 1 1 1 4";
const std::string cleared = "-1 -1 -1 -1 0 -1 -1 -1 -1 -1 -1 0";
const std::string network = "<CCX><authenticatingNetwork/></CCX>";
const std::string token = "<CCX><authenticatingNetwork><cckm/></authenticatingNetwork></CCX>";
const std::string noCipher = "<CCX><authenticatingNetwork><cckm><encryption/></cckm></authenticatingNetwork></CCX>";
const std::string cipher = "<CCX><authenticatingNetwork><cckm><encryption>WEP</encryption></cckm></authenticatingNetwork></CCX>";

const FaultCase faultCases[] = {
    {"read_security_no_document", ReadSecurity, "CoCreateInstance", {nothing, cckmTkip}},
    {"read_security_no_load", ReadSecurity, "loadXML", {nothing, cckmTkip}},
    {"read_security_no_root", ReadSecurity, "get_documentElement", {nothing, cckmTkip}},
    // openNetwork, authenticatingNetwork, open, cckm, encryption
    {"read_security_path", ReadSecurity, "selectSingleNode", {cckmTkip, nothing, cckmTkip, nothing, cckmAlone, cckmTkip}},
    {"read_security_text", ReadSecurity, "get_nodeValue", {cckmAlone, cckmTkip}},
    {"read_security_memory",
     ReadSecurity,
     "SysAllocString",
     {nothing, cckmTkip, nothing, cckmTkip, nothing, cckmAlone, cckmTkip}},
    {"write_security_no_document", WriteSecurity, "CoCreateInstance", {"(null)", cipher}},
    {"write_security_no_load", WriteSecurity, "loadXML", {"(null)", cipher}},
    {"write_security_no_root", WriteSecurity, "get_documentElement", {"(null)", cipher}},
    {"write_security_element", WriteSecurity, "createElement", {"<CCX/>", network, token, cipher}},
    {"write_security_append", WriteSecurity, "appendChild", {"<CCX/>", network, token, cipher}},
    {"write_security_text", WriteSecurity, "put_text", {noCipher, cipher}},
    {"write_security_namespace", WriteSecurity, "setAttribute", {cipher, cipher}},
    {"write_security_text_form", WriteSecurity, "get_xml", {"(null)", cipher}},
    {"write_security_memory",
     WriteSecurity,
     "SysAllocString",
     {"(null)", "<CCX/>", network, token, noCipher, cipher, cipher, cipher}},
    {"read_connection_no_document", ReadConnection, "CoCreateInstance", {cleared, whole}},
    {"read_connection_no_load", ReadConnection, "loadXML", {cleared, whole}},
    {"read_connection_no_root", ReadConnection, "get_documentElement", {cleared, whole}},
    {"read_connection_path",
     ReadConnection,
     "selectSingleNode",
     {
         "1 1 50 400 1 9 3 1 1 1 1 4",   // RadioMeasurement
         whole,                          // disabled
         "-1 -1 -1 -1 1 9 3 1 1 1 1 4",  // enabled
         "1 1 20 300 1 9 3 1 1 1 1 4",   // disableLocationBasedServices
         "1 0 -1 300 1 9 3 1 1 1 1 4",   // MaxOffChannelTimeMs
         "1 0 20 -1 1 9 3 1 1 1 1 4",    // MinOnChannelTimeMs
         "1 0 20 300 0 0 3 1 1 1 1 4",   // KeepAliveTimer
         "1 0 20 300 1 -1 3 1 1 1 1 4",  // Period
         "1 0 20 300 1 9 -1 -1 1 1 1 4", // Channel
         "1 0 20 300 1 9 -1 1 1 1 1 4",  // Hex; there is no Name
         "1 0 20 300 1 9 3 -1 1 1 1 4",  // EnableClientReporting
         "1 0 20 300 1 9 3 1 -1 1 1 4",  // AuthorizedProfile
         "1 0 20 300 1 9 3 1 1 -1 1 4",  // Rapido
         "1 0 20 300 1 9 3 1 1 1 1 0",   // AdvancedRoaming
         whole,                          // disabled
         "1 0 20 300 1 9 3 1 1 1 -1 0",  // enabled
         "1 0 20 300 1 9 3 1 1 1 1 0",   // RoamingOption
         whole,
     }},
    {"read_connection_text",
     ReadConnection,
     "get_nodeValue",
     {"1 0 -1 300 1 9 3 1 1 1 1 4", "1 0 20 -1 1 9 3 1 1 1 1 4", "1 0 20 300 1 -1 3 1 1 1 1 4", "1 0 20 300 1 9 -1 1 1 1 1 4",
      "1 0 20 300 1 9 3 -2 1 1 1 4", "1 0 20 300 1 9 3 1 -2 1 1 4", "1 0 20 300 1 9 3 1 1 -2 1 4", "1 0 20 300 1 9 3 1 1 1 1 0",
      whole}},
    {"read_bands_no_document", ReadBands, "CoCreateInstance", {"false 77", "true 3"}},
    {"read_bands_no_load", ReadBands, "loadXML", {"false 77", "true 3"}},
    {"read_bands_no_root", ReadBands, "get_documentElement", {"false 77", "true 3"}},
    {"read_bands_path", ReadBands, "selectSingleNode", {"true 0", "true 3"}},
    {"read_bands_children", ReadBands, "hasChildNodes", {"false 77", "true 3"}},
    {"read_bands_text", ReadBands, "get_nodeValue", {"false 77", "false 77", "true 3"}},
    {"write_bands_no_document", WriteBands, "CoCreateInstance", {"false untouched", "true [ag]"}},
    {"write_bands_no_load", WriteBands, "loadXML", {"false untouched", "true [ag]"}},
    {"write_bands_no_root", WriteBands, "get_documentElement", {"false untouched", "true [ag]"}},
    {"write_bands_path", WriteBands, "selectSingleNode", {"false [ag]", "true [ag][ag]", "false ", "true [ag]"}},
    {"write_bands_remove", WriteBands, "removeChild", {"true [ag][ag]", "true [ag]"}},
    {"write_bands_element", WriteBands, "createElement", {"false ", "true [g]", "true [a]", "true [ag]"}},
    {"write_bands_append", WriteBands, "appendChild", {"true [g]", "true [a]", "true [ag]"}},
    {"write_bands_type_text", WriteBands, "put_text", {"true [-g]", "true [a-]", "true [ag]"}},
    {"write_bands_text_form", WriteBands, "get_xml", {"false untouched", "true [ag]"}},
};
INSTANTIATE_TEST_SUITE_P(Calls, ProfileFaults, testing::ValuesIn(faultCases), CaseName<FaultCase>);

class BandsWritingFaults : public tests::xml::XmlTest
{
};

// Some components append by way of this operation, so only its first call is known to be the section's.
TEST_F(BandsWritingFaults, ASectionThatIsNotInsertedIsGone)
{
    const platform::testing::CFailNth fault("insertBefore", 1);
    EXPECT_EQ("false ", WriteBands());
    EXPECT_TRUE(fault.HasFired());
}

class ConnectionWritingFaults : public tests::xml::XmlTest
{
};

// The profile without its nth element and everything under it.
std::string WithoutElement(std::string tree, unsigned uNth)
{
    static const std::regex start("<(\\w+)(/?)>");
    std::sregex_iterator it(tree.begin(), tree.end(), start);
    std::advance(it, uNth); // the first is the root
    if (it == std::sregex_iterator())
        return tree;
    const auto nFrom = static_cast<std::size_t>(it->position());
    const std::string end = "</" + it->str(1) + ">";
    const auto nEnd = it->length(2) != 0 ? nFrom + it->str().size() : tree.find(end, nFrom) + end.size();
    // Whoever lost the only child is written empty.
    return std::regex_replace(tree.erase(nFrom, nEnd - nFrom), std::regex(R"(<(\w+)></\1>)"), "<$1/>");
}

TEST_F(ConnectionWritingFaults, AnElementThatFailsIsLeftOutWithWhatIsUnderIt)
{
    const auto undisturbed = WriteConnection();
    for (const char* szFunction : {"createElement", "appendChild"})
    {
        unsigned uElements = 0;
        tests::EachCallFails(szFunction, WriteConnection,
                             [&](unsigned uCall, const std::string& outcome, bool bFired)
                             {
                                 EXPECT_EQ(bFired ? WithoutElement(undisturbed, uCall) : undisturbed, outcome);
                                 uElements += bFired ? 1u : 0u;
                             });
        EXPECT_EQ(17u, uElements);
    }
}

TEST_F(ConnectionWritingFaults, ATextThatFailsIsIgnored)
{
    const auto undisturbed = WriteConnection();
    const std::regex withText("<(\\w+)>([^<]+)</\\1>");
    tests::EachCallFails("put_text", WriteConnection,
                         [&](unsigned uCall, const std::string& outcome, bool bFired)
                         {
                             auto expected = undisturbed;
                             std::sregex_iterator it(undisturbed.begin(), undisturbed.end(), withText);
                             std::advance(it, bFired ? uCall - 1 : 0);
                             if (bFired)
                                 expected.replace(static_cast<std::size_t>(it->position()), it->str().size(),
                                                  "<" + it->str(1) + "/>");
                             EXPECT_EQ(expected, outcome);
                         });
}

TEST_F(ConnectionWritingFaults, WithoutDocumentOrTextFormThereIsNone)
{
    const auto undisturbed = WriteConnection();
    for (const char* szFunction : {"CoCreateInstance", "loadXML", "get_documentElement", "get_xml"})
        tests::EachCallFails(szFunction, WriteConnection,
                             [&](unsigned, const std::string& outcome, bool bFired)
                             { EXPECT_EQ(bFired ? "(null)" : undisturbed, outcome); });
}

// How often the component allocates is its own matter.
TEST_F(ConnectionWritingFaults, MemoryThatFailsGivesNoHalfText)
{
    for (const auto write : {WriteSecurity, WriteConnection})
    {
        const auto undisturbed = write();
        tests::EachCallFails("SysAllocStringLen", write,
                             [&](unsigned, const std::string& outcome, bool bFired)
                             {
                                 if (bFired)
                                     EXPECT_TRUE(outcome == "(null)" || outcome == "out of memory") << outcome;
                                 else
                                     EXPECT_EQ(undisturbed, outcome);
                             });
    }
}
} // namespace
