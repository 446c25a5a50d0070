// korihost trace: reads the trace log that the module writes, call by call.
#include "host/Commands.h"
#include "host/Escaped.h"
#include "host/HostError.h"
#include "host/KeyMask.h"
#include "host/StandardOutput.h"
#include "host/trace/TraceCalls.h"
#include "host/trace/TraceSummary.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <optional>
#include <thread>

#include <sys/stat.h>

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
    explicit CTraceFile(const std::string& strFile) : m_file(PathOf(strFile)), m_opened(OpenForReading(m_file))
    {
        if (!m_opened)
            throw CHostError(strFile + ": cannot be opened: " + std::strerror(errno));
        if (!S_ISREG(StatusOf(m_opened).st_mode))
            throw CHostError(strFile + ": is not a regular file");
    }

    // The next bytes; none at the end, for now.
    std::string_view Next()
    {
        const auto cbRead = read(m_opened.Get(), m_strChunk.data(), static_cast<unsigned>(m_strChunk.size()));
        m_nRead += std::max<std::int64_t>(cbRead, 0);
        return std::string_view(m_strChunk).substr(0, static_cast<std::size_t>(std::max<std::int64_t>(cbRead, 0)));
    }
    void GoTo(std::uint64_t nOffset)
    {
        m_nRead = static_cast<std::int64_t>(nOffset);
        lseek(m_opened.Get(), m_nRead, SEEK_SET);
    }
    // True when another log has the name by now, or this one was emptied: that is read from its beginning then. Until it is
    // there, what was moved away is.
    bool WasBegunAnew()
    {
        CUniqueDescriptor named = OpenForReading(m_file);
        const struct stat now = StatusOf(named);
        const struct stat before = StatusOf(m_opened);
        if (!named || !S_ISREG(now.st_mode) ||
            (now.st_dev == before.st_dev && now.st_ino == before.st_ino && now.st_size >= m_nRead))
            return false;
        m_opened.Reset(named.Detach());
        m_nRead = 0;
        return true;
    }

private:
    static struct stat StatusOf(const CUniqueDescriptor& file)
    {
        struct stat status = {};
        fstat(file.Get(), &status);
        return status;
    }

    std::filesystem::path m_file;
    CUniqueDescriptor m_opened;
    std::string m_strChunk = std::string(cbChunk, '\0');
    std::int64_t m_nRead = 0;
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
        strText += (bColoured ? "    \x1b[31m" : "    ") + EscapedLines(strLine) + (bColoured ? "\x1b[0m\n" : "\n");
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
            throw COutputClosed();
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
            // Most messages have no markup, and so no keys.
            const bool bMarkup = message.text.find_first_of("<&=") != std::string_view::npos;
            const std::string strMasked = bMarkup ? Utf8Of(WithoutKeys(WideOf(message.text))) : std::string();
            if (bMarkup)
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
            messages.BeginAnew();
    }
    calls.Pause();
    if (!messages.HasAny())
        throw CHostError(arguments.strFile + ": holds no line of a trace log");
    if (arguments.bSummary)
        write(summary.Text());
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
    pCommand->footer("A line of the log has neither a date nor a process, so that calls are told apart by their thread alone.\n"
                     "A call is shown once its thread begins another or has been silent for a while, so that calls of several "
                     "threads can stand out\n"
                     "of their order in time.");
    pCommand->callback([pArguments, &chosen] { chosen = [pArguments] { Trace(*pArguments); }; });
}
