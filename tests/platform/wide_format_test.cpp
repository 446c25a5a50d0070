// What the product relies on from the wide C run-time: formatting into bounded buffers, and narrowing.
#include <windows.h>

#include <stdio.h>
#include <stdlib.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace
{
using Text = std::basic_string<WCHAR>;
using TextView = std::basic_string_view<WCHAR>;

constexpr WCHAR untouched = 0x2603;

struct FormatCase
{
    const char* name;
    std::function<int(WCHAR*, std::size_t)> format;
    TextView expected;
};

void PrintTo(const FormatCase& row, std::ostream* pStream)
{
    *pStream << row.name;
}

template <class... Arguments>
std::function<int(WCHAR*, std::size_t)> Format(const WCHAR* szFormat, Arguments... arguments)
{
    return [=](WCHAR* szBuffer, std::size_t cchBuffer) { return _snwprintf(szBuffer, cchBuffer, szFormat, arguments...); };
}

const WCHAR* const szNoText = nullptr;
const char* const szNoNarrowText = nullptr;

const FormatCase formatCases[] = {
    {"literal_percent", Format(OLESTR("100%%")), OLESTR("100%")},
    {"wide_text", Format(OLESTR("<%s>"), OLESTR("\u00fcber \u4f60")), OLESTR("<\u00fcber \u4f60>")},
    {"null_text", Format(OLESTR("<%s>"), szNoText), OLESTR("<(null)>")},
    {"null_text_cut_by_precision", Format(OLESTR("<%.3s>"), szNoText), OLESTR("<(nu>")},
    {"narrow_text", Format(OLESTR("<%S>"), "abc"), OLESTR("<abc>")},
    {"narrow_text_by_size", Format(OLESTR("<%hs>"), "abc"), OLESTR("<abc>")},
    {"wide_text_by_size", Format(OLESTR("<%ls>"), OLESTR("abc")), OLESTR("<abc>")},
    {"null_narrow_text", Format(OLESTR("<%S>"), szNoNarrowText), OLESTR("<(null)>")},
    {"text_right_in_width", Format(OLESTR("<%5s>"), OLESTR("abc")), OLESTR("<  abc>")},
    {"text_left_in_width", Format(OLESTR("<%-5s>"), OLESTR("abc")), OLESTR("<abc  >")},
    {"width_and_precision_given", Format(OLESTR("<%*.*s>"), 4, 2, OLESTR("abc")), OLESTR("<  ab>")},
    {"negative_width_means_left", Format(OLESTR("<%*s>"), -4, OLESTR("ab")), OLESTR("<ab  >")},
    {"negative_precision_means_none", Format(OLESTR("<%.*s>"), -1, OLESTR("abc")), OLESTR("<abc>")},
    {"character", Format(OLESTR("<%c%3c>"), 'x', 'y'), OLESTR("<x  y>")},
    {"smallest_number", Format(OLESTR("%d"), INT32_MIN), OLESTR("-2147483648")},
    {"zero_filled_number", Format(OLESTR("%03d|%03d"), 7, -7), OLESTR("007|-07")},
    {"left_beats_zeros", Format(OLESTR("<%-04d>"), 7), OLESTR("<7   >")},
    {"signs_asked_for", Format(OLESTR("%+d|% d|%+d"), 7, 7, -7), OLESTR("+7| 7|-7")},
    {"digits_asked_for", Format(OLESTR("<%6.3d>"), 7), OLESTR("<   007>")},
    {"no_digit_of_zero", Format(OLESTR("<%.0d>"), 0), OLESTR("<>")},
    {"unsigned_number", Format(OLESTR("%u"), 0xFFFFFFFFu), OLESTR("4294967295")},
    {"thread_column", Format(OLESTR("[%8X]"), 0xA3Cu), OLESTR("[     A3C]")},
    {"hexadecimal_with_prefix", Format(OLESTR("%#x|%#X|%#x"), 0xABu, 0xABu, 0u), OLESTR("0xab|0XAB|0")},
    {"long_has_32_bits", Format(OLESTR("%ld|%lX"), LONG{-1}, ULONG{0xFFFFFFFF}), OLESTR("-1|FFFFFFFF")},
    {"short_has_16_bits", Format(OLESTR("%hd|%hu"), 0x1FFFF, 0x1FFFF), OLESTR("-1|65535")},
    {"wide_number", Format(OLESTR("%I64d|%llX"), INT64_MIN, UINT64_MAX), OLESTR("-9223372036854775808|FFFFFFFFFFFFFFFF")},
    {"pointer_has_all_digits", Format(OLESTR("%p"), reinterpret_cast<void*>(std::uintptr_t{0xBEEF})),
     sizeof(void*) == 8 ? TextView(OLESTR("000000000000BEEF")) : TextView(OLESTR("0000BEEF"))},
};

class WideFormat : public testing::TestWithParam<FormatCase>
{
};

TEST_P(WideFormat, GivesThePlatformsText)
{
    std::vector<WCHAR> buffer(100, untouched);
    const int cchText = GetParam().format(buffer.data(), buffer.size());
    ASSERT_EQ(cchText, static_cast<int>(GetParam().expected.size()));
    EXPECT_TRUE(TextView(buffer.data()) == GetParam().expected);
}

// The last character that fits, the terminator that does not, and the cut.
TEST_P(WideFormat, StopsAtTheEndOfTheBuffer)
{
    const TextView expected = GetParam().expected;
    for (std::size_t cchBuffer = 1; cchBuffer <= expected.size() + 1; ++cchBuffer)
    {
        std::vector<WCHAR> buffer(expected.size() + 2, untouched);
        const int cchText = GetParam().format(buffer.data(), cchBuffer);
        EXPECT_EQ(cchText, cchBuffer < expected.size() ? -1 : static_cast<int>(expected.size())) << cchBuffer;
        const auto cchKept = std::min(cchBuffer, expected.size());
        EXPECT_TRUE(TextView(buffer.data(), cchKept) == expected.substr(0, cchKept)) << cchBuffer;
        EXPECT_EQ(buffer[cchKept], cchBuffer > expected.size() ? WCHAR{0} : untouched) << cchBuffer;
    }
}

INSTANTIATE_TEST_SUITE_P(Table, WideFormat, testing::ValuesIn(formatCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(WideFormatPrecision, ReadsNoFurtherThanAsked)
{
    const WCHAR unterminated[] = {OLESTR('a'), OLESTR('b')};
    WCHAR buffer[8] = {};
    EXPECT_EQ(_snwprintf(buffer, 8, OLESTR("%.2s"), unterminated), 2);
    EXPECT_TRUE(TextView(buffer) == OLESTR("ab"));
}

TEST(Narrowing, GivesOneByteForEachOfTheFirst256Characters)
{
    char narrow[8];
    std::memset(narrow, '#', sizeof narrow);
    EXPECT_EQ(wcstombs(narrow, OLESTR("a\u00e9\u00ff"), sizeof narrow), 3u);
    EXPECT_STREQ(narrow, "a\xE9\xFF");
}

TEST(Narrowing, RefusesWhatTheDefaultLocaleLacks)
{
    char narrow[8];
    errno = 0;
    EXPECT_EQ(wcstombs(narrow, OLESTR("a\u20acb"), sizeof narrow), static_cast<std::size_t>(-1));
    EXPECT_EQ(errno, EILSEQ);
}

TEST(Narrowing, TerminatesOnlyWhereThereIsRoom)
{
    char narrow[4] = {'#', '#', '#', '#'};
    EXPECT_EQ(wcstombs(narrow, OLESTR("abcdef"), 3), 3u);
    EXPECT_EQ(std::string_view(narrow, 4), "abc#");
}

TEST(Narrowing, TellsTheLengthWithoutABuffer)
{
    EXPECT_EQ(wcstombs(nullptr, OLESTR("abc"), 0), 3u);
}
} // namespace
