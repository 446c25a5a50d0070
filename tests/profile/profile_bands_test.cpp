// The bands of a Windows wireless profile: read from its connectivity section and written back.
#include "tests/support/BandsRewrite.h"
#include "tests/support/TestFolder.h"
#include "tests/support/XmlTest.h"

namespace
{
constexpr const WCHAR* szSecurity = OLESTR("<security/>");

// Around the section all that a profile can hold: scripts, entities, a key, comments, indentation, other namespaces.
CWideString ProfileWith(const CWideString& section)
{
    return OLESTR("<WLANProfile xmlns=\"http://www.example.net/v1\">\n\t<name>Lager &amp; B\u00FCro \u6771 "
                  "\U0001F4F6</name>\n\t<MSM>\n\t\t") +
           section +
           OLESTR("\n\t\t<keyMaterial> amber&lt;lantern  47 </keyMaterial>\n\t</MSM>\n\t<!-- kept -->"
                  "<other xmlns=\"http://www.example.net/v3\"><x/></other>\n</WLANProfile>");
}

CWideString Types(std::initializer_list<const WCHAR*> texts)
{
    CWideString section = OLESTR("<connectivity>");
    for (const WCHAR* szText : texts)
        section.append(OLESTR("\r\n\t\t\t<phyType>")).append(szText).append(OLESTR("</phyType>"));
    return ProfileWith(section + OLESTR("\r\n\t\t</connectivity>\r\n\t\t") + szSecurity);
}

class ProfileBands : public tests::xml::XmlTest
{
protected:
    static CWideString Written(CWideString profile, WlanProfileBands bands, bool bResult)
    {
        EXPECT_EQ(bResult, tests::RewriteBands(profile, bands));
        return profile;
    }
    static void Check(const CWideString& before, WlanProfileBands bands, bool bResult, const CWideString& after)
    {
        CWideString written = Written(before, bands, bResult);
        // Some components end lines in their own way, and the text with a line.
        std::erase(written, OLESTR('\r'));
        written.resize(std::min(written.find_last_not_of(OLESTR('\n')) + 1, written.size()));
        EXPECT_TRUE(after == written) << tests::Narrow(written) << "\ninstead of\n" << tests::Narrow(after);
        auto readBack = bands;
        EXPECT_EQ(bResult, bResult && ReadProfileBands(written.c_str(), &readBack));
        EXPECT_EQ(bands, readBack);
    }
};

TEST_F(ProfileBands, ReadTheChoice)
{
    const struct
    {
        CWideString profile;
        bool bResult;
        DWORD bands;
    } rows[] = {
        {Types({OLESTR("a"), OLESTR("<!-- n -->&#103;")}), true, 3},
        {Types({OLESTR("a"), OLESTR("g"), OLESTR("n")}), true, 3},
        {Types({OLESTR("g"), OLESTR("a")}), true, 1},
        {Types({OLESTR("a"), OLESTR("n")}), true, 2},
        {Types({OLESTR("b"), OLESTR("g")}), true, 1},
        {Types({OLESTR("n")}), false, 0},
        {Types({OLESTR("A"), OLESTR("G")}), false, 0},
        {Types({OLESTR("a"), OLESTR(" "), OLESTR("g")}), true, 1},
        {ProfileWith(OLESTR("<connectivity><!-- a --></connectivity>")), false, 0},
        {ProfileWith(szSecurity), true, 0},
        {ProfileWith(OLESTR("<connectivity/>")), true, 0},
        {ProfileWith(OLESTR("<connectivity> \r\n\t</connectivity>")), true, 0},
        {ProfileWith(OLESTR("<connectivity>\n<phyType>a</phyType>g</connectivity>")), true, 3},
        {OLESTR("<WLANProfile><connectivity><phyType>g</phyType></connectivity></WLANProfile>"), true, 0},
        {OLESTR("<WLANProfile><MSM>"), false, 0},
    };
    for (const auto& row : rows)
        // Where the value is to be left alone, it is told from one that was set.
        for (const DWORD dwBefore : {1u, 2u})
        {
            auto bands = static_cast<WlanProfileBands>(dwBefore);
            EXPECT_EQ(row.bResult, ReadProfileBands(row.profile.c_str(), &bands)) << tests::Narrow(row.profile);
            EXPECT_EQ(row.bResult ? row.bands : dwBefore, static_cast<DWORD>(bands)) << tests::Narrow(row.profile);
        }
}

#define CONNECTIVITY(types) OLESTR("<connectivity>" types "</connectivity>")
// With a line of its own, because some components indent what has none.
#define WITHIN(content) OLESTR("<WLANProfile xmlns=\"urn:w\">\n" content "</WLANProfile>")

TEST_F(ProfileBands, PutsTheSectionBeforeSecurityAndKeepsTheRest)
{
    Check(ProfileWith(CONNECTIVITY("<phyType>b</phyType>") OLESTR("<security/>")), bandsBoth, true,
          ProfileWith(CONNECTIVITY("<phyType>a</phyType><phyType>g</phyType>") OLESTR("<security/>")));
    Check(ProfileWith(OLESTR("<x/>") CONNECTIVITY("<phyType>a</phyType><!-- old --><x/>") OLESTR("<y/><security/>")), bands24GHz,
          true, ProfileWith(OLESTR("<x/><y/>") CONNECTIVITY("<phyType>g</phyType>") OLESTR("<security/>")));
    Check(ProfileWith(szSecurity), bands5GHz, true, ProfileWith(CONNECTIVITY("<phyType>a</phyType>") OLESTR("<security/>")));
}

// Some components mark the new section as outside the profile's namespace. The first such mark goes, whosever it is.
TEST_F(ProfileBands, TakesTheFirstEmptyDeclarationAwayAndNoOther)
{
    const CWideString before = WITHIN("<x xmlns=\"\"/><y xmlns=\"\"/><MSM><security/></MSM>");
    const CWideString written = Written(before, bands24GHz, true);
    EXPECT_NE(CWideString::npos, written.find(OLESTR("<x/><y xmlns=\"\"/><MSM><connectivity"))) << tests::Narrow(written);
}

TEST_F(ProfileBands, WithoutAPlaceForTheSectionTheResultIsFalse)
{
    Check(ProfileWith(CONNECTIVITY("<phyType>b</phyType>") OLESTR("<x/>")), bandsBoth, false, ProfileWith(OLESTR("<x/>")));
    Check(WITHIN("<security/>"), bandsBoth, false, WITHIN("<security/>"));
    Check(OLESTR("<other>\n<MSM><security/></MSM></other>"), bandsBoth, false, OLESTR("<other>\n<MSM><security/></MSM></other>"));
    Check(OLESTR("<WLANProfile><MSM><security/></MSM>"), bandsBoth, false, OLESTR("<WLANProfile><MSM><security/></MSM>"));
}
} // namespace
