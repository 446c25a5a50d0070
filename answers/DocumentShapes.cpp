#include "answers/DocumentShapes.h"

#include <array>

namespace answers
{
namespace
{
using Text = const WCHAR* const;

constexpr Text flags[] = {OLESTR("true"), OLESTR("false"), OLESTR("TRUE"), OLESTR("1"), OLESTR(""), OLESTR("yes")};
constexpr Text numbers[] = {OLESTR("0"),
                            OLESTR("1"),
                            OLESTR("10"),
                            OLESTR("50"),
                            OLESTR("51"),
                            OLESTR("255"),
                            OLESTR("256"),
                            OLESTR("400"),
                            OLESTR("500"),
                            OLESTR("-1"),
                            OLESTR("+7"),
                            OLESTR("0x10"),
                            OLESTR("007"),
                            OLESTR("3.9"),
                            OLESTR("12abc"),
                            OLESTR("2147483647"),
                            OLESTR("2147483648"),
                            OLESTR("4294967295"),
                            OLESTR("99999999999999999999"),
                            OLESTR("-2147483649"),
                            OLESTR("x"),
                            OLESTR(""),
                            OLESTR("\u0663")};
constexpr Text ciphers[] = {OLESTR("WEP"),      OLESTR("TKIP"), OLESTR("AES"), OLESTR("aes"),
                            OLESTR("AES-TKIP"), OLESTR("none"), OLESTR("")};
constexpr Text hexTexts[] = {OLESTR("446961676E"),
                             OLESTR("44696167"),
                             OLESTR("abc"),
                             OLESTR("0G"),
                             OLESTR(""),
                             OLESTR("000102030405060708090a0b0c0d0e0f101112131415161718191a1b1c1d1e1f"),
                             OLESTR("000102030405060708090a0b0c0d0e0f101112131415161718191a1b1c1d1e1f20")};
constexpr Text names[] = {OLESTR("Diagnostic Channel"),
                          OLESTR("Caf\u00E9"),
                          OLESTR("a"),
                          OLESTR(""),
                          OLESTR("tab\there"),
                          OLESTR("thirty-two characters, no more!!"),
                          OLESTR("thirty-three characters, too many")};
constexpr Text networks[] = {OLESTR("Office"), OLESTR("B\u00FCro & Lager"), OLESTR("\u7DB2\u8DEF"), OLESTR("\U0001F4F6 Home"),
                             OLESTR("")};
constexpr Text phyTypes[] = {OLESTR("a"), OLESTR("b"), OLESTR("g"), OLESTR("n"), OLESTR("ac"), OLESTR("A"), OLESTR("")};
constexpr Text words[] = {OLESTR("ESS"), OLESTR("auto"), OLESTR("manual"), OLESTR("WPA2PSK")};

constexpr ShapeRow security[] = {
    {0, OLESTR("CCX")},  {1, OLESTR("authenticatingNetwork")}, {2, OLESTR("cckm")}, {3, OLESTR("encryption"), ciphers},
    {2, OLESTR("open")}, {3, OLESTR("encryption"), ciphers},
};

constexpr ShapeRow connection[] = {
    {0, OLESTR("CCX")},
    {1, OLESTR("RadioMeasurement")},
    {2, OLESTR("disabled")},
    {2, OLESTR("enabled")},
    {3, OLESTR("disableLocationBasedServices")},
    {3, OLESTR("MaxOffChannelTimeMs"), numbers},
    {3, OLESTR("MinOnChannelTimeMs"), numbers},
    {1, OLESTR("Rapido"), flags},
    {1, OLESTR("AdvancedRoaming")},
    {2, OLESTR("disabled")},
    {2, OLESTR("enabled")},
    {3, OLESTR("RoamingOption"), numbers},
    {1, OLESTR("KeepAliveTimer")},
    {2, OLESTR("Period"), numbers},
    {1, OLESTR("Diagnostics")},
    {2, OLESTR("AuthorizedProfile"), flags},
    {2, OLESTR("Channel")},
    {3, OLESTR("SSID")},
    {4, OLESTR("Hex"), hexTexts},
    {4, OLESTR("Name"), names},
    {3, OLESTR("EnableClientReporting"), flags},
};

constexpr ShapeRow wireless[] = {
    {0, OLESTR("WLANProfile")},
    {1, OLESTR("name"), networks},
    {1, OLESTR("SSIDConfig")},
    {2, OLESTR("SSID")},
    {3, OLESTR("name"), networks},
    {1, OLESTR("connectionType"), words},
    {1, OLESTR("connectionMode"), words},
    {1, OLESTR("MSM")},
    {2, OLESTR("connectivity")},
    {3, OLESTR("phyType"), phyTypes},
    {3, OLESTR("phyType"), phyTypes},
    {3, OLESTR("phyType"), phyTypes},
    {2, OLESTR("security")},
    {3, OLESTR("authEncryption")},
    {4, OLESTR("authentication"), words},
    {3, OLESTR("sharedKey")},
    {4, OLESTR("keyMaterial"), names},
};

constexpr Text wrongNames[] = {OLESTR("ccx"),          OLESTR("enabled"),    OLESTR("disabled"), OLESTR("x"),
                               OLESTR("connectivity"), OLESTR("phyType"),    OLESTR("MSM"),      OLESTR("CCX"),
                               OLESTR("cckm"),         OLESTR("encryption"), OLESTR("v:CCX"),    OLESTR("\u00E9t\u00E9"),
                               OLESTR("a.b-c_d"),      OLESTR("SSID")};
constexpr Text interludes[] = {OLESTR(" "),
                               OLESTR("\n"),
                               OLESTR("\r\n\t"),
                               OLESTR("<!-- a remark -->"),
                               OLESTR("<?target data?>"),
                               OLESTR("<other/>"),
                               OLESTR("<other>text<inner/></other>"),
                               OLESTR("stray text"),
                               OLESTR("&#32;"),
                               OLESTR("<![CDATA[ ]]>"),
                               OLESTR("<!---->"),
                               OLESTR("<other xmlns=\"\"/>")};
constexpr Text attributes[] = {OLESTR(" a=\"1\""),
                               OLESTR(" a='&lt;&quot;'"),
                               OLESTR(" xmlns=\"http://www.korvane.com/CCX\""),
                               OLESTR(" xmlns=\"\""),
                               OLESTR(" xmlns:v=\"urn:v\""),
                               OLESTR(" v:a=\"1\""),
                               OLESTR(" xml:space=\"preserve\""),
                               OLESTR(" xml:lang='de'"),
                               OLESTR(" a=\"1\" a=\"2\""),
                               OLESTR(" a=1"),
                               OLESTR(" xmlns=\"http://www.microsoft.com/networking/WLAN/profile/v1\""),
                               OLESTR("  "),
                               OLESTR("\n")};
constexpr Text textMixtures[] = {
    OLESTR(" "),     OLESTR("\t\r\n"), OLESTR("<!-- x -->"), OLESTR("<![CDATA[1]]>"), OLESTR("<![CDATA[]]>"),
    OLESTR("&amp;"), OLESTR("&#49;"),  OLESTR("&#x41;"),     OLESTR("&lt;b&gt;"),     OLESTR("<b/>"),
    OLESTR("<?p?>"), OLESTR("\u00A0"), OLESTR("&#xD;"),      OLESTR("\"'>")};
constexpr Text prologues[] = {OLESTR("<?xml version=\"1.0\"?>"),
                              OLESTR("<?xml version='1.0' encoding='UTF-8'?>\r\n"),
                              OLESTR("<?xml version=\"1.0\" encoding=\"utf-16\" standalone=\"yes\"?>"),
                              OLESTR("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n"),
                              OLESTR("<?xml version=\"1.0\" encoding=\"US-ASCII\"?>"),
                              OLESTR("<?xml version=\"1.1\"?>"),
                              OLESTR("<?xml encoding=\"UTF-8\"?>"),
                              OLESTR("\uFEFF"),
                              OLESTR(" \n"),
                              OLESTR("<!-- before -->"),
                              OLESTR("<?xml version=\"1.0\" encoding=\"no-such\"?>"),
                              OLESTR("<!DOCTYPE CCX [<!ENTITY e \"x\">]>"),
                              OLESTR("<!DOCTYPE CCX>"),
                              OLESTR("x")};
constexpr Text splinters[] = {OLESTR("<"),         OLESTR(">"),        OLESTR("&"),          OLESTR("&e;"),
                              OLESTR("&#0;"),      OLESTR("&#xFFFF;"), OLESTR("&#x110000;"), OLESTR("]]>"),
                              OLESTR("<![CDATA["), OLESTR("<!--"),     OLESTR("--"),         OLESTR("-->"),
                              OLESTR("<?"),        OLESTR("?>"),       OLESTR("</CCX>"),     OLESTR("<CCX>"),
                              OLESTR("/"),         OLESTR("\""),       OLESTR("'"),          OLESTR("="),
                              OLESTR("\x0001"),    OLESTR("\x001F"),   OLESTR("\xFFFE"),     OLESTR("\xD83D"),
                              OLESTR("\xDE00"),    OLESTR("\x000B"),   OLESTR("\x0085"),     OLESTR("\u2028"),
                              OLESTR(":"),         OLESTR("<a:b/>"),   OLESTR("<1/>"),       OLESTR("<!DOCTYPE x>"),
                              OLESTR("%e;")};
} // namespace

std::span<const ShapeRow> ShapeOf(DocumentKind kind)
{
    switch (kind)
    {
    case DocumentKind::Security:
        return security;
    case DocumentKind::Connection:
        return connection;
    case DocumentKind::Wireless:
        break;
    }
    return wireless;
}

std::span<Text> WrongNames()
{
    return wrongNames;
}
std::span<Text> Interludes()
{
    return interludes;
}
std::span<Text> Attributes()
{
    return attributes;
}
std::span<Text> TextMixtures()
{
    return textMixtures;
}
std::span<Text> Prologues()
{
    return prologues;
}
std::span<Text> Splinters()
{
    return splinters;
}
} // namespace answers
