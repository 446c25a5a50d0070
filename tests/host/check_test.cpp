// The verdict on profiles: what is found and where, and the forms in which it is told.
#include "host/Escaped.h"
#include "host/Module.h"
#include "host/check/ProfileCheck.h"
#include "host/check/TextLines.h"
#include "tests/support/HostWorld.h"
#include "tests/support/Pattern.h"
#include "values/Utf8Text.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <fstream>
#include <set>

namespace
{
using namespace tests;

// A profile that is as it should be but for the text in the place, which is named like the document names it.
std::string ProfileWith(const std::string& strPlace, const std::string& strText)
{
    const auto without = [&](const char* szTag) { return strText.find(szTag) == std::string::npos; };
    if (strPlace == "The whole file")
        return strText;
    if (strPlace == "In `WLANProfile`")
        return "<WLANProfile>" + std::string(without("<name") ? "<name>Office</name>" : "") + strText +
               (without("<MSM") ? "<MSM><security/></MSM>" : "") + "</WLANProfile>";
    const std::string strName = strPlace.find("security") != std::string::npos ? "security" : "connectivity";
    return ProfileWith("In `WLANProfile`", "<IHV><" + strName + "><CCX>" + strText + "</CCX></" + strName + "></IHV>");
}

ProfileVerdict Verdict(const std::string& strProfile)
{
    const CTestFolder folder;
    const CComApartment apartment;
    WriteBytes(folder.Path() / "profile.xml", strProfile);
    return CheckProfile(folder.Path() / "profile.xml");
}

TEST(CheckTest, TheDocumentListsEveryRuleWithWhatIsSaid)
{
    std::set<std::string> listed, known;
    for (const CheckRuleRow& row : checkRules)
        EXPECT_TRUE(known.insert(row.szId).second) << row.szId << " has been given twice";
    std::ifstream document(SAMPLES_FOLDER "/../docs/check.md");
    static const std::string quoted = "`(.*)`";
    std::string strPlace;
    for (std::string strLine; std::getline(document, strLine);)
    {
        const auto cells = tests::MatchOf(strLine, "\\| (.*) \\| (.*) \\| (.*) \\|");
        if (cells.empty())
            continue;
        const auto example = tests::MatchOf(cells[1], quoted), rule = tests::MatchOf(cells[3], quoted);
        if (rule.empty())
        {
            strPlace = cells[1];
            continue;
        }
        EXPECT_TRUE(listed.insert(rule[1]).second) << strLine;
        if (example.empty())
            continue;
        const auto findings = Verdict(ProfileWith(strPlace, example[1])).findings;
        ASSERT_EQ(1u, findings.size()) << strLine;
        EXPECT_EQ(cells[2], Sentence(findings.front()));
        EXPECT_EQ(rule[1], findings.front().pRule->szId);
    }
    EXPECT_EQ(known, listed);
}

struct FoundCase
{
    const char* szPlace;
    const char* szText;     // "^" stands before what the first finding points at
    const char* szFindings; // what they say; several with " / " between them
};
constexpr const char* inConnection = "connectivity";
constexpr const char* inSecurity = "security";
constexpr const char* inProfile = "In `WLANProfile`";
constexpr const char* asFile = "The whole file";
const FoundCase foundCases[] = {
    {inConnection, "<Rapido><![CDATA[tr]]>u<!-- -->&#x65;</Rapido><KeepAliveTimer><Period> 60\n</Period></KeepAliveTimer>", ""},
    {inConnection, "<RadioMeasurement><disabled/></RadioMeasurement><AdvancedRoaming><disabled/></AdvancedRoaming>", ""},
    {inConnection, "<Rapido>\r\n ^True</Rapido>", "Rapido is \"\n True\", allowed true or false: read as false"},
    {inConnection, "<KeepAliveTimer><Period>^4294967356</Period></KeepAliveTimer>",
     "Period is 4294967356, allowed 0 to 255: all settings become the defaults / Period is \"4294967356\": read as 2147483647"},
    {inConnection, "^<RadioMeasurement><Enabled/></RadioMeasurement>",
     "RadioMeasurement holds neither enabled nor disabled: it is left out at the next writing / "
     "Enabled is not known here: not read; it is written enabled"},
    {inConnection, "<AdvancedRoaming><enabled>^off<RoamingOption>+3</RoamingOption></enabled></AdvancedRoaming>",
     "enabled holds \"off\": not looked at; that the element is there is what counts"},
    {inConnection, "<Rapido>^<keyMaterial>hunter2</keyMaterial></Rapido>",
     "Rapido is \"<keyMaterial>********</keyMaterial>\", allowed true or false: read as false"},
    {inConnection, "<Rapido>^&lt;keyMaterial><!-- -->hunter2</Rapido>",
     "Rapido is \"********\", allowed true or false: read as false"},
    {inProfile, "<MSM><connectivity><sharedKey>^hunter2<keyMaterial>b</keyMaterial></sharedKey></connectivity><security/></MSM>",
     "sharedKey is \"********\": shown as both bands"},
    {inConnection, "<keyMaterial><CCX><Rapido>^hunter2</Rapido></CCX></keyMaterial>",
     "Rapido is \"********\", allowed true or false: read as false"},
    {inConnection, "^<KeepAliveTimer/>", "Period is missing, allowed 0 to 255: all settings become the defaults"},
    {inConnection, "<Diagnostics/><Diagnostics><Channel><SSID><Name>Diagnostic Channel</Name></SSID></Channel></Diagnostics>",
     ""},
    {inConnection, "^<authenticatingnetwork/>", "authenticatingnetwork is not known here: not read"},
    {inSecurity, "<authenticatingNetwork><open/></authenticatingNetwork>", ""},
    {inSecurity, "<authenticatingNetwork>^<cckm/></authenticatingNetwork>",
     "encryption is missing, allowed WEP, TKIP, AES, None: taken as CCKM with AES"},
    {inSecurity, "<authenticatingNetwork><wpa><encryption>none</encryption></wpa></authenticatingNetwork>", ""},
    {inProfile,
     "<MSM><connectivity><phyType>a</phyType> <phyType>g</phyType><phyType>n</phyType></connectivity><security/></MSM>", ""},
    {inProfile, "<MSM><connectivity><phyType>b</phyType><phyType>g</phyType></connectivity><security/></MSM>", ""},
    {inProfile, "<MSM><connectivity><phyType>^ac</phyType></connectivity><security/></MSM>", "phyType is \"ac\": read as 5 GHz"},
    {inProfile, "<MSM><connectivity><phyType>^n</phyType></connectivity><security/></MSM>",
     "phyType is \"n\": shown as both bands"},
    {inProfile, "<MSM><connectivity><a xmlns=\"\"/></connectivity><security><b xmlns=\"\"/></security></MSM>",
     "a is \"\": shown as both bands"},
    {inProfile, "<IHV><security><p:CCX xmlns:p=\"u\"/></security></IHV>", ""}, // another vendor's
    {asFile, "<WLANProfile>\n<name>R^&D</name>",
     "is not well-formed: an & that begins no known reference (a plain one is written &amp;)"},
    {asFile, "<WLANProfile a='1' ^a='2'/>", "is not well-formed: the attribute a stands twice"},
    {asFile, "<a>\n<b>^</a></b>", "is not well-formed: </a> stands where </b> is expected"},
    {asFile, "^<a>", "is not well-formed: <a> is never closed"},
    {asFile, "<a/>^<b/>", "is not well-formed: a second root element"},
    {asFile, "<a>^\x01</a>", "is not well-formed: a character that no document may hold"},
    {asFile, "<a keyMaterial='a\"'><b keyMaterial='a\"' ^hunter2/></a>", "is not well-formed: in a key, or because of one"},
    {asFile, "<keyMaterial>a^</hunter2></keyMaterial>", "is not well-formed: in a key, or because of one"},
    {asFile, "<a><keyMaterial>^<hunter2</keyMaterial></a>", "is not well-formed: in a key, or because of one"},
};

TEST(CheckTest, FindsWhatCountsAndWhere)
{
    for (const FoundCase& expected : foundCases)
    {
        SCOPED_TRACE(expected.szText);
        std::string strText = ProfileWith(expected.szPlace, expected.szText);
        const std::size_t nMark = strText.find('^');
        if (nMark != std::string::npos)
            strText.erase(nMark, 1);
        const ProfileVerdict verdict = Verdict(strText);
        std::string strFindings;
        for (const Finding& finding : verdict.findings)
            strFindings += (strFindings.empty() ? "" : " / ") + Sentence(finding);
        EXPECT_EQ(expected.szFindings, strFindings);
        const auto place = verdict.findings.empty() ? std::nullopt : verdict.findings.front().place;
        EXPECT_EQ(nMark, place && nMark != std::string::npos ? place->nBegin : std::string::npos);
    }
    EXPECT_EQ(255u, Verdict("<WLANProfile><name>" + std::string(300, 'n') + "</name></WLANProfile>").strName->size());
    EXPECT_EQ("\\ufffe", Escaped("\xEF\xBF\xBE"));
    const CTextLines lines(OLESTR("a\r\nb\rc\n\xD83D\xDE00x"));
    EXPECT_EQ(4u, lines.PositionOf(8).nLine);
    EXPECT_EQ(2u, lines.PositionOf(8).nColumn);
}

TEST(CheckTest, TellsItInThreeFormsAndByTheExitCode)
{
    const CHostWorld world;
    std::filesystem::create_directories(world.File("many/inner.XML"));
    std::string strMany = "<Rapido>\xE2\x80\xAE</Rapido>\n<Rapido/><!--<sharedKey>top</sharedKey>-->\n";
    for (int n = 0; n < 1000; ++n)
        strMany += "<Rapida/>";
    WriteBytes(world.File("many/a.xml"), ProfileWith(inConnection, strMany));
    WriteBytes(world.File("many/inner.XML/b.xml"), "\xFF");
    WriteBytes(world.File("many/note.txt"), "no profile");
    WriteBytes(world.File("many/d.xml"), {});
    std::filesystem::resize_file(world.File("many/d.xml"), 16u * 1024 * 1024 + 1);
    std::filesystem::copy_file(world.File("warehouse-invalid.xml"), world.File("many/c.xml"));

    const ProgramRun text = world.Host({"check", "@many"});
    EXPECT_EQ(1, text.nExitCode);
    EXPECT_EQ(text.strOutput, world.Host({"check", "@many", "--jobs", "1"}).strOutput);
    for (const char* szPart : {"c.xml:47:28: error: MaxOffChannelTimeMs is 60, allowed 10 to 50: ", " [off-channel-time]\n",
                               "<MaxOffChannelTimeMs>60</MaxOffChannelTimeMs>\n                               ^~\n",
                               "b.xml: error: is not text of its encoding: ill-formed UTF-8 at byte offset 0 [not-text]\n",
                               "d.xml: error: cannot be read: is larger than 16 MiB [cannot-read]\n",
                               "4 profiles checked: 1 valid (1 with warnings), 1 invalid, 2 unreadable\n"})
        EXPECT_NE(std::string::npos, text.strOutput.find(szPart)) << szPart << "\nin\n" << text.strOutput;
    EXPECT_NE(std::string::npos, text.strOutput.find("a.xml: and 2 more findings\n"));
    for (const char* szPart : {"\xE2\x80\xAE", "sharedKey", "top"})
        EXPECT_EQ(std::string::npos, text.strOutput.find(szPart)) << szPart;

    const std::string strJson = world.Host({"check", "@many", "--format", "json"}).strOutput;
    EXPECT_TRUE(std::all_of(strJson.begin(), strJson.end(), [](char c) { return c == '\n' || (c >= ' ' && c <= '~'); }));
    const auto json = nlohmann::json::parse(strJson);
    EXPECT_EQ(nlohmann::json::parse(R"({"rule":"cipher","severity":"error","part":"security","element":"encryption","line":75,
        "column":19,"value":"WEP104","allowed":"WEP, TKIP, AES, None","effect":"taken as CCKM with AES"})"),
              json["profiles"][1]["findings"][1]);
    EXPECT_EQ(2, json["profiles"][0]["more"]);
    EXPECT_EQ("unreadable", json["profiles"][3]["state"]);
    EXPECT_EQ(nullptr, json["profiles"][3]["name"]);
    EXPECT_EQ(4, json["checked"]);

    const std::string strSuite = world.Host({"check", "@many", "--format", "junit", "--fail-on", "warning"}).strOutput;
    EXPECT_NE(std::string::npos, strSuite.find("tests=\"4\" failures=\"2\" errors=\"2\"")) << strSuite;

    EXPECT_EQ(0, world.Host({"check", "@many/a.xml"}).nExitCode);
    EXPECT_EQ(1, world.Host({"check", "@many/a.xml", "--fail-on", "warning"}).nExitCode);
    EXPECT_EQ(1, world.Host({"check", "@many/note.txt"}).nExitCode);
    EXPECT_EQ(2, world.Host({"check", "@absent"}).nExitCode);
    std::filesystem::create_directory(world.File("empty"));
    EXPECT_EQ(2, world.Host({"check", "@empty"}).nExitCode);
}
} // namespace
