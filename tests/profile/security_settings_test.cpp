// The security choice of an IHV profile: what is read from a text, what is written, what counts as valid.
#include "profile/CCXSecuritySettings.h"
#include "tests/support/ModuleUnderTest.h"
#include "tests/support/XmlTest.h"

namespace
{
constexpr DWORD none = CCXSecuritySettings::invalid;
constexpr DWORD cckm = 0x80000001u;
constexpr DWORD wpa = 3;
constexpr DWORD wpa2 = 6;
constexpr DWORD wep = 5;
constexpr DWORD tkip = 2;
constexpr DWORD aes = 4;

class SecuritySettings : public tests::xml::XmlTest
{
};

#define NETWORK(content) OLESTR("<CCX><authenticatingNetwork>") OLESTR(content) OLESTR("</authenticatingNetwork></CCX>")
#define CCKM(cipher) NETWORK("<cckm><encryption>" cipher "</encryption></cckm>")

TEST_F(SecuritySettings, ReadTheChoice)
{
    const struct
    {
        const WCHAR* szProfile;
        DWORD auth;
        DWORD cipher;
    } rows[] = {
        {nullptr, none, none},
        {OLESTR("<CCX><authenticatingNetwork><cckm><encryption>AES</encryption></cckm></authenticatingNetwork>"
                "<openNetwork/></CCX>"),
         1, 0},
        {OLESTR("<vendor><CCX><openNetwork/></CCX></vendor>"), 1, 0},
        {OLESTR("<vendor><openNetwork/></vendor>"), none, none},
        {NETWORK("<open><encryption>None</encryption></open>"), 1, 0},
        {NETWORK("<wpa2><encryption>AES</encryption></wpa2><cckm><encryption>WEP</encryption></cckm>"), cckm, wep},
        {NETWORK("<cckm/><wpa2><encryption>AES</encryption></wpa2>"), cckm, none},
        {NETWORK("<wpa3><encryption>AES</encryption></wpa3>"), none, none},
        {OLESTR("<CCX><authenticatingNetwork/><authenticatingNetwork><wpa><encryption>AES</encryption></wpa>"
                "</authenticatingNetwork></CCX>"),
         none, none},
        {NETWORK("<cckm><x><encryption>AES</encryption></x></cckm>"), cckm, none},
        {CCKM("aes"), cckm, aes},
        {CCKM("WEP104"), cckm, none},
        {CCKM("tKiP 128"), cckm, tkip},
        {CCKM("Non"), cckm, none},
        {CCKM(" AES"), cckm, none},
        {CCKM("AES "), cckm, none},
        {CCKM("KEP"), cckm, none},
        {CCKM("AET"), cckm, none},
        {CCKM("T\u212AIP"), cckm, none},
        {CCKM("<![CDATA[T]]><!-- c -->&#75;<?x y?>I<b>P</b>"), cckm, tkip},
        {OLESTR("<CCX xmlns='urn:any'><openNetwork xmlns=''/></CCX>"), 1, 0},
    };
    for (const auto& row : rows)
    {
        SCOPED_TRACE(row.szProfile ? tests::Narrow(row.szProfile) : "null");
        CCXSecuritySettings settings;
        EXPECT_EQ(none, settings.auth);
        EXPECT_EQ(none, settings.cipher);
        settings.SetDefaults(); // what was there before must not shine through
        EXPECT_EQ(cckm, settings.auth);
        EXPECT_EQ(wep, settings.cipher);
        settings.Parse(row.szProfile);
        EXPECT_EQ(row.auth, settings.auth);
        EXPECT_EQ(row.cipher, settings.cipher);
    }
}

#define WRITTEN(token, cipher)                                                                                                   \
    "<CCX><authenticatingNetwork><" token "><encryption>" cipher "</encryption></" token "></authenticatingNetwork></CCX>"

TEST_F(SecuritySettings, WriteTheElements)
{
    const struct
    {
        DWORD auth;
        DWORD cipher;
        const char* szTree;
        bool bIsValid;
    } rows[] = {
        {1, wep, "<CCX><openNetwork/></CCX>", true},
        {cckm, wep, WRITTEN("cckm", "WEP"), true},
        {cckm, 0, WRITTEN("cckm", "None"), true},
        {wpa, tkip, WRITTEN("wpa", "TKIP"), true},
        {wpa2, aes, WRITTEN("wpa2", "AES"), true},
        {2, aes, "<CCX><authenticatingNetwork/></CCX>", false},
        {wpa2, 1, "<CCX><authenticatingNetwork><wpa2><encryption/></wpa2></authenticatingNetwork></CCX>", false},
    };
    for (const auto& row : rows)
    {
        SCOPED_TRACE(row.szTree);
        CCXSecuritySettings settings;
        settings.auth = row.auth;
        settings.cipher = row.cipher;
        CBstr bstrWritten;
        *bstrWritten.Put() = settings.Serialise();
        EXPECT_EQ(row.szTree, tests::ProfileTree(bstrWritten));
        EXPECT_EQ(row.bIsValid, settings.IsValid());
    }
}
} // namespace
