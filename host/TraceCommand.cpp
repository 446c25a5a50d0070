// korihost trace: reads the trace log that the module writes, call by call.
#include "host/Commands.h"
#include "host/Escaped.h"
#include "host/HostError.h"
#include "host/KeyMask.h"
#include "host/StandardOutput.h"
#include "host/trace/TraceCalls.h"
#include "host/trace/TraceSummary.h"

#include <charconv>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <optional>
#include <thread>

namespace
{
constexpr std::size_t cbChunk = 256 * 1024;
constexpr auto timeBetweenLooks = std::chrono::milliseconds(200);
// Threads take the time before they wait for the file, so that a line may be a little older than the one before it. Anything
// more is another day.
constexpr std::uint32_t nLeastStepBack = 60'000;

struct TraceArguments
{
    std::string strFile;
    std::string strThread;
    std::string strSince;
    bool bFollow = false;
    bool bErrors = false;
    bool bSummary = false;
};

std::string TimeText(std::uint32_t nTime)
{
    char szTime[32];
    std::snprintf(szTime, sizeof(szTime), "%02u:%02u:%02u.%03u", nTime / 3'600'000, nTime / 60'000 % 60, nTime / 1000 % 60,
                  nTime % 1000);
    return szTime;
}

std::optional<std::uint32_t> TimeOf(const std::string& strTime)
{
    unsigned nHour = 0, nMinute = 0, nSecond = 0;
    int cRead = 0;
    if (std::sscanf(strTime.c_str(), "%2u:%2u:%2u%n", &nHour, &nMinute, &nSecond, &cRead) != 3 ||
        static_cast<std::size_t>(cRead) != strTime.size() || nHour > 23 || nMinute > 59 || nSecond > 59)
        return std::nullopt;
    return ((nHour * 60 + nMinute) * 60 + nSecond) * 1000;
}

std::optional<std::uint32_t> ThreadOf(const std::string& strThread)
{
    std::uint32_t nThread = 0;
    const char* const pEnd = strThread.data() + strThread.size();
    const auto [pRead, error] = std::from_chars(strThread.data(), pEnd, nThread, 16);
    return error == std::errc() && pRead == pEnd ? std::optional(nThread) : std::nullopt;
}

// The log as it stands, and what is added to it.
class CTraceFile
{
public:
    explicit CTraceFile(const std::string& strFile) : m_strFile(strFile), m_stream(PathOf(strFile), std::ios::binary)
    {
        std::error_code error;
        if (!m_stream || !std::filesystem::is_regular_file(PathOf(strFile), error))
            throw CHostError(strFile + ": " + (m_stream ? "is no file" : std::strerror(errno)));
    }

    // The next bytes; none at the end, for now. A log that was begun anew is read from its beginning.
    std::string_view Next()
    {
        m_stream.clear();
        m_stream.read(m_strChunk.data(), static_cast<std::streamsize>(m_strChunk.size()));
        m_nRead += static_cast<std::uint64_t>(m_stream.gcount());
        return std::string_view(m_strChunk).substr(0, static_cast<std::size_t>(m_stream.gcount()));
    }
    void GoTo(std::uint64_t nOffset)
    {
        m_stream.clear();
        m_stream.seekg(static_cast<std::streamoff>(nOffset));
        m_nRead = nOffset;
    }
    bool WasBegunAnew() const
    {
        std::error_code error;
        const auto cbNow = std::filesystem::file_size(PathOf(m_strFile), error);
        return !error && cbNow < m_nRead;
    }

private:
    std::string m_strFile;
    std::ifstream m_stream;
    std::string m_strChunk = std::string(cbChunk, '\0');
    std::uint64_t m_nRead = 0;
};

// Where the last day of the log begins.
std::uint64_t LastDay(CTraceFile& file)
{
    std::uint64_t nOffset = 0;
    std::uint32_t nLast = 0;
    CTraceMessages messages(
        [&](const TraceMessage& message)
        {
            if (message.nTime + nLeastStepBack < nLast)
                nOffset = message.nOffset;
            nLast = message.nTime;
        });
    for (std::string_view bytes = file.Next(); !bytes.empty(); bytes = file.Next())
        messages.Feed(bytes);
    messages.Finish();
    return nOffset;
}

std::string TextOf(const TraceCall& call, bool bColours)
{
    std::string strText = TimeText(call.nTime) + " [";
    char szThread[16];
    std::snprintf(szThread, sizeof(szThread), "%X", call.nThread);
    strText += std::string(szThread) + "] " + (call.strOperation.empty() ? "(no beginning)" : Escaped(call.strOperation)) +
               (call.bGoesOn ? " goes on\n" : "\n");
    for (const std::string& strLine : call.lines)
    {
        const bool bColoured = bColours && IsTraceError(strLine);
        strText += (bColoured ? "    \x1b[31m" : "    ") + Escaped(strLine) + (bColoured ? "\x1b[0m\n" : "\n");
    }
    return strText;
}

void Trace(const TraceArguments& arguments)
{
    const std::optional<std::uint32_t> nThread = ThreadOf(arguments.strThread);
    std::optional<std::uint32_t> nSince = TimeOf(arguments.strSince);
    CTraceFile file(arguments.strFile);
    const std::uint64_t nBegin = nSince ? LastDay(file) : 0;
    file.GoTo(nBegin);

    const CStandardOutput output;
    const auto write = [&](const std::string& strText)
    {
        if (!output.Write(strText))
            throw CHostError("standard output cannot be written");
    };
    CTraceSummary summary;
    CTraceCalls calls(
        [&, bColours = output.WantsColours()](const TraceCall& call)
        {
            if (arguments.bErrors && !call.bFailed)
                return;
            if (arguments.bSummary)
                summary.Add(call);
            else
                write(TextOf(call, bColours));
        });
    CTraceMessages messages(
        [&](const TraceMessage& message)
        {
            if (nSince && message.nTime < *nSince)
                return;
            // From the first on, whatever the time: the file may go on after midnight.
            nSince.reset();
            if (nThread && message.nThread != *nThread)
                return;
            TraceMessage masked = message;
            const std::string strMasked = Utf8Of(WithoutKeys(WideOf(message.text)));
            masked.text = strMasked;
            calls.Add(masked);
        },
        nBegin);

    for (;;)
    {
        for (std::string_view bytes = file.Next(); !bytes.empty(); bytes = file.Next())
            messages.Feed(bytes);
        if (!arguments.bFollow || messages.HoldsWholeLines())
            messages.Finish();
        if (!arguments.bFollow)
            break;
        // Lines that an error may still follow wait for it.
        calls.Pause(arguments.bErrors);
        std::this_thread::sleep_for(timeBetweenLooks);
        if (file.WasBegunAnew())
            file.GoTo(0);
    }
    calls.Pause();
    if (!messages.HasAny())
        throw CHostError(arguments.strFile + ": holds no line of a trace log");
    if (arguments.bSummary)
        write(EscapedLines(summary.Text()));
}
} // namespace

void AddTraceCommand(CLI::App& app, CommandWork& chosen)
{
    const auto pArguments = std::make_shared<TraceArguments>();
    CLI::App* pCommand = app.add_subcommand("trace", "Read the trace log that the extension writes, call by call");
    pCommand->add_option("FILE", pArguments->strFile, "The log")->required()->type_name("");
    pCommand->add_flag("--errors", pArguments->bErrors, "Only calls that met an error");
    pCommand->add_option("--thread", pArguments->strThread, "Only this thread's calls")
        ->check([](const std::string& strId) { return ThreadOf(strId) ? "" : "wants the number in the brackets"; })
        ->type_name("ID");
    pCommand->add_option("--since", pArguments->strSince, "Only from this time of the log's last day on")
        ->check([](const std::string& strTime) { return TimeOf(strTime) ? "" : "wants a time as 21:42:07"; })
        ->type_name("HH:MM:SS");
    CLI::Option* pSummary = pCommand->add_flag("--summary", pArguments->bSummary,
                                               "How often each operation was called, with what, and which errors it met");
    pCommand->add_flag("--follow", pArguments->bFollow, "Wait for what is added")->excludes(pSummary);
    pCommand->footer("A line of the log has neither a date nor a process, so that calls are told apart by their thread alone.");
    pCommand->callback([pArguments, &chosen] { chosen = [pArguments] { Trace(*pArguments); }; });
}
