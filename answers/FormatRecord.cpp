#include "answers/Subjects.h"
#include "answers/TextConversion.h"
#include "answers/Wording.h"

#include <algorithm>
#include <cstdarg>

namespace answers
{
namespace
{
constexpr std::size_t cchRoom = 600;
constexpr WCHAR filler = OLESTR('#');

// The result and what became of the buffer, up to the last unit that was written.
std::string ShownOutcome(int nResult, const WCHAR* szBuffer)
{
    const WCHAR* pEnd = szBuffer + cchRoom;
    while (pEnd != szBuffer && pEnd[-1] == filler)
        --pEnd;
    return std::to_string(nResult) + ' ' + Shown(CWideView(szBuffer, static_cast<std::size_t>(pEnd - szBuffer)));
}

template <class... Arguments>
std::string Formatted(std::size_t cchBuffer, const WCHAR* szFormat, Arguments... arguments)
{
    WCHAR szBuffer[cchRoom];
    std::ranges::fill(szBuffer, filler);
    const int nResult = _snwprintf(szBuffer, cchBuffer, szFormat, arguments...);
    return ShownOutcome(nResult, szBuffer);
}

// As functions with variable arguments of their own do it.
std::string FormattedByList(std::size_t cchBuffer, const WCHAR* szFormat, ...)
{
    WCHAR szBuffer[cchRoom];
    std::ranges::fill(szBuffer, filler);
    va_list arguments;
    va_start(arguments, szFormat);
    const int nResult = _vsnwprintf(szBuffer, cchBuffer, szFormat, arguments);
    va_end(arguments);
    return ShownOutcome(nResult, szBuffer);
}

constexpr const WCHAR* numberFormats[] = {
    OLESTR("%d"),      OLESTR("%i"),     OLESTR("%u"),     OLESTR("%o"),     OLESTR("%x"),       OLESTR("%X"),
    OLESTR("%ld"),     OLESTR("%lu"),    OLESTR("%lx"),    OLESTR("%lX"),    OLESTR("%hd"),      OLESTR("%hu"),
    OLESTR("%hx"),     OLESTR("%hho"),   OLESTR("%I32d"),  OLESTR("%I32x"),  OLESTR("%5d|"),     OLESTR("%-5d|"),
    OLESTR("%05d|"),   OLESTR("%-05d|"), OLESTR("%+d"),    OLESTR("% d"),    OLESTR("%+ d"),     OLESTR("% +d"),
    OLESTR("%+u"),     OLESTR("% x"),    OLESTR("%+05d|"), OLESTR("% 05d|"), OLESTR("%.0d|"),    OLESTR("%.d|"),
    OLESTR("%.1d"),    OLESTR("%.3d"),   OLESTR("%.12d"),  OLESTR("%8.3d|"), OLESTR("%-8.3d|"),  OLESTR("%08.3d|"),
    OLESTR("%+8.3d|"), OLESTR("%#x"),    OLESTR("%#X"),    OLESTR("%#o"),    OLESTR("%#d"),      OLESTR("%#.0x|"),
    OLESTR("%#.0o|"),  OLESTR("%#8x|"),  OLESTR("%#08x|"), OLESTR("%#-8x|"), OLESTR("%#.6x"),    OLESTR("%#.6o"),
    OLESTR("%08X"),    OLESTR("%8X|"),   OLESTR("%02d"),   OLESTR("%03d"),   OLESTR("%2d|"),     OLESTR("%300d|"),
    OLESTR("%.20u"),   OLESTR("%xh"),    OLESTR("(%Xh) "), OLESTR("a%db"),   OLESTR("%d%%"),     OLESTR("%D"),
    OLESTR("%y"),      OLESTR("%'d"),    OLESTR("%1$d"),   OLESTR("%--5d|"), OLESTR("%+-5d|"),   OLESTR("%0-5d|"),
    OLESTR("%wd"),     OLESTR("%Ld"),    OLESTR("%c"),     OLESTR("%.-3d|"), OLESTR("%00005d|"), OLESTR("%5.d|"),
};
constexpr int numbers[] = {0, 1, -1, 7, 42, -42, 255, 256, 1000, 0x8000, 0xFFFF, 123456, 0x7FFFFFFF, -0x7FFFFFFF - 1};

constexpr const WCHAR* wideNumberFormats[] = {
    OLESTR("%I64d"),    OLESTR("%I64u"),     OLESTR("%I64x"),    OLESTR("%I64X"),  OLESTR("%I64o"),
    OLESTR("%lld"),     OLESTR("%llu"),      OLESTR("%llx"),     OLESTR("%Id"),    OLESTR("%Iu"),
    OLESTR("%IX"),      OLESTR("%020I64d|"), OLESTR("%-25lld|"), OLESTR("%#I64x"), OLESTR("%+I64d"),
    OLESTR("%.19I64d"), OLESTR("%25I64u|"),  OLESTR("%d"),       OLESTR("%x"),     OLESTR("%ld"),
    OLESTR("%hd"),      OLESTR("%zu"),       OLESTR("%zd"),      OLESTR("%jd"),    OLESTR("%td"),
};
constexpr long long wideNumbers[] = {
    0, 1, -1, 0x80000000LL, 0xFFFFFFFFLL, 0x100000000LL, 0x123456789ABCDEFLL, 0x7FFFFFFFFFFFFFFFLL, -0x7FFFFFFFFFFFFFFFLL - 1,
};

constexpr const WCHAR* textFormats[] = {
    OLESTR("%s"),        OLESTR("%ls"),       OLESTR("%ws"),   OLESTR("%10s|"),  OLESTR("%-10s|"), OLESTR("%010s|"),
    OLESTR("%.0s|"),     OLESTR("%.s|"),      OLESTR("%.1s|"), OLESTR("%.3s|"),  OLESTR("%.20s|"), OLESTR("%10.3s|"),
    OLESTR("%-10.3s|"),  OLESTR("%010.3s|"),  OLESTR("%+s"),   OLESTR("%#s"),    OLESTR("% s"),    OLESTR("%lS"),
    OLESTR("%sLog.txt"), OLESTR("%s\\Debug"), OLESTR("%s: "),  OLESTR("<%s>%%"),
};
constexpr const WCHAR* texts[] = {
    nullptr,
    OLESTR(""),
    OLESTR("a"),
    OLESTR("abc"),
    OLESTR("abcdefghijkl"),
    OLESTR("\u00E4\u20AC\u4E2D"),
    OLESTR("%s%d"),
    OLESTR("line\r\n\ttab"),
    OLESTR("\U0001F600"),
};
constexpr const WCHAR* narrowFormats[] = {
    OLESTR("%S"),      OLESTR("%hs"),   OLESTR("%hS"),     OLESTR("%10S|"),
    OLESTR("%-10hs|"), OLESTR("%.2S|"), OLESTR("%010hs|"), OLESTR("%.0S|"),
};
constexpr const char* narrowTexts[] = {nullptr, "", "a", "abc", "abcdefghijkl", "%s"};

constexpr const WCHAR* characterFormats[] = {
    OLESTR("%c|"),   OLESTR("%C|"),   OLESTR("%lc|"),  OLESTR("%wc|"),  OLESTR("%hc|"), OLESTR("%hC|"), OLESTR("%5c|"),
    OLESTR("%-5c|"), OLESTR("%05c|"), OLESTR("%.0c|"), OLESTR("%.3c|"), OLESTR("%5C|"), OLESTR("%+c|"), OLESTR("%#c|"),
};
constexpr int characters[] = {'A', ' ', '%', '\n', 0};
constexpr int wideCharacters[] = {0xE4, 0x20AC, 0x10041};

constexpr const WCHAR* pointerFormats[] = {
    OLESTR("%p"),   OLESTR("%20p|"), OLESTR("%-20p|"), OLESTR("%020p|"),       OLESTR("%#p"),
    OLESTR("%.3p"), OLESTR("%.20p"), OLESTR("%+p"),    OLESTR("hkey = %p \n"),
};
constexpr std::uintptr_t pointers[] = {0, 0x1234, 0xABCDEF12, 0xFEDCBA9876543210};

// Formats that take nothing.
constexpr const WCHAR* bareFormats[] = {
    OLESTR(""),
    OLESTR("text"),
    OLESTR("%%"),
    OLESTR("a%%b"),
    OLESTR("%5%|"),
    OLESTR("%-5%|"),
    OLESTR("%05%|"),
    OLESTR("%"),
    OLESTR("a%"),
    OLESTR("%5"),
    OLESTR("%-"),
    OLESTR("%."),
    OLESTR("%l"),
    OLESTR("%I"),
    OLESTR("%I64"),
    OLESTR("%q"),
    OLESTR("%k|"),
    OLESTR("%!"),
    OLESTR("% "),
    OLESTR("%\\"),
    OLESTR("%5q|"),
    OLESTR("%%%"),
    OLESTR("\u00E4%%\u20AC"),
};

template <class Formats, class Values, class Show>
void RecordEach(CRecord& record, const Formats& formats, const Values& values, Show&& show)
{
    for (const WCHAR* const szFormat : formats)
    {
        for (const auto value : values)
            record.Add(Quoted(szFormat) + " of " + show(value), Formatted(cchRoom, szFormat, value));
    }
}

// A width, a precision or both that come with the arguments.
void RecordStars(CRecord& record)
{
    for (const int nWidth : {0, 1, 5, -5, 12})
    {
        const std::string width = " with " + std::to_string(nWidth);
        record.Add("\"%*d|\"" + width, Formatted(cchRoom, OLESTR("%*d|"), nWidth, 42));
        record.Add("\"%0*d|\"" + width, Formatted(cchRoom, OLESTR("%0*d|"), nWidth, 42));
        record.Add("\"%-*d|\"" + width, Formatted(cchRoom, OLESTR("%-*d|"), nWidth, 42));
        record.Add("\"%.*d|\"" + width, Formatted(cchRoom, OLESTR("%.*d|"), nWidth, 42));
        record.Add("\"%*s|\"" + width, Formatted(cchRoom, OLESTR("%*s|"), nWidth, OLESTR("abc")));
        record.Add("\"%.*s|\"" + width, Formatted(cchRoom, OLESTR("%.*s|"), nWidth, OLESTR("abc")));
        record.Add("\"%8.*s|\"" + width, Formatted(cchRoom, OLESTR("%8.*s|"), nWidth, OLESTR("abc")));
        for (const int nPrecision : {0, 2, -2})
            record.Add("\"%*.*s|\"" + width + " and " + std::to_string(nPrecision),
                       Formatted(cchRoom, OLESTR("%*.*s|"), nWidth, nPrecision, OLESTR("abc")));
    }
}

void RecordSizes(CRecord& record)
{
    for (std::size_t cchBuffer = 0; cchBuffer < 16; ++cchBuffer)
    {
        const std::string room = " with room for " + std::to_string(cchBuffer);
        record.Add("\"abc\"" + room, Formatted(cchBuffer, OLESTR("abc")));
        record.Add("\"%s\" of ten" + room, Formatted(cchBuffer, OLESTR("%s"), OLESTR("0123456789")));
        record.Add("\"%s%s\" of five each" + room, Formatted(cchBuffer, OLESTR("%s%s"), OLESTR("01234"), OLESTR("56789")));
        record.Add("\"%8d|\"" + room, Formatted(cchBuffer, OLESTR("%8d|"), 42));
        record.Add("\"%-8d|\"" + room, Formatted(cchBuffer, OLESTR("%-8d|"), 42));
        record.Add("\"%010d\"" + room, Formatted(cchBuffer, OLESTR("%010d"), -42));
        record.Add("\"%#X\"" + room, Formatted(cchBuffer, OLESTR("%#X"), 0x123456));
        record.Add("\"%c%c\"" + room, Formatted(cchBuffer, OLESTR("%c%c"), 'a', 'b'));
        record.Add("\"%5S|\"" + room, Formatted(cchBuffer, OLESTR("%5S|"), "ab"));
        record.Add("empty" + room, Formatted(cchBuffer, OLESTR("")));
        record.Add("list \"%s [%8X]   %s: %s\"" + room,
                   FormattedByList(cchBuffer, OLESTR("%s [%8X]   %s: %s"), OLESTR("t"), 0x1A2B, OLESTR("p"), OLESTR("m")));
        record.Add("list \"%02d:%02d:%02d.%03d\"" + room, FormattedByList(cchBuffer, OLESTR("%02d:%02d:%02d.%03d"), 1, 2, 13, 4));
    }
    record.Add("length of \"%s-%d\"", std::to_string(_snwprintf(nullptr, 0, OLESTR("%s-%d"), OLESTR("abc"), 12)));
    record.Add("length of nothing", std::to_string(_snwprintf(nullptr, 0, OLESTR(""))));
    record.Add("list of all kinds", FormattedByList(cchRoom, OLESTR("%d %s %I64X %hs %c %u %p"), -1, OLESTR("w"), 0x123456789ALL,
                                                    "n", 'c', 7u, nullptr));
}
} // namespace

void RecordFormats(CRecord& record, const std::filesystem::path&)
{
    const auto showNumber = [](long long llValue) { return std::to_string(llValue); };
    RecordEach(record, numberFormats, numbers, showNumber);
    RecordEach(record, wideNumberFormats, wideNumbers, showNumber);
    RecordEach(record, textFormats, texts, Quoted);
    RecordEach(record, narrowFormats, narrowTexts,
               [](const char* szText) { return szText ? '"' + Shown(std::string_view(szText)) + '"' : "null"; });
    RecordEach(record, characterFormats, characters, showNumber);
    for (const WCHAR* const szFormat : {OLESTR("%c|"), OLESTR("%lc|"), OLESTR("%5c|")})
    {
        for (const int nCharacter : wideCharacters)
            record.Add(Quoted(szFormat) + " of " + std::to_string(nCharacter), Formatted(cchRoom, szFormat, nCharacter));
    }
    for (const WCHAR* const szFormat : pointerFormats)
    {
        for (const std::uintptr_t uValue : pointers)
            record.Add(Quoted(szFormat) + " of " + ShownHex(uValue),
                       Formatted(cchRoom, szFormat, reinterpret_cast<void*>(uValue)));
    }
    for (const WCHAR* const szFormat : bareFormats)
        record.Add("bare " + Quoted(szFormat), Formatted(cchRoom, szFormat));
    RecordStars(record);
    RecordSizes(record);
    RecordTextConversions(record);
}
} // namespace answers
