// The bands of a Windows wireless profile: read from its connectivity section and written back.
#include "profile/WlanProfileBands.h"
#include "tests/support/TestFolder.h"
#include "tests/support/XmlVerbs.h"

#include <memory>

namespace
{
using tests::xml::CaseName;
using tests::xml::XmlCaseTest;
using tests::xml::XmlTest;

constexpr const WCHAR* szHead = OLESTR("<?xml version=\"1.0\"?>\r\n<WLANProfile xmlns=\"http://www.example.net/profile/v1\">\r\n"
                                       "\t<name>Lager &amp; B\u00FCro \u6771\u9928 \U0001F4F6</name>\r\n\t<MSM>\r\n\t\t");
constexpr const WCHAR* szSecurity = OLESTR(
    "<security>\r\n\t\t\t<sharedKey><keyMaterial> amber&lt;lantern&quot;  47 </keyMaterial></sharedKey>\r\n\t\t</security>");
constexpr const WCHAR* szTail =
    OLESTR("\r\n\t</MSM>\r\n\t<!-- kept --><other xmlns=\"http://www.example.net/profile/v3\"><x/></other>\r\n"
           "</WLANProfile>");

CWideString ProfileWith(const CWideString& section)
{
    return szHead + section + szTail;
}

struct ReadCase
{
    const char* name;
    CWideString profile;
    bool bResult;
    DWORD bands;
};

class BandsReading : public XmlCaseTest<ReadCase>
{
};

TEST_P(BandsReading, GivesTheChoice)
{
    const auto& param = GetParam();
    // Where the value is to be left alone, it is told from one that was set to 0.
    auto bands = param.bResult ? static_cast<WlanProfileBands>(3 - param.bands) : bandsNotRead;
    EXPECT_EQ(param.bResult, ReadProfileBands(param.profile.c_str(), &bands));
    EXPECT_EQ(param.bands, static_cast<DWORD>(bands));
    if (!param.bResult)
    {
        bands = bands5GHz;
        EXPECT_FALSE(ReadProfileBands(param.profile.c_str(), &bands));
        EXPECT_EQ(bands5GHz, bands);
    }
}

CWideString Connectivity(std::initializer_list<const WCHAR*> texts)
{
    CWideString section = OLESTR("<connectivity>");
    for (const WCHAR* szText : texts)
        section.append(OLESTR("\r\n\t\t\t<phyType>")).append(szText).append(OLESTR("</phyType>"));
    return section + OLESTR("\r\n\t\t</connectivity>\r\n\t\t");
}

ReadCase Types(const char* szName, std::initializer_list<const WCHAR*> texts, bool bResult, DWORD bands)
{
    return {szName, ProfileWith(Connectivity(texts) + szSecurity), bResult, bands};
}

const ReadCase readCases[] = {
    Types("a_g", {OLESTR("a"), OLESTR("g")}, true, 3),
    Types("a_g_n", {OLESTR("a"), OLESTR("g"), OLESTR("n")}, true, 3),
    Types("g_a", {OLESTR("g"), OLESTR("a")}, true, 1),
    Types("a_n_g", {OLESTR("a"), OLESTR("n"), OLESTR("g")}, true, 1),
    Types("a", {OLESTR("a")}, true, 2),
    Types("a_n", {OLESTR("a"), OLESTR("n")}, true, 2),
    Types("ac", {OLESTR("ac")}, true, 2),
    Types("g", {OLESTR("g")}, true, 1),
    Types("g_n", {OLESTR("g"), OLESTR("n")}, true, 1),
    Types("b_g", {OLESTR("b"), OLESTR("g")}, true, 1),
    Types("n", {OLESTR("n")}, false, 0),
    Types("b", {OLESTR("b")}, false, 0),
    Types("capitals", {OLESTR("A"), OLESTR("G")}, false, 0),
    Types("empty_type", {OLESTR("")}, false, 0),
    Types("comment_between", {OLESTR("a"), OLESTR("<!-- n -->g")}, true, 3),
    Types("cdata_and_reference", {OLESTR("<![CDATA[a]]>"), OLESTR("&#103;")}, true, 3),
    {"on_one_line", ProfileWith(OLESTR("<connectivity><phyType>a</phyType><phyType>g</phyType></connectivity>")), true, 3},
    {"no_connectivity", ProfileWith(szSecurity), true, 0},
    {"empty_connectivity", ProfileWith(OLESTR("<connectivity/>")), true, 0},
    {"connectivity_elsewhere", OLESTR("<WLANProfile><connectivity><phyType>g</phyType></connectivity></WLANProfile>"), true, 0},
    {"no_namespace", OLESTR("<WLANProfile><MSM><connectivity><phyType>g</phyType></connectivity></MSM></WLANProfile>"), true, 1},
    {"prefixed_names_are_other_names",
     OLESTR("<w:WLANProfile "
            "xmlns:w='urn:w'><w:MSM><w:connectivity><w:phyType>g</w:phyType></w:connectivity></w:MSM></w:WLANProfile>"),
     true, 0},
    {"not_xml", OLESTR("<WLANProfile><MSM>"), false, 0},
    {"empty_text", OLESTR(""), false, 0},
};
INSTANTIATE_TEST_SUITE_P(Profiles, BandsReading, testing::ValuesIn(readCases), CaseName<ReadCase>);

struct Written
{
    bool bResult;
    CWideString text;
};

Written Write(const CWideString& profile, WlanProfileBands bands)
{
    auto owner = std::make_unique<WCHAR[]>(profile.size() + 1);
    profile.copy(owner.get(), profile.size());
    WCHAR* szProfile = owner.release();
    const bool bResult = WriteProfileBands(&szProfile, bands);
    owner.reset(szProfile);
    return {bResult, szProfile};
}

CWideString OutlineOf(const CWideString& profile)
{
    return tests::xml::Outline(tests::xml::Root(tests::xml::Loaded(profile)).Get());
}

bool Declares(const CWideString& text)
{
    return text.find(OLESTR(" xmlns=\"\"")) != CWideString::npos;
}

struct WriteCase
{
    const char* name;
    CWideString before; // the section as it was
    WlanProfileBands bands;
    const WCHAR* szTypes; // as written
};

class BandsWriting : public XmlCaseTest<WriteCase>
{
};

TEST_P(BandsWriting, PutsTheSectionBeforeSecurityAndKeepsTheRest)
{
    const auto& param = GetParam();
    const auto written = Write(ProfileWith(param.before + szSecurity), param.bands);
    EXPECT_TRUE(written.bResult);
    EXPECT_FALSE(Declares(written.text)) << tests::Narrow(written.text);

    CWideString section = OLESTR("<connectivity>");
    for (const WCHAR* pType = param.szTypes; *pType; ++pType)
        section.append(OLESTR("<phyType>")).append(1, *pType).append(OLESTR("</phyType>"));
    EXPECT_EQ(OutlineOf(ProfileWith(section + OLESTR("</connectivity>") + szSecurity)), OutlineOf(written.text))
        << tests::Narrow(written.text);
    EXPECT_NE(CWideString::npos, written.text.find(OLESTR("</connectivity><security>"))) << tests::Narrow(written.text);
    // Scripts, entities, the key, comments and other namespaces are what they were.
    for (const WCHAR* szKept :
         {OLESTR("<name>Lager &amp; B\u00FCro \u6771\u9928 \U0001F4F6</name>"), OLESTR("<!-- kept -->"),
          OLESTR("> amber&lt;lantern"), OLESTR("  47 </keyMaterial>"), OLESTR("xmlns=\"http://www.example.net/profile/v1\""),
          OLESTR("xmlns=\"http://www.example.net/profile/v3\"")})
        EXPECT_NE(CWideString::npos, written.text.find(szKept)) << tests::Narrow(szKept) << " in " << tests::Narrow(written.text);

    auto bands = bandsNotRead;
    EXPECT_TRUE(ReadProfileBands(written.text.c_str(), &bands));
    EXPECT_EQ(param.bands, bands);
}

const WriteCase writeCases[] = {
    {"both_for_b", OLESTR("<connectivity><phyType>b</phyType></connectivity>"), bandsBoth, OLESTR("ag")},
    {"both_where_none_was", {}, bandsBoth, OLESTR("ag")},
    {"2_4_ghz", OLESTR("<connectivity><phyType>a</phyType><!-- old --><x/></connectivity>"), bands24GHz, OLESTR("g")},
    {"5_ghz", OLESTR("<connectivity/>"), bands5GHz, OLESTR("a")},
};
INSTANTIATE_TEST_SUITE_P(Profiles, BandsWriting, testing::ValuesIn(writeCases), CaseName<WriteCase>);

class BandsEdges : public XmlTest
{
};

TEST_F(BandsEdges, IndentationStays)
{
    auto text = Write(ProfileWith(Connectivity({OLESTR("b")}) + szSecurity), bands5GHz).text;
    std::erase(text, OLESTR('\r'));
    EXPECT_NE(CWideString::npos,
              text.find(OLESTR("\n\t<MSM>\n\t\t\n\t\t<connectivity><phyType>a</phyType></connectivity><security>\n\t\t\t"
                               "<sharedKey>")))
        << tests::Narrow(text);
}

TEST_F(BandsEdges, WithoutSecurityTheSectionIsGoneAndTheResultFalse)
{
    const auto written = Write(ProfileWith(OLESTR("<connectivity><phyType>b</phyType></connectivity><x/>")), bandsBoth);
    EXPECT_FALSE(written.bResult);
    EXPECT_EQ(OutlineOf(ProfileWith(OLESTR("<x/>"))), OutlineOf(written.text));
}

TEST_F(BandsEdges, NoPlaceForTheSectionLeavesTheProfileAsLoaded)
{
    for (const WCHAR* szProfile :
         {OLESTR("<WLANProfile><security/></WLANProfile>"), OLESTR("<other><MSM><security/></MSM></other>"),
          OLESTR("<w:WLANProfile xmlns:w='urn:w'><w:MSM><w:security/></w:MSM></w:WLANProfile>")})
    {
        const auto written = Write(szProfile, bandsBoth);
        EXPECT_FALSE(written.bResult) << tests::Narrow(szProfile);
        EXPECT_EQ(OutlineOf(szProfile), OutlineOf(written.text));
    }
}

TEST_F(BandsEdges, TextsThatAreNotXmlStayUntouched)
{
    for (const CWideString text : {OLESTR("no profile"), OLESTR("<WLANProfile><MSM><security/></MSM>"), OLESTR("")})
    {
        const auto written = Write(text, bandsBoth);
        EXPECT_FALSE(written.bResult);
        EXPECT_EQ(text, written.text);
    }
}

TEST_F(BandsEdges, OfTheProfilesOwnEmptyDeclarationsOnlyTheFirstGoes)
{
    const auto written = Write(
        OLESTR("<WLANProfile xmlns=\"urn:w\"><x xmlns=\"\"/><y xmlns=\"\"/><MSM><security/></MSM></WLANProfile>"), bands24GHz);
    EXPECT_TRUE(written.bResult);
    EXPECT_NE(CWideString::npos, written.text.find(OLESTR("<x/><y xmlns=\"\"/>"))) << tests::Narrow(written.text);
}
} // namespace
