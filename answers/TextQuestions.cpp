// Formats, conversions, identifiers, and the texts that the platform hands out.
#include "answers/Shown.h"
#include "answers/Subjects.h"

#include <rpc.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <vector>

namespace answers
{
namespace
{
constexpr WCHAR filler = OLESTR('#');

// A text in quotes, a number, or an address that is written with "at".
template <class... Arguments>
int Format(std::vector<WCHAR>& buffer, std::size_t cchRoom, const WCHAR* szFormat, CQuestion& question, Arguments... arguments)
{
    if constexpr (sizeof...(arguments) < 4)
    {
        if (question.IsText())
            return Format(buffer, cchRoom, szFormat, question, arguments..., question.Text());
        if (question.HasMore())
        {
            const std::string word = question.Word();
            if (word == "null")
                return Format(buffer, cchRoom, szFormat, question, arguments..., static_cast<const WCHAR*>(nullptr));
            if (word == "at")
                return Format(
                    buffer, cchRoom, szFormat, question, arguments...,
                    reinterpret_cast<const WCHAR*>(static_cast<std::uintptr_t>(std::stoull(question.Word(), nullptr, 0))));
            return Format(buffer, cchRoom, szFormat, question, arguments..., static_cast<int>(std::stoll(word, nullptr, 0)));
        }
    }
    return _snwprintf(buffer.data(), cchRoom, szFormat, arguments...);
}

class CTexts final : public CSubject
{
public:
    std::string Answer(CQuestion& question) override
    {
        static constexpr Verb<CTexts> verbs[] = {
            {"format", &CTexts::Formatted},
            {"narrow", &CTexts::Narrowed},
            {"widen", &CTexts::Widened},
            {"bytes", &CTexts::InBytes},
            {"identifier", &CTexts::Identifier},
            {"current-folder", &CTexts::CurrentFolder},
            {"system-folder", &CTexts::SystemFolder},
            {"program", &CTexts::Program},
            {"locale", &CTexts::LocaleName},
        };
        return AnswerBy(verbs, *this, question);
    }

private:
    // format ROOM FORMAT ARGUMENT...
    std::string Formatted(CQuestion& question)
    {
        std::vector<WCHAR> buffer(100, filler);
        const auto cchRoom = static_cast<std::size_t>(question.Number());
        const WCHAR* const szFormat = question.Text();
        const int nResult = Format(buffer, cchRoom, szFormat, question);
        return std::to_string(nResult) + ", " + Shown(Touched({buffer.data(), buffer.size()}, filler));
    }
    std::string Narrowed(CQuestion& question)
    {
        std::string buffer(20, '#');
        const auto cbRoom = static_cast<std::size_t>(question.Number());
        errno = 0;
        const auto cb = wcstombs(buffer.data(), question.Text(), cbRoom);
        if (cb == static_cast<std::size_t>(-1))
            return errno == EILSEQ ? "-1, EILSEQ" : "-1";
        return std::to_string(cb) + ", " + Shown(std::string_view(buffer).substr(0, buffer.find_last_not_of('#') + 1));
    }
    // Both conversions are strict; with no room they tell the size.
    std::string Widened(CQuestion& question)
    {
        WCHAR buffer[20] = {};
        const auto cchRoom = static_cast<int>(question.Number());
        const std::string bytes = question.Bytes();
        SetLastError(4711);
        const int cch = MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, bytes.data(), static_cast<int>(bytes.size()),
                                            cchRoom ? buffer : nullptr, cchRoom);
        const std::string answer = ShownSuccess(cch != 0);
        return cch == 0 ? answer
                        : std::to_string(cch) + ", " + Shown(CWideView(buffer, static_cast<std::size_t>(cchRoom ? cch : 0)));
    }
    std::string InBytes(CQuestion& question)
    {
        char buffer[20] = {};
        const auto cbRoom = static_cast<int>(question.Number());
        const CWideView text = question.Text();
        SetLastError(4711);
        const int cb = WideCharToMultiByte(CP_UTF8, WC_ERR_INVALID_CHARS, text.data(), static_cast<int>(text.size()),
                                           cbRoom ? buffer : nullptr, cbRoom, nullptr, nullptr);
        const std::string answer = ShownSuccess(cb != 0);
        return cb == 0
                   ? answer
                   : std::to_string(cb) + ", " + ShownBytes(std::string_view(buffer, static_cast<std::size_t>(cbRoom ? cb : 0)));
    }
    // Read, and written again.
    std::string Identifier(CQuestion& question)
    {
        const CWideView text = question.Text();
        std::vector<unsigned short> units(text.begin(), text.end());
        units.push_back(0);
        UUID uuid = {};
        const RPC_STATUS status = UuidFromStringW(units.data(), &uuid);
        RPC_WSTR szWritten = nullptr;
        if (status != RPC_S_OK || UuidToStringW(&uuid, &szWritten) != RPC_S_OK)
            return ShownStatus(status);
        CWideString written;
        for (const auto* pUnit = szWritten; *pUnit != 0; ++pUnit)
            written += static_cast<WCHAR>(*pUnit);
        return Shown(written) + ", freed " + ShownStatus(RpcStringFreeW(&szWritten));
    }

    // The texts differ between machines: results and buffers are told by how they relate to the whole text. So is the room.
    template <class Get>
    static std::string HandedOut(CQuestion& question, Get&& get)
    {
        WCHAR szWhole[1024] = {};
        get(szWhole, DWORD{1024});
        const CWideView whole(szWhole);
        const auto cchWhole = static_cast<long>(whole.size());
        const auto cchRoom = static_cast<DWORD>(cchWhole + question.Number());
        std::vector<WCHAR> buffer(whole.size() + 60, filler);
        SetLastError(4711);
        const auto lResult = static_cast<long>(get(buffer.data(), cchRoom));
        const std::string error = ShownSuccess(false);
        const auto cchSame = std::ranges::mismatch(buffer, whole).in1 - buffer.begin();
        const bool bEnds = buffer[static_cast<std::size_t>(cchSame)] == 0;
        const bool bCut = lResult <= static_cast<long>(cchRoom) && !(cchSame == cchWhole && bEnds);
        return "length and " + std::to_string(lResult - cchWhole) + (bCut ? ", " + error : "") + "; buffer " +
               (buffer[0] == filler ? "untouched" : "whole and " + std::to_string(cchSame - cchWhole)) + (bEnds ? ", ended" : "");
    }
    std::string CurrentFolder(CQuestion& question)
    {
        return HandedOut(question, [](WCHAR* szBuffer, DWORD cch) { return GetCurrentDirectoryW(cch, szBuffer); });
    }
    std::string SystemFolder(CQuestion& question)
    {
        return HandedOut(question, [](WCHAR* szBuffer, DWORD cch) { return GetSystemDirectoryW(szBuffer, cch); });
    }
    std::string Program(CQuestion& question)
    {
        return HandedOut(question, [](WCHAR* szBuffer, DWORD cch) { return GetModuleFileNameW(nullptr, szBuffer, cch); });
    }
    std::string LocaleName(CQuestion&)
    {
        WCHAR szLocale[LOCALE_NAME_MAX_LENGTH] = {};
        const int cch = GetUserDefaultLocaleName(szLocale, LOCALE_NAME_MAX_LENGTH);
        return std::to_string(cch) + ", " + Shown(CWideView(szLocale));
    }
};
} // namespace

std::unique_ptr<CSubject> AskTexts()
{
    return std::make_unique<CTexts>();
}
} // namespace answers
