// The host's reading of a profile file: encodings, positions, and putting the vendor's texts into their places.
#include "host/Difference.h"
#include "host/HostError.h"
#include "host/IhvElement.h"
#include "host/KeyMask.h"
#include "host/ProfileText.h"

#include <functional>
#include <gtest/gtest.h>

namespace
{
using namespace std::string_literals;

std::string Utf16(std::string_view text, bool bBigEndian)
{
    std::string strBytes;
    for (const char c : text)
        strBytes += bBigEndian ? std::string{'\0', c} : std::string{c, '\0'};
    return strBytes;
}

std::string Put(std::string_view profile, VendorPlace place, std::string_view vendorText)
{
    return Utf8Of(WithVendorText(WideOf(profile), place, WideOf(vendorText)));
}

std::optional<std::string> Read(std::string_view profile, VendorPlace place)
{
    const auto strText = VendorText(WideOf(profile), place);
    return strText ? std::optional(Utf8Of(*strText)) : std::nullopt;
}

std::string ReasonFor(const std::function<void()>& body)
{
    try
    {
        body();
    }
    catch (const CHostError& error)
    {
        return error.what();
    }
    return "nothing was refused";
}

std::string WithLineEnds(std::string strText, const std::string& strLineEnd)
{
    for (std::size_t n = strText.find('\n'); n != std::string::npos; n = strText.find('\n', n + strLineEnd.size()))
        strText.replace(n, 1, strLineEnd);
    return strText;
}

// Encodings

struct Decoded
{
    std::string strBytes;
    const char* szText; // UTF-8
};
const Decoded decoded[] = {
    {"<a>\xC3\xBC</a>\n", "<a>ü</a>\n"},
    {"\xEF\xBB\xBF<?xml version='1.0' encoding='US-ASCII'?><a>\xC3\xBC</a>", "<?xml version='1.0' encoding='US-ASCII'?><a>ü</a>"},
    {"\xFF\xFE<\0\xFC\x01"s, "<Ǽ"},
    {"\xFE\xFF\0<\x01\xFC"s, "<Ǽ"},
    {Utf16("x", false), "x"},
    {Utf16("<a/>", true), "<a/>"},
    // Whoever re-encoded the file left its declaration behind.
    {"<?xml version=\"1.0\" encoding=\"UTF-16\"?><a>\xC3\xBC</a>", "<?xml version=\"1.0\" encoding=\"UTF-16\"?><a>ü</a>"},
    {"<?xml version='1.0' encoding='ISO-8859-1'?>\xFC\x80", "<?xml version='1.0' encoding='ISO-8859-1'?>ü\xC2\x80"},
    {"<?xml version='1.0' encoding = \"Windows-1252\"?>\xFC\x80\x81",
     "<?xml version='1.0' encoding = \"Windows-1252\"?>ü€\xC2\x81"},
    {"<?xml version='1.0' encoding='Shift_JIS'?><a/>", "<?xml version='1.0' encoding='Shift_JIS'?><a/>"},
    {"<!-- encoding='ISO-8859-1' --><a>\xC3\xBC</a>", "<!-- encoding='ISO-8859-1' --><a>ü</a>"},
};

TEST(DecodeProfileTest, GivesTheTextAndTheSameBytesBack)
{
    for (const Decoded& expected : decoded)
    {
        const ProfileText profile = DecodeProfile(expected.strBytes);
        EXPECT_EQ(Utf8Of(profile.strText), expected.szText);
        EXPECT_EQ(EncodeProfile(profile), expected.strBytes);
    }
}

TEST(DecodeProfileTest, RefusesWhatIsNoText)
{
    const auto reason = [](const std::string& strBytes) { return ReasonFor([&] { DecodeProfile(strBytes); }); };
    EXPECT_EQ(reason("<a>\xC3</a>"), "ill-formed UTF-8 at byte offset 3");
    EXPECT_EQ(reason("<a\0"s), "nothing was refused") << "the zero of a first UTF-16 character is one of the first two bytes";
    EXPECT_EQ(reason("ab\xFF"), "ill-formed UTF-8 at byte offset 2");
    EXPECT_EQ(reason("\xF0\x9F\x93\xB6\xFF"), "ill-formed UTF-8 at byte offset 4");
    EXPECT_EQ(reason("\xEF\xBB\xBF<a>\xFF"), "ill-formed UTF-8 at byte offset 6");
    EXPECT_EQ(reason("\xC0\xBC"), "ill-formed UTF-8 at byte offset 0") << "an overlong form";
    EXPECT_EQ(reason("\xFF\xFE<\0a"s), "half a UTF-16 code unit at byte offset 4");
    EXPECT_EQ(reason("<?xml version='1.0' encoding='US-ASCII'?>\xFC"),
              "a byte that is not US-ASCII, which the file declares, at byte offset 41");
    EXPECT_EQ(reason("<?xml version='1.0' encoding='Shift_JIS'?>\xFC"),
              "the encoding \"shift_jis\" that the file declares is not supported");
}

TEST(EncodeProfileTest, WritesReferencesForWhatTheEncodingLacks)
{
    const CWideString strText = WideOf("<a>ü€東\xF0\x9F\x93\xB6</a>");
    EXPECT_EQ(EncodeProfile({strText, TextEncoding::UsAscii, false}), "<a>&#252;&#8364;&#26481;&#128246;</a>");
    EXPECT_EQ(EncodeProfile({strText, TextEncoding::Iso8859_1, false}), "<a>\xFC&#8364;&#26481;&#128246;</a>");
    EXPECT_EQ(EncodeProfile({strText, TextEncoding::Windows1252, false}), "<a>\xFC\x80&#26481;&#128246;</a>");
}

// Reading the vendor's texts

struct Reading
{
    const char* szProfile;
    const char* szSecurity; // null for none
};
const Reading readings[] = {
    {"<W><MSM/><IHV><connectivity><CCX>1</CCX></connectivity><security><CCX>2</CCX></security></IHV></W>", "<CCX>2</CCX>"},
    {"<W><MSM><security><CCX/></security></MSM></W>", nullptr},
    {"<W><x><IHV><security><CCX/></security></IHV></x></W>", nullptr},
    {"<W><IHV><connectivity/><security>\n</security></IHV></W>", nullptr},
    {"<p:W xmlns:p='n'><p:IHV><p:security><CCX><a/></CCX></p:security></p:IHV></p:W>", "<CCX><a/></CCX>"},
    {"<W xmlns:v='http://www.korvane.com/CCX' xmlns:w='m'><IHV><security><v:CCX><v:a/></v:CCX></security></IHV></W>",
     "<v:CCX xmlns:v='http://www.korvane.com/CCX'><v:a/></v:CCX>"},
    {"<W xmlns:v='n'><IHV xmlns:v='m'><security><CCX v:a=''/></security></IHV></W>", "<CCX xmlns:v='m' v:a=''/>"},
    {"<W><!-- <IHV><security><CCX/></security></IHV> --><IHV><!-- <security> --></IHV></W>", nullptr},
    {"<W><name><![CDATA[<IHV><security><CCX/>]]></name><IHV><security><![CDATA[<CCX/>]]></security></IHV></W>", nullptr},
    {"<W a='>'><?p <IHV> ?><IHV><security><CCX b=\"/>\"/></security></IHV></W>", "<CCX b=\"/>\"/>"},
};

TEST(VendorTextTest, IsFoundWhereItStands)
{
    for (const Reading& expected : readings)
        EXPECT_EQ(Read(expected.szProfile, VendorPlace::Security).value_or("none"),
                  expected.szSecurity ? expected.szSecurity : "none")
            << expected.szProfile;
    EXPECT_EQ(Read(readings[0].szProfile, VendorPlace::Connectivity), "<CCX>1</CCX>");
}

// Putting new texts

struct Putting
{
    const char* szWhat;
    std::string strBefore;
    VendorPlace place;
    std::string strAfter;
};
std::string InIhv(const std::string& strChildren)
{
    return "<W>\n <IHV>\n  " + strChildren + "\n </IHV>\n</W>";
}

const Putting puttings[] = {
    {"replaced", "<W>\n <!-- & --><IHV><security>\n<CCX a='/>'><b>x</b></CCX> <!-- --></security></IHV></W>\n",
     VendorPlace::Security, "<W>\n <!-- & --><IHV><security>\n<CCX/> <!-- --></security></IHV></W>\n"},
    {"no IHV, before later additions",
     "<?xml version=\"1.0\"?>\n<W xmlns=\"n\">\n\t<name>&#252;</name>\n\t<MSM>\n\t</MSM>\n\t<Mac/>\n</W>\n",
     VendorPlace::Connectivity,
     "<?xml version=\"1.0\"?>\n<W xmlns=\"n\">\n\t<name>&#252;</name>\n\t<MSM>\n\t</MSM>\n\t<IHV>\n\t\t<OUIHeader>\n"
     "\t\t\t<OUI>024b4f</OUI>\n\t\t\t<type>00</type>\n\t\t</OUIHeader>\n\t\t<connectivity>\n\t\t\t<CCX/>\n\t\t</"
     "connectivity>\n\t</IHV>\n\t<Mac/>\n</W>\n"},
    {"no MSM", "<W><name/><SSIDConfig/></W>", VendorPlace::Security,
     "<W><name/><SSIDConfig/><IHV><OUIHeader><OUI>024b4f</OUI><type>00</type></OUIHeader><security><CCX/></security></IHV></W>"},
    {"prefixed", "<p:W xmlns:p='n'><p:MSM/></p:W>", VendorPlace::Security,
     "<p:W xmlns:p='n'><p:MSM/><p:IHV><p:OUIHeader><p:OUI>024b4f</p:OUI><p:type>00</p:type></p:OUIHeader>"
     "<p:security><CCX/></p:security></p:IHV></p:W>"},
    {"connectivity before security", InIhv("<OUIHeader/>\n  <security/>"), VendorPlace::Connectivity,
     InIhv("<OUIHeader/>\n  <connectivity>\n   <CCX/>\n  </connectivity>\n  <security/>")},
    {"security before useMSOneX", InIhv("<OUIHeader/>\n  <connectivity/>\n  <useMSOneX/>"), VendorPlace::Security,
     InIhv("<OUIHeader/>\n  <connectivity/>\n  <security>\n   <CCX/>\n  </security>\n  <useMSOneX/>")},
    {"an empty tag", InIhv("<security />"), VendorPlace::Security, InIhv("<security >\n   <CCX/>\n  </security>")},
    {"an empty element", InIhv("<security></security>"), VendorPlace::Security, InIhv("<security>\n   <CCX/>\n  </security>")},
    {"white space alone", InIhv("<security>\n  </security>"), VendorPlace::Security,
     InIhv("<security>\n   <CCX/>\n  </security>")},
    {"no header", "<W>\n <IHV>\n </IHV>\n</W>", VendorPlace::Security,
     InIhv("<OUIHeader>\n   <OUI>024b4f</OUI>\n   <type>00</type>\n  </OUIHeader>\n  <security>\n   <CCX/>\n  </security>")},
};

TEST(WithVendorTextTest, ChangesNothingElse)
{
    for (const Putting& expected : puttings)
    {
        SCOPED_TRACE(expected.szWhat);
        EXPECT_EQ(Put(expected.strBefore, expected.place, "<CCX/>"), expected.strAfter);
        EXPECT_EQ(Put(WithLineEnds(expected.strBefore, "\r\n"), expected.place, "<CCX/>"),
                  WithLineEnds(expected.strAfter, "\r\n"));
        EXPECT_EQ(Read(expected.strAfter, expected.place), "<CCX/>");
    }
}

TEST(WithVendorTextTest, GivesTheTextTheProfilesLineEnds)
{
    EXPECT_EQ(Put("<W>\r\n<IHV><security><CCX/></security></IHV></W>", VendorPlace::Security, "<CCX>\n<a/>\r\n</CCX>"),
              "<W>\r\n<IHV><security><CCX>\r\n<a/>\r\n</CCX></security></IHV></W>");
    EXPECT_EQ(Put("<W>\n<IHV><security><CCX/></security></IHV></W>", VendorPlace::Security, "<CCX>\r\n<a/>\n</CCX>"),
              "<W>\n<IHV><security><CCX>\n<a/>\n</CCX></security></IHV></W>");
}

TEST(WithVendorTextTest, LeavesAnotherVendorAlone)
{
    const std::pair<const char*, std::string> cases[] = {
        {"<W><IHV><security><Other/></security></IHV></W>", "security holds Other"},
        {"<W><IHV><security><z:CCX xmlns:z='urn:z'/></security></IHV></W>", "z:CCX is of the namespace \"urn:z\""},
        {"<W xmlns='n'><IHV><security xmlns='m'><CCX/></security></IHV></W>", "security is of the namespace \"m\""},
        {"<W xmlns:z='urn:z'><z:IHV/></W>", "z:IHV is of the namespace \"urn:z\""},
    };
    for (const auto& [szProfile, strReason] : cases)
    {
        EXPECT_EQ(ReasonFor([&, szProfile = szProfile] { Put(szProfile, VendorPlace::Security, "<CCX/>"); }),
                  "the IHV element belongs to another vendor: " + strReason);
        EXPECT_EQ(Read(szProfile, VendorPlace::Security), std::nullopt);
    }
}

// Keys

struct Masking
{
    const char* szText;
    const char* szShown;
};
const Masking maskings[] = {
    {"<p:SHAREDKEY k='secret' l='x'/>", "<p:SHAREDKEY k='********'/>"},
    {"<sharedKey><!--</sharedKey>-->secret<secret/> <?p?>\n<Protected/></sharedKey>",
     "<sharedKey>******** \n<Protected/></sharedKey>"},
    {"<!-- <sharedKey><![CDATA[</sharedKey>]]>secret</sharedKey> a <keyMaterial k=secret --><b/>",
     "<!-- <sharedKey>********</sharedKey> a <keyMaterial********--><b/>"},
    {"<?SharedKey secret?><?p password = \"secret\" q?>", "<?SharedKey********?><?p password = \"********\" q?>"},
    {"<a>&lt;e:Password&gt;<![CDATA[secret]]>&lt;/e:Password&gt; b</a>",
     "<a>&lt;e:Password&gt;********&lt;/e:Password&gt; b</a>"},
    {"<a b='&amp;lt;password>s/password'/>secret keyMaterial=&quot;secret of &quot;",
     "<a b='&amp;lt;password>********/>secret keyMaterial=&quot;********&quot;"},
    {"1 < 2 <sharedKey>secret</sharedKey> > <password>secret", "1 < 2 <sharedKey>********</sharedKey> > <password>********"},
    {"<a>&#38;#0060;key&#77;aterial&#x003E;secret&#x26;lt;/ key&#x4d;aterial&gt;</a>",
     "<a>&#38;#0060;key&#77;aterial&#x003E;********&#x26;lt;/ key&#x4d;aterial&gt;</a>"},
    {"<a>&lt;keyMaterial><!-- -->secret</a>", "<a>&lt;keyMaterial>********</a>"},
    {"<!-- < keyMaterial>secret-->< keyMaterial>secret</keyMaterial>",
     "<!-- < keyMaterial>********-->< keyMaterial>********</keyMaterial>"},
    {"<a>password=secret&lt;secret keymaterial=&#34;secret&quot;secret&#34;</a>",
     "<a>password=******** keymaterial=&#34;********&#34;</a>"},
    {"<keyMaterial>a</secret>b</p:protected secret><keyType/>c</keyMaterial secret>d",
     "<keyMaterial>********<keyType/>********</keyMaterial>d"},
    {"<z Password='x' secret='y'/><z Password='>a' secret'><b/>", "<z Password='********'/><z Password='********'><b/>"},
    {"<passwords a='1'>password</passwords> <password:a/>", "<passwords a='1'>password</passwords> <password:a/>"},
};

TEST(WithoutKeysTest, HidesThemInEveryFormOfText)
{
    for (const Masking& expected : maskings)
        EXPECT_EQ(Utf8Of(WithoutKeys(WideOf(expected.szText))), expected.szShown);
}

TEST(DifferenceTest, ShowsNoKey)
{
    const CWideString strBefore = WideOf("<W>\n<sharedKey>\n<keyType>secret</keyType><keyMaterial>secret</keyMaterial>\n"
                                         "</sharedKey>\n<p:keyMaterial>secret</p:keyMaterial>\n<x>1</x>\n</W>\n");
    CWideString strAfter = strBefore;
    strAfter.replace(strAfter.find(OLESTR('1')), 1, OLESTR("2"));
    const std::string strDifference = ChangeReport("a", strBefore, "b", strAfter);
    EXPECT_EQ(strDifference, "--- a\n+++ b\n@@ -3,5 +3,5 @@\n <keyType>********</keyType><keyMaterial>********</keyMaterial>\n "
                             "</sharedKey>\n <p:keyMaterial>********</p:keyMaterial>\n"
                             "-<x>1</x>\n+<x>2</x>\n </W>\n");
}

TEST(DifferenceTest, SaysWhereNothingShows)
{
    EXPECT_EQ(ChangeReport("a", WideOf("<W/>\n"), "b", WideOf("<W/>\n")), "a: nothing changed\n");
    EXPECT_EQ(ChangeReport("a", WideOf("<sharedKey>1</sharedKey>"), "b", WideOf("<sharedKey>2</sharedKey>")),
              "a: only what is not shown changed\n");
}
} // namespace
