// Profiles that nobody wrote in good faith read as texts that do not load, and quickly.
#include "profile/CCXConnectionSettings.h"
#include "profile/CCXSecuritySettings.h"
#include "tests/support/XmlVerbs.h"

#include <chrono>

namespace
{
class HostileProfile : public tests::xml::XmlTest
{
};

CWideString Repeated(std::size_t nCount, CWideView piece)
{
    CWideString text;
    while (nCount-- != 0)
        text += piece;
    return text;
}

TEST_F(HostileProfile, ReadsAsOneThatDoesNotLoad)
{
    constexpr std::size_t cchLong = 5 * 1024 * 1024 / sizeof(WCHAR);
    // Sanitizers slow everything down by about as much.
    constexpr auto longest = std::chrono::seconds(2) * SLOWED_DOWN;
    // Both records find something in it, if only the text around it loads.
    const CWideString start = OLESTR("<CCX><openNetwork/><Rapido>true</Rapido>");
    const CWideString end = OLESTR("</CCX>");
    CWideString entities = OLESTR("<!DOCTYPE CCX [<!ENTITY a 'aaaaaaaaaa'>");
    for (WCHAR ch = OLESTR('b'); ch <= OLESTR('l'); ++ch)
        entities += CWideString(OLESTR("<!ENTITY ")) + ch + OLESTR(" '") +
                    Repeated(10, CWideString(OLESTR("&")) + static_cast<WCHAR>(ch - 1) + OLESTR(";")) + OLESTR("'>");
    const struct
    {
        const char* name;
        bool bLoads;
        CWideString text;
    } rows[] = {
        {"long", true, start + OLESTR("<x>") + CWideString(cchLong, OLESTR('x')) + OLESTR("</x>") + end},
        {"nul_ends_the_text", true, start + end + WCHAR{} + OLESTR("<!DOCTYPE")},
        {"long_without_an_end", false, start + CWideString(cchLong, OLESTR('x'))},
        {"tags_without_an_end", false, start + Repeated(cchLong / 20, OLESTR("<a/>"))},
        {"hundred_thousand_levels", false, start + Repeated(100000, OLESTR("<a>")) + Repeated(100000, OLESTR("</a>")) + end},
        {"entities_that_multiply", false, entities + OLESTR("]>") + start + OLESTR("<x>&l;</x>") + end},
        {"external_entity", false,
         OLESTR("<!DOCTYPE CCX [<!ENTITY f SYSTEM 'file:///c:/windows/win.ini'>]>") + start + OLESTR("<x>&f;</x>") + end},
        {"undefined_entity", false, start + OLESTR("&nbsp;") + end},
        {"surrogate_alone", false, start + CWideString(1, static_cast<WCHAR>(0xD83D)) + end},
        {"nul_inside", false, start + WCHAR{} + end},
    };
    for (const auto& row : rows)
    {
        SCOPED_TRACE(row.name);
        const CBstr bstrProfile{CWideView(row.text)};
        const auto begun = std::chrono::steady_clock::now();
        EXPECT_EQ(row.bLoads ? 1 : CCXSecuritySettings::invalid, CCXSecuritySettings(bstrProfile.Get()).auth);
        EXPECT_EQ(row.bLoads ? 1 : CCXConnectionSettings::NotSet, CCXConnectionSettings(bstrProfile.Get()).rapido);
        EXPECT_LT(std::chrono::steady_clock::now() - begun, longest);
    }
}

} // namespace
