// The security choice of an IHV profile: what is read from a text, what is written, what counts as valid.
#include "profile/CCXSecuritySettings.h"
#include "tests/support/ModuleUnderTest.h"
#include "tests/support/XmlVerbs.h"

namespace
{
using tests::xml::CaseName;
using tests::xml::XmlCaseTest;
using tests::xml::XmlTest;

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
    settings.SetDefaults(); // what was there before must not shine through
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
    {"open", OLESTR("<CCX><openNetwork/></CCX>"), 1, 0},
    {"open_wins",
     OLESTR("<CCX><authenticatingNetwork><cckm><encryption>AES</encryption></cckm></authenticatingNetwork>"
            "<openNetwork/></CCX>"),
     1, 0},
    {"open_inside_an_envelope", OLESTR("<vendor><CCX><openNetwork/></CCX></vendor>"), 1, 0},
    {"open_outside_ccx", OLESTR("<vendor><openNetwork/></vendor>"), none, none},
    {"open_deeper_in_ccx", OLESTR("<CCX><x><openNetwork/></x></CCX>"), none, none},
    {"ccx_inside_ccx", OLESTR("<CCX><CCX><openNetwork/></CCX></CCX>"), 1, 0},
    {"element_name_in_other_case", OLESTR("<CCX><opennetwork/></CCX>"), none, none},
    {"root_name_in_other_case", OLESTR("<ccx><openNetwork/></ccx>"), none, none},
    {"open_token", NETWORK("<open><encryption>None</encryption></open>"), 1, 0},
    {"cckm", CCKM("TKIP"), cckm, tkip},
    {"wpa", NETWORK("<wpa><encryption>WEP</encryption></wpa>"), wpa, wep},
    {"wpa2", NETWORK("<wpa2><encryption>AES</encryption></wpa2>"), wpa2, aes},
    {"table_order_beats_document_order",
     NETWORK("<wpa2><encryption>AES</encryption></wpa2><cckm><encryption>WEP</encryption></cckm>"), cckm, wep},
    {"matched_token_decides_alone", NETWORK("<cckm/><wpa2><encryption>AES</encryption></wpa2>"), cckm, none},
    {"unknown_token", NETWORK("<wpa3><encryption>AES</encryption></wpa3>"), none, none},
    {"token_in_other_case", NETWORK("<CCKM><encryption>AES</encryption></CCKM>"), none, none},
    {"token_only_as_grandchild", NETWORK("<x><cckm><encryption>AES</encryption></cckm></x>"), none, none},
    {"first_network_decides",
     OLESTR("<CCX><authenticatingNetwork/><authenticatingNetwork><wpa><encryption>AES</encryption></wpa>"
            "</authenticatingNetwork></CCX>"),
     none, none},
    {"encryption_only_as_grandchild", NETWORK("<cckm><x><encryption>AES</encryption></x></cckm>"), cckm, none},
    {"cipher_empty", CCKM(""), cckm, none},
    {"cipher_small_letters", CCKM("aes"), cckm, aes},
    {"cipher_mixed_letters", CCKM("tKiP"), cckm, tkip},
    {"wep_ends_there", CCKM("WEP104"), cckm, none},
    {"aes_ends_there", CCKM("AES-CCMP"), cckm, none},
    {"none_and_more", CCKM("NoneAtAll"), cckm, 0},
    {"tkip_and_more", CCKM("tkip128"), cckm, tkip},
    {"three_letters_of_four", CCKM("Non"), cckm, none},
    {"blank_in_front", CCKM(" AES"), cckm, none},
    {"blank_behind_three_letters", CCKM("AES "), cckm, none},
    {"blank_behind_four_letters", CCKM("TKIP "), cckm, tkip},
    {"unknown_cipher", CCKM("GCMP"), cckm, none},
    {"letter_that_only_lower_cases_to_ascii", CCKM("T\u212AIP"), cckm, none},
    {"cdata", CCKM("<![CDATA[AES]]>"), cckm, aes},
    {"text_and_cdata", CCKM("A<![CDATA[E]]>S"), cckm, aes},
    {"comment_inside", CCKM("A<!-- comment -->ES"), cckm, aes},
    {"instruction_inside", CCKM("A<?x y?>ES"), cckm, aes},
    {"character_references", CCKM("&#65;&#x45;S"), cckm, aes},
    {"named_entity", CCKM("AES&amp;"), cckm, none},
    {"cipher_in_a_child", CCKM("<b>AES</b>"), cckm, aes},
    {"default_namespace", OLESTR("<CCX xmlns='urn:any'><openNetwork/></CCX>"), 1, 0},
    {"namespace_declared_below", OLESTR("<CCX xmlns='urn:any'><openNetwork xmlns=''/></CCX>"), 1, 0},
    {"prefixed_names_are_other_names", OLESTR("<c:CCX xmlns:c='urn:any'><c:openNetwork/></c:CCX>"), none, none},
    {"declaration_and_comment_in_front", OLESTR("<?xml version='1.0'?>\r\n<!-- x -->\r\n<CCX><openNetwork/></CCX>"), 1, 0},
    {"other_encoding_declared", OLESTR("<?xml version='1.0' encoding='us-ascii'?><CCX><openNetwork/></CCX>"), 1, 0},
    {"byte_order_mark", OLESTR("\uFEFF<CCX><openNetwork/></CCX>"), 1, 0},
    {"indented", NETWORK("\r\n\t<cckm>\r\n\t\t<encryption>AES</encryption>\r\n\t</cckm>\r\n"), cckm, aes},
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
    EXPECT_EQ(0u, tests::TextOf(bstrWritten).find("<CCX xmlns=\"http")) << "no declaration, and the namespace on the root";
    EXPECT_EQ(param.bIsValid, settings.IsValid());
    EXPECT_EQ(param.auth, settings.auth);
    EXPECT_EQ(param.cipher, settings.cipher);
    if (!param.bIsValid)
        return;
    const CCXSecuritySettings readBack(bstrWritten.Get());
    EXPECT_EQ(param.auth, readBack.auth);
    EXPECT_EQ(param.auth == 1 ? 0 : param.cipher, readBack.cipher);
}

#define WRITTEN(token, cipher)                                                                                                   \
    "<CCX><authenticatingNetwork><" token "><encryption>" cipher "</encryption></" token "></authenticatingNetwork></CCX>"
#define WITHOUT_CIPHER(token) "<CCX><authenticatingNetwork><" token "><encryption/></" token "></authenticatingNetwork></CCX>"

constexpr WriteCase writeCases[] = {
    {"open_drops_the_cipher", 1, wep, "<CCX><openNetwork/></CCX>", true},
    {"open_without_cipher", 1, none, "<CCX><openNetwork/></CCX>", true},
    {"cckm_wep", cckm, wep, WRITTEN("cckm", "WEP"), true},
    {"cckm_none", cckm, 0, WRITTEN("cckm", "None"), true},
    {"wpa_tkip", wpa, tkip, WRITTEN("wpa", "TKIP"), true},
    {"wpa2_aes", wpa2, aes, WRITTEN("wpa2", "AES"), true},
    {"auth_without_token", 2, aes, "<CCX><authenticatingNetwork/></CCX>", false},
    {"nothing_set", none, none, "<CCX><authenticatingNetwork/></CCX>", false},
    {"cipher_without_token", wpa2, 1, WITHOUT_CIPHER("wpa2"), false},
    {"cipher_not_set", cckm, none, WITHOUT_CIPHER("cckm"), false},
};
INSTANTIATE_TEST_SUITE_P(Records, SecurityWriting, testing::ValuesIn(writeCases), CaseName<WriteCase>);

class SecurityRecord : public XmlTest
{
};

TEST_F(SecurityRecord, StartsEmptyAndDefaultsToCckmWithWep)
{
    CCXSecuritySettings settings;
    EXPECT_EQ(none, settings.auth);
    EXPECT_EQ(none, settings.cipher);
    settings.SetDefaults();
    EXPECT_EQ(cckm, settings.auth);
    EXPECT_EQ(wep, settings.cipher);
}

TEST_F(SecurityRecord, WritesNothingOfTheProfileThatItWasReadFrom)
{
    const CCXSecuritySettings settings(
        OLESTR("<CCX note='n'><!-- c --><Rapido>true</Rapido><openNetwork><x/></openNetwork></CCX>"));
    CBstr bstrWritten;
    *bstrWritten.Put() = settings.Serialise();
    EXPECT_EQ("<CCX><openNetwork/></CCX>", tests::ProfileTree(bstrWritten));
}
} // namespace
