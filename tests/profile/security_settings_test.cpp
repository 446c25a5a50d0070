// The security choice of an IHV profile: what is read from a text, what is written, what counts as valid.
#include "profile/CCXSecuritySettings.h"
#include "tests/support/ModuleUnderTest.h"
#include "tests/support/XmlVerbs.h"

namespace
{
using tests::xml::CaseName;
using tests::xml::XmlCaseTest;

constexpr DWORD none = CCXSecuritySettings::invalid;
constexpr DWORD cckm = 0x80000001u;
constexpr DWORD wpa = 3;
constexpr DWORD wpa2 = 6;
constexpr DWORD wep = 5;
constexpr DWORD tkip = 2;
constexpr DWORD aes = 4;

struct ReadCase
{
    const char* name;
    const WCHAR* szProfile;
    DWORD auth;
    DWORD cipher;
};

class SecurityReading : public XmlCaseTest<ReadCase>
{
};

TEST_P(SecurityReading, GivesTheChoice)
{
    CCXSecuritySettings settings;
    EXPECT_EQ(none, settings.auth);
    EXPECT_EQ(none, settings.cipher);
    settings.SetDefaults(); // what was there before must not shine through
    EXPECT_EQ(cckm, settings.auth);
    EXPECT_EQ(wep, settings.cipher);
    settings.Parse(GetParam().szProfile);
    EXPECT_EQ(GetParam().auth, settings.auth);
    EXPECT_EQ(GetParam().cipher, settings.cipher);
}

#define NETWORK(content) OLESTR("<CCX><authenticatingNetwork>") OLESTR(content) OLESTR("</authenticatingNetwork></CCX>")
#define CCKM(cipher) NETWORK("<cckm><encryption>" cipher "</encryption></cckm>")

constexpr ReadCase readCases[] = {
    {"null_text", nullptr, none, none},
    {"empty_text", OLESTR(""), none, none},
    {"not_xml", OLESTR("<CCX><openNetwork/>"), none, none},
    {"no_security_elements", OLESTR("<CCX><Rapido>true</Rapido></CCX>"), none, none},
    {"open_wins",
     OLESTR("<CCX><authenticatingNetwork><cckm><encryption>AES</encryption></cckm></authenticatingNetwork>"
            "<openNetwork/></CCX>"),
     1, 0},
    {"open_inside_an_envelope", OLESTR("<vendor><CCX><openNetwork/></CCX></vendor>"), 1, 0},
    {"open_outside_ccx", OLESTR("<vendor><openNetwork/></vendor>"), none, none},
    {"open_deeper_in_ccx", OLESTR("<CCX><x><openNetwork/></x></CCX>"), none, none},
    {"element_name_in_other_case", OLESTR("<CCX><opennetwork/></CCX>"), none, none},
    {"open_token", NETWORK("<open><encryption>None</encryption></open>"), 1, 0},
    {"table_order_beats_document_order",
     NETWORK("<wpa2><encryption>AES</encryption></wpa2><cckm><encryption>WEP</encryption></cckm>"), cckm, wep},
    {"matched_token_decides_alone", NETWORK("<cckm/><wpa2><encryption>AES</encryption></wpa2>"), cckm, none},
    {"unknown_token", NETWORK("<wpa3><encryption>AES</encryption></wpa3>"), none, none},
    {"token_only_as_grandchild", NETWORK("<x><cckm><encryption>AES</encryption></cckm></x>"), none, none},
    {"first_network_decides",
     OLESTR("<CCX><authenticatingNetwork/><authenticatingNetwork><wpa><encryption>AES</encryption></wpa>"
            "</authenticatingNetwork></CCX>"),
     none, none},
    {"encryption_only_as_grandchild", NETWORK("<cckm><x><encryption>AES</encryption></x></cckm>"), cckm, none},
    {"cipher_small_letters", CCKM("aes"), cckm, aes},
    {"wep_ends_there", CCKM("WEP104"), cckm, none},
    {"none_and_more", CCKM("NoneAtAll"), cckm, 0},
    {"tkip_and_more", CCKM("tKiP 128"), cckm, tkip},
    {"three_letters_of_four", CCKM("Non"), cckm, none},
    {"blank_in_front", CCKM(" AES"), cckm, none},
    {"blank_behind_three_letters", CCKM("AES "), cckm, none},
    {"other_first_letter", CCKM("KEP"), cckm, none},
    {"other_last_letter", CCKM("AET"), cckm, none},
    {"letter_that_only_lower_cases_to_ascii", CCKM("T\u212AIP"), cckm, none},
    {"text_cdata_comment_instruction_reference", CCKM("<![CDATA[T]]><!-- c -->&#75;<?x y?>I<b>P</b>"), cckm, tkip},
    {"default_namespace_left_below", OLESTR("<CCX xmlns='urn:any'><openNetwork xmlns=''/></CCX>"), 1, 0},
    {"prefixed_names_are_other_names", OLESTR("<c:CCX xmlns:c='urn:any'><c:openNetwork/></c:CCX>"), none, none},
    {"declaration_and_comment_in_front",
     OLESTR("<?xml version='1.0' encoding='us-ascii'?>\r\n<!-- x -->\r\n<CCX><openNetwork/></CCX>"), 1, 0},
    {"byte_order_mark", OLESTR("\uFEFF<CCX><openNetwork/></CCX>"), 1, 0},
    {"commented_out", OLESTR("<CCX><!-- <openNetwork/> --></CCX>"), none, none},
};
INSTANTIATE_TEST_SUITE_P(Texts, SecurityReading, testing::ValuesIn(readCases), CaseName<ReadCase>);

struct WriteCase
{
    const char* name;
    DWORD auth;
    DWORD cipher;
    const char* szTree;
    bool bIsValid;
};

class SecurityWriting : public XmlCaseTest<WriteCase>
{
};

TEST_P(SecurityWriting, GivesTheElementsAndReadsBack)
{
    const auto& param = GetParam();
    CCXSecuritySettings settings;
    settings.auth = param.auth;
    settings.cipher = param.cipher;
    CBstr bstrWritten;
    *bstrWritten.Put() = settings.Serialise();
    EXPECT_EQ(param.szTree, tests::ProfileTree(bstrWritten));
    EXPECT_EQ(0u, tests::TextOf(bstrWritten).find("<CCX xmlns=\"http://www.korvane.com/CCX\">"));
    EXPECT_EQ(param.bIsValid, settings.IsValid());
    const CCXSecuritySettings readBack(bstrWritten.Get());
    if (param.bIsValid)
    {
        EXPECT_EQ(param.auth, readBack.auth);
        EXPECT_EQ(param.auth == 1 ? 0 : param.cipher, readBack.cipher);
    }
}

#define WRITTEN(token, cipher)                                                                                                   \
    "<CCX><authenticatingNetwork><" token "><encryption>" cipher "</encryption></" token "></authenticatingNetwork></CCX>"

constexpr WriteCase writeCases[] = {
    {"open_drops_the_cipher", 1, wep, "<CCX><openNetwork/></CCX>", true},
    {"cckm_wep", cckm, wep, WRITTEN("cckm", "WEP"), true},
    {"cckm_none", cckm, 0, WRITTEN("cckm", "None"), true},
    {"wpa_tkip", wpa, tkip, WRITTEN("wpa", "TKIP"), true},
    {"wpa2_aes", wpa2, aes, WRITTEN("wpa2", "AES"), true},
    {"auth_without_token", 2, aes, "<CCX><authenticatingNetwork/></CCX>", false},
    {"cipher_without_token", wpa2, 1, "<CCX><authenticatingNetwork><wpa2><encryption/></wpa2></authenticatingNetwork></CCX>",
     false},
};
INSTANTIATE_TEST_SUITE_P(Records, SecurityWriting, testing::ValuesIn(writeCases), CaseName<WriteCase>);
} // namespace
