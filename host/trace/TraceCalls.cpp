#include "host/trace/TraceCalls.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace
{
// A thread that is silent while so many messages of others are written has most likely ended: its call is handed out near its
// time. A dialog that stays open longer goes on later. Nothing is known of a thread any more after the second number.
constexpr std::uint64_t cMessagesUntilHandedOut = 64;
constexpr std::uint64_t cMessagesUntilForgotten = 20'000;
// A call that tells more than this is handed out in parts.
constexpr std::size_t cbMostOfCall = 256 * 1024;

struct OperationLine
{
    std::string_view line;
    std::string_view operation;
};

constexpr std::string_view dialog = "CExtUICon::Dot11ExtUIPropertyShowDialog";
// The lines with which operations begin, where those are not their names. The dialog's line has had the name of the other
// operation since the first version, and the other has none.
constexpr OperationLine firstLines[] = {
    {"\nCExtUICon::Dot11ExtUIPropertySetSelected", dialog},   {"GetClassObject", "DllGetClassObject"},
    {"CFactory::CreateInstance", "CFactory::CreateInstance"}, {"DllRegisterServer", "DllRegisterServer"},
    {"DllUnregisterServer", "DllUnregisterServer"},
};
constexpr std::string_view silentOperation = "CExtUICon::Dot11ExtUIPropertySetSelected";
constexpr std::string_view itsFirstLine = "bstrIHVProfile (IN): ";

constexpr std::string_view errorLines[] = {"***", "Didnt find korvane interface"};

// The operation that begins with the message; empty when it belongs to the call that its thread is in.
std::string_view OperationThatBegins(std::string_view text, const TraceCall& current)
{
    for (const auto& first : firstLines)
        if (text == first.line)
            return first.operation;
    if (text.starts_with("\nCExtUI"))
        return text.substr(1, text.find_first_of("\r\n", 1) - 1);
    const bool bOfTheDialog = current.strOperation == dialog && current.lines.empty() && !current.bGoesOn;
    return text.starts_with(itsFirstLine) && !bOfTheDialog ? silentOperation : std::string_view();
}

void AddLines(TraceCall& call, std::string_view text)
{
    while (!text.empty())
    {
        const std::size_t nEnd = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, nEnd);
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        call.cbLines += line.size() + sizeof(std::string);
        call.lines.emplace_back(line);
        text.remove_prefix(std::min(nEnd + 1, text.size()));
    }
}
} // namespace

bool IsTraceError(std::string_view line)
{
    return std::any_of(std::begin(errorLines), std::end(errorLines),
                       [&](std::string_view error) { return line.starts_with(error); });
}

CTraceCalls::CTraceCalls(Taker taker) : m_taker(std::move(taker))
{
}

void CTraceCalls::Add(const TraceMessage& message)
{
    m_cMessages += 1;
    OpenCall& open = m_open[message.nThread];
    open.nLastMessage = m_cMessages;
    const std::string_view operation = OperationThatBegins(message.text, open.call);
    if (!operation.empty())
    {
        HandOut(open);
        open.call = {};
        open.call.strOperation = operation;
    }
    if (!open.bHasNews)
    {
        open.call.nTime = message.nTime;
        open.call.nThread = message.nThread;
    }
    open.bHasNews = true;
    std::string_view lines = message.text;
    if (!operation.empty() && operation != silentOperation)
        lines.remove_prefix(std::min(lines.find('\n', 1), lines.size() - 1) + 1);
    AddLines(open.call, lines);
    open.call.bFailed = open.call.bFailed || IsTraceError(lines);
    if (open.call.cbLines > cbMostOfCall)
        HandOut(open);
    if (m_cMessages % cMessagesUntilHandedOut == 0)
        LetGo();
}

void CTraceCalls::Pause(bool bOnlyFailed)
{
    for (auto& [nThread, open] : m_open)
        if (open.call.bFailed || !bOnlyFailed)
            HandOut(open);
}

void CTraceCalls::HandOut(OpenCall& open)
{
    if (!open.bHasNews)
        return;
    m_taker(open.call);
    open.call.lines.clear();
    open.call.cbLines = 0;
    open.call.bGoesOn = true;
    open.call.bFailed = false;
    open.bHasNews = false;
}

void CTraceCalls::LetGo()
{
    for (auto it = m_open.begin(); it != m_open.end();)
    {
        const std::uint64_t cSilent = m_cMessages - it->second.nLastMessage;
        if (cSilent >= cMessagesUntilHandedOut)
            HandOut(it->second);
        it = cSilent >= cMessagesUntilForgotten ? m_open.erase(it) : std::next(it);
    }
}
