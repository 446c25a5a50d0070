// The host's reading of a profile file: encodings, positions, and putting the vendor's texts into their places.
#include "host/Difference.h"
#include "host/HostError.h"
#include "host/ProfileText.h"
#include "host/IhvElement.h"

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
    const char* szWhat;
    std::string strBytes;
    TextEncoding encoding;
    bool bMark;
    std::string strText; // UTF-8
};

const Decoded decoded[] = {
    {"plain", "<a>\xC3\xBC</a>\n", TextEncoding::Utf8, false, "<a>ü</a>\n"},
    {"mark", "\xEF\xBB\xBF<a/>\r\n", TextEncoding::Utf8, true, "<a/>\r\n"},
    {"mark beats name", "\xEF\xBB\xBF<?xml version='1.0' encoding='US-ASCII'?><a>\xC3\xBC</a>", TextEncoding::Utf8, true,
     "<?xml version='1.0' encoding='US-ASCII'?><a>ü</a>"},
    {"beyond the basic plane", "<a>\xF0\x9F\x93\xB6</a>", TextEncoding::Utf8, false, "<a>\xF0\x9F\x93\xB6</a>"},
    {"UTF-16 LE with mark", "\xFF\xFE" + Utf16("<a/>\r\n", false), TextEncoding::Utf16LittleEndian, true, "<a/>\r\n"},
    {"UTF-16 BE with mark", "\xFE\xFF" + Utf16("<a/>", true), TextEncoding::Utf16BigEndian, true, "<a/>"},
    {"UTF-16 LE by its zeros", Utf16("<a/>", false), TextEncoding::Utf16LittleEndian, false, "<a/>"},
    {"UTF-16 BE by its zeros", Utf16("<a/>", true), TextEncoding::Utf16BigEndian, false, "<a/>"},
    {"declared UTF-16 in 8-bit text", "<?xml version=\"1.0\" encoding=\"UTF-16\"?><a>\xC3\xBC</a>", TextEncoding::Utf8, false,
     "<?xml version=\"1.0\" encoding=\"UTF-16\"?><a>ü</a>"},
    {"US-ASCII", "<?xml version='1.0' encoding='us-ascii'?><a/>", TextEncoding::UsAscii, false,
     "<?xml version='1.0' encoding='us-ascii'?><a/>"},
    {"ISO-8859-1", "<?xml version='1.0' encoding='ISO-8859-1'?><a>\xFC\x80</a>", TextEncoding::Iso8859_1, false,
     "<?xml version='1.0' encoding='ISO-8859-1'?><a>ü\xC2\x80</a>"},
    {"windows-1252", "<?xml version='1.0' encoding = \"Windows-1252\"?><a>\xFC\x80\x81</a>", TextEncoding::Windows1252, false,
     "<?xml version='1.0' encoding = \"Windows-1252\"?><a>ü€\xC2\x81</a>"},
    {"unknown but ASCII", "<?xml version='1.0' encoding='Shift_JIS'?><a/>", TextEncoding::UsAscii, false,
     "<?xml version='1.0' encoding='Shift_JIS'?><a/>"},
    {"encoding= in a comment", "<!-- encoding='ISO-8859-1' --><a>\xC3\xBC</a>", TextEncoding::Utf8, false,
     "<!-- encoding='ISO-8859-1' --><a>ü</a>"},
    {"nothing", "", TextEncoding::Utf8, false, ""},
};

TEST(DecodeProfileTest, GivesTheTextAndTheSameBytesBack)
{
    for (const Decoded& expected : decoded)
    {
        SCOPED_TRACE(expected.szWhat);
        const ProfileText profile = DecodeProfile(expected.strBytes);
        EXPECT_EQ(profile.encoding, expected.encoding);
        EXPECT_EQ(profile.bByteOrderMark, expected.bMark);
        EXPECT_EQ(Utf8Of(profile.strText), expected.strText);
        EXPECT_EQ(EncodeProfile(profile), expected.strBytes);
    }
}

TEST(DecodeProfileTest, RefusesWhatIsNoText)
{
    const auto reason = [](const std::string& strBytes) { return ReasonFor([&] { DecodeProfile(strBytes); }); };
    EXPECT_EQ(reason("<a>\xC3</a>"), "ill-formed UTF-8 at byte offset 3");
    EXPECT_EQ(reason("\xEF\xBB\xBF<a>\xFF"), "ill-formed UTF-8 at byte offset 6");
    EXPECT_EQ(reason("\xC0\xBC"), "ill-formed UTF-8 at byte offset 0") << "an overlong form";
    EXPECT_EQ(reason("a\xED\xA0\x80"), "ill-formed UTF-8 at byte offset 1") << "a surrogate";
    EXPECT_EQ(reason("a\xF4\x90\x80\x80"), "ill-formed UTF-8 at byte offset 1") << "beyond U+10FFFF";
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
    const char* szWhat;
    const char* szProfile;
    std::optional<std::string> strSecurity;
    std::optional<std::string> strConnectivity;
};

const Reading readings[] = {
    {"both", "<W><MSM/><IHV><connectivity><CCX>1</CCX></connectivity><security><CCX>2</CCX></security></IHV></W>", "<CCX>2</CCX>",
     "<CCX>1</CCX>"},
    {"no IHV", "<W><MSM><security><CCX/></security></MSM></W>", std::nullopt, std::nullopt},
    {"security alone", "<W><IHV><security><CCX/></security></IHV></W>", "<CCX/>", std::nullopt},
    {"empty places", "<W><IHV><connectivity/><security>\n</security></IHV></W>", std::nullopt, std::nullopt},
    {"http namespace", "<W xmlns='http://n/v1'><IHV><security><CCX xmlns='u'/></security></IHV></W>", "<CCX xmlns='u'/>",
     std::nullopt},
    {"https namespace", "<W xmlns='https://n/v1'><IHV><security><CCX/></security></IHV></W>", "<CCX/>", std::nullopt},
    {"prefixed", "<p:W xmlns:p='n'><p:IHV><p:security><CCX><a/></CCX></p:security></p:IHV></p:W>", "<CCX><a/></CCX>",
     std::nullopt},
    {"prefix from around", "<W xmlns:v='n' xmlns:w='m'><IHV><security><v:CCX><v:a/></v:CCX></security></IHV></W>",
     "<v:CCX xmlns:v='n'><v:a/></v:CCX>", std::nullopt},
    {"inner prefix wins", "<W xmlns:v='n'><IHV xmlns:v='m'><security><CCX v:a=''/></security></IHV></W>",
     "<CCX xmlns:v='m' v:a=''/>", std::nullopt},
    {"in a comment", "<W><!-- <IHV><security><CCX/></security></IHV> --><IHV><!-- <security> --></IHV></W>", std::nullopt,
     std::nullopt},
    {"in CDATA", "<W><name><![CDATA[<IHV><security><CCX/>]]></name><IHV><security><![CDATA[<CCX/>]]></security></IHV></W>",
     std::nullopt, std::nullopt},
    {"behind a comment", "<W><IHV><security><!-- </security> --><CCX b='</CCX>'/></security></IHV></W>", "<CCX b='</CCX>'/>",
     std::nullopt},
    {"too deep", "<W><x><IHV><security><CCX/></security></IHV></x></W>", std::nullopt, std::nullopt},
    {"in an instruction and behind a value with a bracket",
     "<W a='>'><?p <IHV> ?><IHV><security><CCX b=\"/>\"/></security></IHV></W>", "<CCX b=\"/>\"/>", std::nullopt},
};

TEST(VendorTextTest, IsFoundWhereItStands)
{
    for (const Reading& expected : readings)
    {
        EXPECT_EQ(Read(expected.szProfile, VendorPlace::Security), expected.strSecurity) << expected.szWhat;
        EXPECT_EQ(Read(expected.szProfile, VendorPlace::Connectivity), expected.strConnectivity) << expected.szWhat;
    }
}

// Putting new texts

struct Putting
{
    const char* szWhat;
    const char* szBefore;
    VendorPlace place;
    const char* szAfter;
};

const Putting puttings[] = {
    {"replaced", "<W>\n <!-- & --><IHV><security>\n<CCX a='/>'><b>x</b></CCX> <!-- --></security></IHV></W>\n",
     VendorPlace::Security, "<W>\n <!-- & --><IHV><security>\n<CCX/> <!-- --></security></IHV></W>\n"},
    {"no IHV", "<?xml version=\"1.0\"?>\n<W xmlns=\"n\">\n\t<name>&#252;</name>\n\t<MSM>\n\t</MSM>\n</W>\n",
     VendorPlace::Security,
     "<?xml version=\"1.0\"?>\n<W xmlns=\"n\">\n\t<name>&#252;</name>\n\t<MSM>\n\t</MSM>\n\t<IHV>\n\t\t<OUIHeader>\n"
     "\t\t\t<OUI>024b4f</OUI>\n\t\t\t<type>00</type>\n\t\t</OUIHeader>\n\t\t<security>\n\t\t\t<CCX/>\n\t\t</"
     "security>\n\t</IHV>\n</W>\n"},
    {"before later additions", "<W>\n  <MSM/>\n  <Mac/>\n</W>", VendorPlace::Connectivity,
     "<W>\n  <MSM/>\n  <IHV>\n    <OUIHeader>\n      <OUI>024b4f</OUI>\n      <type>00</type>\n    </OUIHeader>\n"
     "    <connectivity>\n      <CCX/>\n    </connectivity>\n  </IHV>\n  <Mac/>\n</W>"},
    {"no MSM", "<W><name/><SSIDConfig/></W>", VendorPlace::Security,
     "<W><name/><SSIDConfig/><IHV><OUIHeader><OUI>024b4f</OUI><type>00</type></OUIHeader><security><CCX/></security></"
     "IHV></W>"},
    {"one line", "<W><MSM/></W>", VendorPlace::Security,
     "<W><MSM/><IHV><OUIHeader><OUI>024b4f</OUI><type>00</type></OUIHeader><security><CCX/></security></IHV></W>"},
    {"prefixed", "<p:W xmlns:p='n'><p:MSM/></p:W>", VendorPlace::Security,
     "<p:W xmlns:p='n'><p:MSM/><p:IHV><p:OUIHeader><p:OUI>024b4f</p:OUI><p:type>00</p:type></p:OUIHeader>"
     "<p:security><CCX/></p:security></p:IHV></p:W>"},
    {"an empty root", "<W/>", VendorPlace::Security,
     "<W><IHV><OUIHeader><OUI>024b4f</OUI><type>00</type></OUIHeader><security><CCX/></security></IHV></W>"},
    {"connectivity before security", "<W>\n <IHV>\n  <OUIHeader/>\n  <security/>\n </IHV>\n</W>", VendorPlace::Connectivity,
     "<W>\n <IHV>\n  <OUIHeader/>\n  <connectivity>\n   <CCX/>\n  </connectivity>\n  <security/>\n </IHV>\n</W>"},
    {"security before useMSOneX", "<W>\n <IHV>\n  <OUIHeader/>\n  <connectivity/>\n  <useMSOneX/>\n </IHV>\n</W>",
     VendorPlace::Security,
     "<W>\n <IHV>\n  <OUIHeader/>\n  <connectivity/>\n  <security>\n   <CCX/>\n  </security>\n  <useMSOneX/>\n "
     "</IHV>\n</W>"},
    {"an empty tag", "<W>\n <IHV>\n  <OUIHeader/>\n  <security />\n </IHV>\n</W>", VendorPlace::Security,
     "<W>\n <IHV>\n  <OUIHeader/>\n  <security >\n   <CCX/>\n  </security>\n </IHV>\n</W>"},
    {"an empty element", "<W>\n <IHV>\n  <OUIHeader/>\n  <security></security>\n </IHV>\n</W>", VendorPlace::Security,
     "<W>\n <IHV>\n  <OUIHeader/>\n  <security>\n   <CCX/>\n  </security>\n </IHV>\n</W>"},
    {"white space alone", "<W>\n <IHV>\n  <OUIHeader/>\n  <security>\n  </security>\n </IHV>\n</W>", VendorPlace::Security,
     "<W>\n <IHV>\n  <OUIHeader/>\n  <security>\n   <CCX/>\n  </security>\n </IHV>\n</W>"},
    {"no header", "<W>\n <IHV>\n </IHV>\n</W>", VendorPlace::Security,
     "<W>\n <IHV>\n  <OUIHeader>\n   <OUI>024b4f</OUI>\n   <type>00</type>\n  </OUIHeader>\n  <security>\n   <CCX/>\n"
     "  </security>\n </IHV>\n</W>"},
    {"an IHV in a comment", "<W>\n <MSM/><!-- <IHV/> -->\n</W>", VendorPlace::Security,
     "<W>\n <MSM/>\n <IHV>\n  <OUIHeader>\n   <OUI>024b4f</OUI>\n   <type>00</type>\n  </OUIHeader>\n  <security>\n   "
     "<CCX/>\n"
     "  </security>\n </IHV><!-- <IHV/> -->\n</W>"},
};

TEST(WithVendorTextTest, ChangesNothingElse)
{
    for (const Putting& expected : puttings)
    {
        SCOPED_TRACE(expected.szWhat);
        EXPECT_EQ(Put(expected.szBefore, expected.place, "<CCX/>"), expected.szAfter);
        EXPECT_EQ(Put(WithLineEnds(expected.szBefore, "\r\n"), expected.place, "<CCX/>"), WithLineEnds(expected.szAfter, "\r\n"));
        EXPECT_EQ(Read(expected.szAfter, expected.place), "<CCX/>");
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
    EXPECT_EQ(ReasonFor([] { Put("<W><IHV><security><Other/></security></IHV></W>", VendorPlace::Security, "<CCX/>"); }),
              "the IHV element belongs to another vendor: security holds Other");
}

// Keys

TEST(DifferenceTest, ShowsNoKey)
{
    const CWideString strBefore =
        WideOf("<W>\n<sharedKey a='secret'>\n<keyType>secret</keyType><keyMaterial>secret</keyMaterial>\n"
               "<![CDATA[secret]]><!--secret--></sharedKey>\n<p:keyMaterial>secret</p:keyMaterial>\n<x>1</x>\n</W>\n");
    EXPECT_EQ(Utf8Of(WithoutKeys(strBefore)),
              "<W>\n<sharedKey>\n<keyType>********</keyType><keyMaterial>********</keyMaterial>\n"
              "****************</sharedKey>\n<p:keyMaterial>********</p:keyMaterial>\n<x>1</x>\n</W>\n");
    CWideString strAfter = strBefore;
    strAfter.replace(strAfter.find(OLESTR('1')), 1, OLESTR("2"));
    const std::string strDifference = ChangeReport("a", strBefore, "b", strAfter);
    EXPECT_EQ(strDifference, "--- a\n+++ b\n@@ -3,5 +3,5 @@\n <keyType>********</keyType><keyMaterial>********</keyMaterial>\n "
                             "****************</sharedKey>\n <p:keyMaterial>********</p:keyMaterial>\n"
                             "-<x>1</x>\n+<x>2</x>\n </W>\n");
}

TEST(DifferenceTest, SaysWhereNothingShows)
{
    EXPECT_EQ(ChangeReport("a", WideOf("<W/>\n"), "b", WideOf("<W/>\n")), "a: nothing changed\n");
    EXPECT_EQ(ChangeReport("a", WideOf("<sharedKey>1</sharedKey>"), "b", WideOf("<sharedKey>2</sharedKey>")),
              "a: only what is not shown changed\n");
}
} // namespace
