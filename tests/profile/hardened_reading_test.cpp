// Profiles that nobody wrote in good faith: they read as texts that do not load, and quickly.
#include "profile/CCXConnectionSettings.h"
#include "profile/CCXSecuritySettings.h"
#include "tests/support/XmlVerbs.h"

#include <chrono>

namespace
{
using tests::xml::CaseName;
using tests::xml::XmlCaseTest;
using tests::xml::XmlTest;

// Both records would find something in it, if only the text around it loaded.
constexpr const WCHAR* szElements = OLESTR("<openNetwork/><Rapido>true</Rapido><KeepAliveTimer/>");
// Sanitizers slow everything down by about as much.
constexpr auto longest = std::chrono::seconds(1) * SLOWED_DOWN;
constexpr std::size_t cchLong = 5 * 1024 * 1024 / sizeof(WCHAR);

struct HostileCase
{
    const char* name;
    CWideString (*text)();
};

class HostileProfile : public XmlCaseTest<HostileCase>
{
};

TEST_P(HostileProfile, ReadsAsOneThatDoesNotLoad)
{
    CBstr bstrProfile{CWideView(GetParam().text())};
    const auto start = std::chrono::steady_clock::now();
    const CCXSecuritySettings security(bstrProfile.Get());
    const CCXConnectionSettings connection(bstrProfile.Get());
    EXPECT_LT(std::chrono::steady_clock::now() - start, 2 * longest);

    EXPECT_EQ(CCXSecuritySettings::invalid, security.auth);
    EXPECT_EQ(CCXSecuritySettings::invalid, security.cipher);
    EXPECT_EQ(CCXConnectionSettings::NotSet, connection.rapido);
    EXPECT_EQ(CCXConnectionSettings::NotSet, connection.advancedRoaming);
    EXPECT_EQ(0, connection.keepAliveEnabled);
    EXPECT_EQ(CCXConnectionSettings::NotSet, connection.keepAlivePeriod);
}

CWideString Ccx(const CWideString& content)
{
    return OLESTR("<CCX>") + CWideString(szElements) + content + OLESTR("</CCX>");
}

CWideString Repeated(std::size_t nCount, CWideView piece)
{
    CWideString text;
    text.reserve(nCount * piece.size());
    while (nCount-- != 0)
        text += piece;
    return text;
}

CWideString WithDocumentType(CWideView declarations, const CWideString& content)
{
    return OLESTR("<?xml version='1.0'?>\n<!-- c -->\n<!DOCTYPE CCX [") + CWideString(declarations) + OLESTR("]>") + Ccx(content);
}

const HostileCase hostileCases[] = {
    {"five_megabytes_without_an_end",
     [] { return OLESTR("<CCX>") + CWideString(szElements) + CWideString(cchLong, OLESTR('x')); }},
    {"a_megabyte_of_tags_without_an_end", [] { return OLESTR("<CCX>") + Repeated(cchLong / 20, OLESTR("<a/>")); }},
    {"five_megabytes_of_blanks_and_a_document_type", [] { return CWideString(cchLong, OLESTR(' ')) + WithDocumentType({}, {}); }},
    {"hundred_thousand_levels", [] { return Ccx(Repeated(100000, OLESTR("<a>")) + Repeated(100000, OLESTR("</a>"))); }},
    {"entities_that_multiply",
     []
     {
         CWideString declarations = OLESTR("<!ENTITY a 'aaaaaaaaaa'>");
         for (WCHAR ch = OLESTR('b'); ch <= OLESTR('l'); ++ch)
             declarations += CWideString(OLESTR("<!ENTITY ")) + ch + OLESTR(" '") +
                             Repeated(10, CWideString(OLESTR("&")) + static_cast<WCHAR>(ch - 1) + OLESTR(";")) + OLESTR("'>");
         return WithDocumentType(declarations, OLESTR("<x>&l;</x>"));
     }},
    {"external_entity",
     [] { return WithDocumentType(OLESTR("<!ENTITY f SYSTEM 'file:///c:/windows/win.ini'>"), OLESTR("<x>&f;</x>")); }},
    {"external_document_type", [] { return OLESTR("<!DOCTYPE CCX SYSTEM 'http://192.0.2.1/x.dtd'>") + Ccx({}); }},
    {"document_type_alone", [] { return WithDocumentType({}, {}); }},
    {"undefined_entity", [] { return Ccx(OLESTR("&nbsp;")); }},
    {"high_surrogate_alone", [] { return Ccx(CWideString(1, static_cast<WCHAR>(0xD83D)) + OLESTR("x")); }},
    {"low_surrogate_alone", [] { return Ccx(CWideString(1, static_cast<WCHAR>(0xDE00))); }},
    {"control_character", [] { return Ccx(OLESTR("\x01")); }},
    {"reference_to_control_character", [] { return Ccx(OLESTR("&#x1B;")); }},
    {"not_a_character", [] { return Ccx(CWideString(1, static_cast<WCHAR>(0xFFFF))); }},
    {"nul_inside", [] { return Ccx(CWideString(1, WCHAR{})); }},
};
INSTANTIATE_TEST_SUITE_P(Texts, HostileProfile, testing::ValuesIn(hostileCases), CaseName<HostileCase>);

class LongProfile : public XmlTest
{
};

TEST_F(LongProfile, ThatLoadsIsReadLikeAnyOther)
{
    const auto text = Ccx(OLESTR("<x>") + CWideString(cchLong, OLESTR('x')) + OLESTR("</x>"));
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(1u, CCXSecuritySettings(text.c_str()).auth);
    EXPECT_EQ(1, CCXConnectionSettings(text.c_str()).rapido);
    EXPECT_LT(std::chrono::steady_clock::now() - start, 2 * longest);
}

TEST_F(LongProfile, NulEndsTheText)
{
    const CBstr bstrProfile(CWideView(Ccx({}) + WCHAR{} + OLESTR("<!DOCTYPE")));
    EXPECT_EQ(1u, CCXSecuritySettings(bstrProfile.Get()).auth);
}
} // namespace
