// Formats, conversions, identifiers, documents, and the texts that modules hand out.
#include "answers/Shown.h"
#include "answers/World.h"
#include "host/Module.h"
#include "profile/XmlDocument.h"

#include <rpc.h>

#include <cerrno>
#include <cstdlib>

namespace answers
{
namespace
{
// A text in quotes, a number, or an address that is written with "at".
template <class... Arguments>
int Format(CWideString& buffer, std::size_t cchRoom, const WCHAR* szFormat, CQuestion& question, Arguments... arguments)
{
    if constexpr (sizeof...(arguments) < 4)
    {
        const auto goOn = [&](auto argument) { return Format(buffer, cchRoom, szFormat, question, arguments..., argument); };
        if (question.IsText())
            return goOn(question.Text());
        if (question.HasMore())
        {
            const std::string word = question.Word();
            return word == "at" ? goOn(reinterpret_cast<const WCHAR*>(question.Number<std::uintptr_t>()))
                                : goOn(static_cast<int>(std::stoll(word, nullptr, 0)));
        }
    }
    return _snwprintf(buffer.data(), cchRoom, szFormat, arguments...);
}

// format ROOM FORMAT ARGUMENT...
std::string Formatted(CWorld&, CQuestion& question)
{
    CWideString buffer(100, OLESTR('#'));
    const auto cchRoom = question.Number<std::size_t>();
    const WCHAR* const szFormat = question.Text();
    const int nResult = Format(buffer, cchRoom, szFormat, question);
    return std::to_string(nResult) + ", " + Shown(Touched(buffer));
}

std::string Narrowed(CWorld&, CQuestion& question)
{
    std::string buffer(question.Number<std::size_t>() + 1, '#');
    errno = 0;
    const auto cb = wcstombs(buffer.data(), question.Text(), buffer.size() - 1);
    if (cb == static_cast<std::size_t>(-1))
        return errno == EILSEQ ? "-1, EILSEQ" : "-1";
    return std::to_string(cb) + ", " + Shown(std::string_view(buffer).substr(0, cb + 1));
}

// Both conversions are strict; with no room they tell the size.
std::string Widened(CWorld&, CQuestion& question)
{
    CWideString buffer(question.Number<std::size_t>(), WCHAR{});
    const std::string bytes = question.Bytes();
    const int cch = MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, bytes.data(), static_cast<int>(bytes.size()),
                                        buffer.data(), static_cast<int>(buffer.size()));
    return ShownSuccess(cch != 0, std::to_string(cch) + ", " + Shown(buffer.substr(0, static_cast<std::size_t>(cch))));
}

std::string InBytes(CWorld&, CQuestion& question)
{
    std::string buffer(question.Number<std::size_t>(), '\0');
    const CWideView text = question.Text();
    const int cb = WideCharToMultiByte(CP_UTF8, WC_ERR_INVALID_CHARS, text.data(), static_cast<int>(text.size()), buffer.data(),
                                       static_cast<int>(buffer.size()), nullptr, nullptr);
    return ShownSuccess(cb != 0, std::to_string(cb) + ", " + ShownBytes(buffer.substr(0, static_cast<std::size_t>(cb))));
}

// Read, and written again.
std::string Identifier(CWorld&, CQuestion& question)
{
    CWideString text = question.Text();
    UUID uuid = {};
    const RPC_STATUS status = UuidFromStringW(reinterpret_cast<RPC_WSTR>(text.data()), &uuid);
    RPC_WSTR szWritten = nullptr;
    if (status != RPC_S_OK || UuidToStringW(&uuid, &szWritten) != RPC_S_OK)
        return ShownStatus(status);
    const std::string written = Shown(CWideView(reinterpret_cast<const WCHAR*>(szWritten)));
    return written + ", freed " + ShownStatus(RpcStringFreeW(&szWritten));
}

// Loads the file and is told what it holds.
std::string String(CWorld& world, CQuestion& question)
{
    const CUniqueLibrary module(LoadLibraryExW(world.Place(question), nullptr, 0));
    if (!module || !question.HasMore())
        return ShownSuccess(static_cast<bool>(module));
    CWideString buffer(question.Number<std::size_t>() + 1, OLESTR('#'));
    const int cch = LoadStringW(module.Get(), question.Number<UINT>(), buffer.data(), static_cast<int>(buffer.size() - 1));
    return std::to_string(cch) + ", " + Shown(Touched(buffer));
}

// Loads the document; told are its text form and all texts in it, or only those of the node that a path and paths from there
// find.
std::string Xml(CWorld&, CQuestion& question)
{
    const CComApartment apartment;
    CXmlDocument document;
    if (!document.Load(question.Text()))
        return "refused";
    const std::string form = question.HasMore() ? "" : Shown(document.Xml().View()) + ", ";
    CXmlNode node = document.Root();
    while (question.HasMore())
        node = node.Select(question.Text());
    return node ? form + "text \"" + Shown(node.Text().value()) + "\"" : "none";
}

constexpr Verb verbs[] = {
    {"format", Formatted},      {"narrow", Narrowed}, {"widen", Widened}, {"bytes", InBytes},
    {"identifier", Identifier}, {"load", String},     {"string", String}, {"xml", Xml},
};
} // namespace

std::span<const Verb> TextVerbs()
{
    return verbs;
}
} // namespace answers
