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

CWideString Connectivity(std::initializer_list<const WCHAR*> texts)
{
    CWideString section = OLESTR("<connectivity>");
    for (const WCHAR* szText : texts)
        section.append(OLESTR("\r\n\t\t\t<phyType>")).append(szText).append(OLESTR("</phyType>"));
    return section + OLESTR("\r\n\t\t</connectivity>\r\n\t\t");
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
    // Where the value is to be left alone, it is told from one that was set.
    for (const DWORD dwBefore : {1u, 2u})
    {
        auto bands = static_cast<WlanProfileBands>(dwBefore);
        EXPECT_EQ(param.bResult, ReadProfileBands(param.profile.c_str(), &bands));
        EXPECT_EQ(param.bResult ? param.bands : dwBefore, static_cast<DWORD>(bands));
    }
}

ReadCase Types(const char* szName, std::initializer_list<const WCHAR*> texts, bool bResult, DWORD bands)
{
    return {szName, ProfileWith(Connectivity(texts) + szSecurity), bResult, bands};
}

const ReadCase readCases[] = {
    Types("a_g", {OLESTR("a"), OLESTR("<!-- n -->&#103;")}, true, 3),
    Types("a_g_n", {OLESTR("a"), OLESTR("g"), OLESTR("n")}, true, 3),
    Types("g_a", {OLESTR("g"), OLESTR("a")}, true, 1),
    Types("a_n", {OLESTR("a"), OLESTR("n")}, true, 2),
    Types("b_g", {OLESTR("b"), OLESTR("g")}, true, 1),
    Types("n", {OLESTR("n")}, false, 0),
    Types("capitals", {OLESTR("A"), OLESTR("G")}, false, 0),
    Types("a_blank_g", {OLESTR("a"), OLESTR(" "), OLESTR("g")}, true, 1),
    {"on_one_line", ProfileWith(OLESTR("<connectivity><phyType>a</phyType><phyType>g</phyType></connectivity>")), true, 3},
    {"comment_alone", ProfileWith(OLESTR("<connectivity><!-- a --></connectivity>")), false, 0},
    {"no_connectivity", ProfileWith(szSecurity), true, 0},
    {"empty_connectivity", ProfileWith(OLESTR("<connectivity/>")), true, 0},
    {"white_space_alone", ProfileWith(OLESTR("<connectivity> \r\n\t</connectivity>")), true, 0},
    {"white_space_beside_an_element", ProfileWith(OLESTR("<connectivity>\n<phyType>a</phyType>g</connectivity>")), true, 3},
    {"connectivity_elsewhere", OLESTR("<WLANProfile><connectivity><phyType>g</phyType></connectivity></WLANProfile>"), true, 0},
    {"not_xml", OLESTR("<WLANProfile><MSM>"), false, 0},
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

class BandsWriting : public XmlTest
{
};

TEST_F(BandsWriting, PutsTheSectionBeforeSecurityAndKeepsTheRest)
{
    const struct
    {
        CWideString before; // the section as it was
        WlanProfileBands bands;
        const WCHAR* szAfter;
    } rows[] = {
        {OLESTR("<connectivity><phyType>b</phyType></connectivity>"), bandsBoth,
         OLESTR("<connectivity><phyType>a</phyType><phyType>g</phyType></connectivity>")},
        {OLESTR("<connectivity><phyType>a</phyType><!-- old --><x/></connectivity>"), bands24GHz,
         OLESTR("<connectivity><phyType>g</phyType></connectivity>")},
        {{}, bands5GHz, OLESTR("<connectivity><phyType>a</phyType></connectivity>")},
    };
    for (const auto& row : rows)
    {
        const auto written = Write(ProfileWith(row.before + szSecurity), row.bands);
        SCOPED_TRACE(tests::Narrow(written.text));
        EXPECT_TRUE(written.bResult);
        EXPECT_EQ(OutlineOf(ProfileWith(row.szAfter + CWideString(szSecurity))), OutlineOf(written.text));
        // Scripts, entities, the key, comments, indentation and other namespaces are what they were.
        for (const CWideString& kept : {row.szAfter + CWideString(OLESTR("<security>")),
                                        CWideString(OLESTR("<name>Lager &amp; B\u00FCro \u6771\u9928 \U0001F4F6</name>")),
                                        CWideString(OLESTR("<!-- kept --><other xmlns=\"http://www.example.net/profile/v3\">")),
                                        CWideString(OLESTR("\n\t\t\t<sharedKey><keyMaterial> amber&lt;lantern")),
                                        CWideString(OLESTR("  47 </keyMaterial>"))})
            EXPECT_NE(CWideString::npos, written.text.find(kept)) << tests::Narrow(kept);
        auto bands = bandsNotRead;
        EXPECT_TRUE(ReadProfileBands(written.text.c_str(), &bands));
        EXPECT_EQ(row.bands, bands);
    }
}

// The component marks the new section as outside the profile's namespace.
TEST_F(BandsWriting, TakesTheFirstEmptyDeclarationAwayAndNoOther)
{
    const struct
    {
        const WCHAR* szProfile;
        const WCHAR* szWritten;
    } rows[] = {
        {OLESTR("<WLANProfile xmlns=\"urn:w\"><MSM><security/></MSM></WLANProfile>"),
         OLESTR("<WLANProfile "
                "xmlns=\"urn:w\"><MSM><connectivity><phyType>g</phyType></connectivity><security/></MSM></WLANProfile>")},
        {OLESTR("<WLANProfile xmlns=\"urn:w\"><x xmlns=\"\"/><MSM><security/></MSM></WLANProfile>"),
         OLESTR(
             "<WLANProfile xmlns=\"urn:w\"><x/><MSM><connectivity xmlns=\"\"><phyType>g</phyType></connectivity><security/></MSM>"
             "</WLANProfile>")},
        {OLESTR("<WLANProfile xmlns=\"urn:w\"><MSM><security/></MSM><x xmlns=\"\"/></WLANProfile>"),
         OLESTR(
             "<WLANProfile xmlns=\"urn:w\"><MSM><connectivity><phyType>g</phyType></connectivity><security/></MSM><x xmlns=\"\"/>"
             "</WLANProfile>")},
        {OLESTR("<WLANProfile><MSM><security/></MSM></WLANProfile>"),
         OLESTR("<WLANProfile><MSM><connectivity><phyType>g</phyType></connectivity><security/></MSM></WLANProfile>")},
    };
    for (const auto& row : rows)
    {
        const auto written = Write(row.szProfile, bands24GHz);
        EXPECT_TRUE(written.bResult);
        // The component ends some texts with a line.
        EXPECT_EQ(tests::Narrow(row.szWritten),
                  tests::Narrow(written.text.substr(0, written.text.find_last_of(OLESTR('>')) + 1)));
    }
}

TEST_F(BandsWriting, WithoutAPlaceForTheSectionTheResultIsFalse)
{
    const struct
    {
        CWideString profile;
        CWideString written;
    } rows[] = {
        {ProfileWith(OLESTR("<connectivity><phyType>b</phyType></connectivity><x/>")), ProfileWith(OLESTR("<x/>"))},
        {OLESTR("<WLANProfile><security/></WLANProfile>"), OLESTR("<WLANProfile><security/></WLANProfile>")},
        {OLESTR("<other><MSM><security/></MSM></other>"), OLESTR("<other><MSM><security/></MSM></other>")},
    };
    for (const auto& row : rows)
    {
        const auto written = Write(row.profile, bandsBoth);
        EXPECT_FALSE(written.bResult);
        EXPECT_EQ(OutlineOf(row.written), OutlineOf(written.text));
    }
    const CWideString noProfile = OLESTR("<WLANProfile><MSM><security/></MSM>");
    const auto written = Write(noProfile, bandsBoth);
    EXPECT_FALSE(written.bResult);
    EXPECT_EQ(noProfile, written.text);
}

// Of eight lengths in a row one fills the memory that the allocator sets aside to the last byte.
TEST_F(BandsWriting, EndsTheTextWhateverItsLength)
{
    for (std::size_t cchName = 0; cchName < 8; ++cchName)
    {
        const CWideString name(cchName, OLESTR('n'));
        const CWideString profile = OLESTR("<WLANProfile><MSM/><name>") + name + OLESTR("</name></WLANProfile>");
        EXPECT_EQ(OutlineOf(profile), OutlineOf(Write(profile, bandsBoth).text));
    }
}
} // namespace
