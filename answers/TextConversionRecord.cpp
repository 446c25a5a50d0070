#include "answers/TextConversion.h"
#include "answers/Wording.h"

#include <rpc.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <vector>

namespace answers
{
namespace
{
using namespace std::string_view_literals;

void RecordNarrowing(CRecord& record)
{
    static constexpr const WCHAR* texts[] = {
        OLESTR(""),
        OLESTR("a"),
        OLESTR("abc"),
        OLESTR("\x01\x7F"),
        OLESTR("\u0080\u00A0\u00E4\u00FF"),
        OLESTR("ab\u0100"),
        OLESTR("\u0100"),
        OLESTR("ab\u20ACcd"),
        OLESTR("\uFF41"),
        OLESTR("\U0001F600"),
        OLESTR("a\r\nb"),
        OLESTR("\u0160\u017D"),
    };
    for (const WCHAR* const szText : texts)
    {
        const std::size_t cchText = CWideView(szText).size();
        errno = 0;
        const auto uLength = wcstombs(nullptr, szText, 0);
        int nErrno = errno;
        record.Add("length of " + Quoted(szText),
                   uLength == static_cast<std::size_t>(-1) ? "-1, " + ShownErrno(nErrno) : std::to_string(uLength));
        for (std::size_t cbRoom = 0; cbRoom < cchText + 3; ++cbRoom)
        {
            std::string buffer(cchText + 4, '#');
            errno = 0;
            const auto uResult = wcstombs(buffer.data(), szText, cbRoom);
            nErrno = errno;
            record.Add(Quoted(szText) + " as bytes with room for " + std::to_string(cbRoom),
                       uResult == static_cast<std::size_t>(-1) ? "-1, " + ShownErrno(nErrno)
                                                               : std::to_string(uResult) + ", " + Shown(buffer));
        }
    }
}

constexpr UUID identifiers[] = {
    {},
    {0x12345678, 0x9ABC, 0xDEF0, {0x01, 0x23, 0x45, 0x67, 0x89, 0xAB, 0xCD, 0xEF}},
    {0xFFFFFFFF, 0xFFFF, 0xFFFF, {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}},
    {0x1, 0x2, 0x3, {0, 0, 0, 0, 0, 0, 0, 4}},
};

std::string ShownIdentifier(UUID* pUuid)
{
    RPC_WSTR szText = nullptr;
    const RPC_STATUS status = UuidToStringW(pUuid, &szText);
    if (status != RPC_S_OK)
        return ShownStatus(status);
    CWideString text;
    for (const auto* pUnit = szText; *pUnit != 0; ++pUnit)
        text += static_cast<WCHAR>(*pUnit);
    const RPC_STATUS freed = RpcStringFreeW(&szText);
    return Shown(text) + ", freed " + ShownStatus(freed);
}

void RecordIdentifiers(CRecord& record)
{
    for (UUID uuid : identifiers)
        record.Add("identifier", ShownIdentifier(&uuid));
    record.Add("identifier of null", ShownIdentifier(nullptr));
    RPC_WSTR szFreed = nullptr;
    UuidToStringW(nullptr, &szFreed);
    RpcStringFreeW(&szFreed);
    record.Add("text of an identifier once freed", szFreed ? "as before" : "null");
    static constexpr const WCHAR* texts[] = {
        nullptr,
        OLESTR(""),
        OLESTR("12345678-9abc-def0-0123-456789abcdef"),
        OLESTR("12345678-9ABC-DEF0-0123-456789ABCDEF"),
        OLESTR("12345678-9aBc-DeF0-0123-456789aBcDeF"),
        OLESTR("00000000-0000-0000-0000-000000000000"),
        OLESTR("{12345678-9abc-def0-0123-456789abcdef}"),
        OLESTR("{12345678-9abc-def0-0123-456789abcdef"),
        OLESTR("12345678-9abc-def0-0123-456789abcdef}"),
        OLESTR(" 12345678-9abc-def0-0123-456789abcdef"),
        OLESTR("12345678-9abc-def0-0123-456789abcdef "),
        OLESTR("12345678-9abc-def0-0123-456789abcde"),
        OLESTR("12345678-9abc-def0-0123-456789abcdef0"),
        OLESTR("123456789abcdef00123456789abcdef"),
        OLESTR("123456789abc-def0-0123-456789abcdef"),
        OLESTR("12345678_9abc-def0-0123-456789abcdef"),
        OLESTR("12345678-9abc-def0-0123456789abcdef"),
        OLESTR("12345678-9abc-def0-012-3456789abcdef"),
        OLESTR("1234567-89abc-def0-0123-456789abcdef"),
        OLESTR("g2345678-9abc-def0-0123-456789abcdef"),
        OLESTR("1234567g-9abc-def0-0123-456789abcdef"),
        OLESTR("12345678-9abg-def0-0123-456789abcdef"),
        OLESTR("12345678-9abc-dex0-0123-456789abcdef"),
        OLESTR("12345678-9abc-def0-01:3-456789abcdef"),
        OLESTR("12345678-9abc-def0-0123-456789abcdeg"),
        OLESTR("12345678-9abc-def0-0123-45678 abcdef"),
        OLESTR("0x345678-9abc-def0-0123-456789abcdef"),
        OLESTR("+2345678-9abc-def0-0123-456789abcdef"),
        OLESTR("-2345678-9abc-def0-0123-456789abcdef"),
        OLESTR("12345678--abc-def0-0123-456789abcdef"),
        OLESTR("1234567\uFF18-9abc-def0-0123-456789abcdef"),
        OLESTR("1234567\u0138-9abc-def0-0123-456789abcdef"),
        OLESTR("12345678\u2010"
               "9abc-def0-0123-456789abcdef"),
        OLESTR("no identifier"),
        OLESTR("12345678-9abc-def0-0123"),
        OLESTR("12345678"),
    };
    for (const WCHAR* const szText : texts)
    {
        std::vector<unsigned short> units;
        for (const WCHAR* pUnit = szText; pUnit && *pUnit; ++pUnit)
            units.push_back(static_cast<unsigned short>(*pUnit));
        units.push_back(0);
        UUID uuid = identifiers[3];
        const RPC_STATUS status = UuidFromStringW(szText ? units.data() : nullptr, &uuid);
        record.Add("identifier from " + Quoted(szText),
                   ShownStatus(status) + (status == RPC_S_OK ? ", " + ShownIdentifier(&uuid) : ""));
    }
}

constexpr std::string_view byteTexts[] = {
    "a"sv,
    "abc"sv,
    "\0"sv,
    "a\0b"sv,
    "\xC3\xA4"sv,
    "\xE2\x82\xAC"sv,
    "\xF0\x9F\x98\x80"sv,
    "\xEF\xBB\xBF"
    "a"sv,
    "\x80"sv,
    "a\x80z"sv,
    "\xBF\xBF"sv,
    "\xC3"sv,
    "\xC3z"sv,
    "\xC3\xC3\xA4"sv,
    "\xE2\x82"sv,
    "\xE2\x82z"sv,
    "\xE2z"sv,
    "\xF0\x9F\x98"sv,
    "\xF0\x9F\x98z"sv,
    "\xF0\x9F"sv,
    "\xF0z"sv,
    "\xC0\x80"sv,
    "\xC1\xBF"sv,
    "\xE0\x80\x80"sv,
    "\xE0\x9F\xBF"sv,
    "\xF0\x80\x80\x80"sv,
    "\xED\xA0\x80"sv,
    "\xED\xBF\xBFz"sv,
    "\xED\xA0\xBD\xED\xB8\x80"sv,
    "\xF4\x8F\xBF\xBF"sv,
    "\xF4\x90\x80\x80"sv,
    "\xF5\x80\x80\x80"sv,
    "\xF8\x88\x80\x80\x80"sv,
    "\xFE"sv,
    "\xFFz"sv,
    "\xEF\xBF\xBE"sv,
    "\xEF\xBF\xBF"sv,
};

void RecordWidening(CRecord& record)
{
    for (const auto& bytes : byteTexts)
    {
        for (const DWORD dwFlags : {DWORD{0}, DWORD{MB_ERR_INVALID_CHARS}})
        {
            const auto cbText = static_cast<int>(bytes.size());
            const int cchNeeded = MultiByteToWideChar(CP_UTF8, dwFlags, bytes.data(), cbText, nullptr, 0);
            const std::string question = ShownBytes(bytes) + (dwFlags == 0 ? " widened" : " widened strictly");
            record.Add(question + ", size", ShownSuccess(cchNeeded != 0) + ", " + std::to_string(cchNeeded));
            for (int cchRoom = std::max(1, cchNeeded - 1); cchNeeded != 0 && cchRoom <= cchNeeded + 1; ++cchRoom)
            {
                WCHAR buffer[16] = {};
                const int cch = MultiByteToWideChar(CP_UTF8, dwFlags, bytes.data(), cbText, buffer, cchRoom);
                const std::string success = ShownSuccess(cch != 0);
                record.Add(question + ", room for " + std::to_string(cchRoom),
                           success + (cch != 0 ? ", " + Shown(CWideView(buffer, static_cast<std::size_t>(cch))) : ""));
            }
        }
    }
    WCHAR buffer[16] = {};
    const auto ask =
        [&](const char* szQuestion, UINT uCodePage, DWORD dwFlags, LPCSTR pText, int cbText, LPWSTR szWide, int cchWide)
    {
        SetLastError(4711);
        const int cch = MultiByteToWideChar(uCodePage, dwFlags, pText, cbText, szWide, cchWide);
        const std::string success = ShownSuccess(cch != 0);
        record.Add(std::string("widen ") + szQuestion, success + ", " + std::to_string(cch));
    };
    ask("null", CP_UTF8, 0, nullptr, 3, buffer, 16);
    ask("nothing", CP_UTF8, 0, "abc", 0, buffer, 16);
    ask("up to the end", CP_UTF8, 0, "abc", -1, buffer, 16);
    ask("up to the end, size", CP_UTF8, 0, "abc", -1, nullptr, 0);
    ask("up to the end of nothing", CP_UTF8, 0, "", -1, buffer, 16);
    ask("up to the end without room for it", CP_UTF8, 0, "abc", -1, buffer, 3);
    ask("into nowhere with room", CP_UTF8, 0, "abc", 3, nullptr, 16);
    ask("with room below nothing", CP_UTF8, 0, "abc", 3, buffer, -1);
    ask("with unknown flags", CP_UTF8, 0x100, "abc", 3, buffer, 16);
}

constexpr CWideView wideTexts[] = {
    OLESTR("a"),
    OLESTR("abc"),
    CWideView(OLESTR("a\0b"), 3),
    OLESTR("\u007F\u0080\u07FF\u0800\uFFFD"),
    OLESTR("\u00E4\u20AC\u4E2D"),
    OLESTR("\U0001F600"),
    OLESTR("\U0010FFFF"),
    OLESTR("\uFEFF"),
    OLESTR("\uFFFE\uFFFF"),
};

void RecordBytes(CRecord& record)
{
    std::vector<CWideString> texts(std::begin(wideTexts), std::end(wideTexts));
    for (const std::vector<unsigned>& units : std::vector<std::vector<unsigned>>{
             {0xD800}, {0xDFFF}, {'a', 0xD83D}, {0xD83D, 'z'}, {0xDE00, 0xD83D}, {0xD83D, 0xD83D, 0xDE00}, {0xDE00, 'z'}})
    {
        CWideString text;
        for (const unsigned uUnit : units)
            text += static_cast<WCHAR>(uUnit);
        texts.push_back(std::move(text));
    }
    for (const auto& text : texts)
    {
        for (const DWORD dwFlags : {DWORD{0}, DWORD{WC_ERR_INVALID_CHARS}})
        {
            const auto cchText = static_cast<int>(text.size());
            const int cbNeeded = WideCharToMultiByte(CP_UTF8, dwFlags, text.data(), cchText, nullptr, 0, nullptr, nullptr);
            const std::string question = Shown(text) + (dwFlags == 0 ? " in bytes" : " in bytes strictly");
            record.Add(question + ", size", ShownSuccess(cbNeeded != 0) + ", " + std::to_string(cbNeeded));
            for (int cbRoom = std::max(1, cbNeeded - 1); cbNeeded != 0 && cbRoom <= cbNeeded + 1; ++cbRoom)
            {
                char buffer[32] = {};
                const int cb = WideCharToMultiByte(CP_UTF8, dwFlags, text.data(), cchText, buffer, cbRoom, nullptr, nullptr);
                const std::string success = ShownSuccess(cb != 0);
                record.Add(question + ", room for " + std::to_string(cbRoom),
                           success + (cb != 0 ? ", " + ShownBytes(std::string_view(buffer, static_cast<std::size_t>(cb))) : ""));
            }
        }
    }
}
} // namespace

void RecordTextConversions(CRecord& record)
{
    RecordNarrowing(record);
    RecordIdentifiers(record);
    RecordWidening(record);
    RecordBytes(record);
}
} // namespace answers
