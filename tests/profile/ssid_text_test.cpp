// The two text forms of an SSID.
#include "profile/SsidText.h"
#include "tests/support/XmlVerbs.h"
#include "values/WideText.h"

#include <optional>

namespace
{
constexpr LONG untouchedLength = 77;

struct SsidCase
{
    const char* name;
    decltype(&HexToSsid) convert;
    CWideString text;
    std::optional<std::string> bytes; // none: the text does not convert
};

class SsidText : public testing::TestWithParam<SsidCase>
{
};

TEST_P(SsidText, Converts)
{
    const auto& param = GetParam();
    BYTE rgbSsid[maxSsidLength] = {};
    LONG lLength = untouchedLength;
    EXPECT_EQ(param.bytes.has_value(), param.convert(param.text.c_str(), rgbSsid, &lLength));
    if (!param.bytes)
        EXPECT_EQ(untouchedLength, lLength);
    else
        EXPECT_EQ(*param.bytes, std::string(rgbSsid, rgbSsid + lLength));
}

CWideString Repeated(std::size_t nCount, WCHAR ch)
{
    return CWideString(nCount, ch);
}

const SsidCase ssidCases[] = {
    {"hex_empty", HexToSsid, {}, ""},
    {"hex_digits_in_both_cases", HexToSsid, OLESTR("00aAfF9b"), std::string("\x00\xAA\xFF\x9B", 4)},
    {"hex_every_digit", HexToSsid, OLESTR("0123456789abcdefABCDEF"), "\x01\x23\x45\x67\x89\xAB\xCD\xEF\xAB\xCD\xEF"},
    {"hex_32_bytes", HexToSsid, Repeated(64, OLESTR('1')), std::string(32, '\x11')},
    {"hex_33_bytes", HexToSsid, Repeated(66, OLESTR('1')), {}},
    {"hex_63_digits", HexToSsid, Repeated(63, OLESTR('1')), {}},
    {"hex_one_digit", HexToSsid, OLESTR("4"), {}},
    {"hex_blank_inside", HexToSsid, OLESTR("41 4"), {}},
    {"hex_sign", HexToSsid, OLESTR("+441"), {}},
    {"hex_prefix", HexToSsid, OLESTR("0x41"), {}},
    {"hex_letter_beyond_f", HexToSsid, OLESTR("4g"), {}},
    {"hex_wide_digit", HexToSsid, OLESTR("\uFF14\uFF11"), {}},
    {"name_empty", NameToSsid, {}, ""},
    {"name_of_the_channel", NameToSsid, OLESTR("Diagnostic Channel"), "Diagnostic Channel"},
    {"name_first_and_last_printable", NameToSsid, OLESTR(" ~"), " ~"},
    {"name_of_blanks", NameToSsid, OLESTR("   "), "   "},
    {"name_of_32", NameToSsid, Repeated(32, OLESTR('n')), std::string(32, 'n')},
    {"name_of_33", NameToSsid, Repeated(33, OLESTR('n')), {}},
    {"name_with_tab", NameToSsid, OLESTR("a\tb"), {}},
    {"name_with_delete", NameToSsid, OLESTR("a\x7F"), {}},
    {"name_with_umlaut", NameToSsid, OLESTR("B\u00FCro"), {}},
    {"name_whose_low_bytes_are_printable", NameToSsid, OLESTR("\u0141\u0142"), {}},
};
INSTANTIATE_TEST_SUITE_P(Texts, SsidText, testing::ValuesIn(ssidCases), tests::xml::CaseName<SsidCase>);

TEST(SsidTextFailure, KeepsTheBytesBeforeTheFailingCharacter)
{
    BYTE rgbSsid[maxSsidLength] = {};
    LONG lLength = untouchedLength;
    EXPECT_FALSE(HexToSsid(OLESTR("4142zz"), rgbSsid, &lLength));
    EXPECT_EQ("AB", std::string(rgbSsid, rgbSsid + 2));
    EXPECT_FALSE(NameToSsid(OLESTR("xy\t"), rgbSsid, &lLength));
    EXPECT_EQ("xy", std::string(rgbSsid, rgbSsid + 2));
}
} // namespace
