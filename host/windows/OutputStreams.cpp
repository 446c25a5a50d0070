#include "host/OutputStreams.h"

#include "host/HostError.h"
#include "values/Unique.h"

#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

namespace
{
struct CDescriptorCloser
{
    using Handle = int;
    static int Empty()
    {
        return -1;
    }
    static void Close(int nDescriptor)
    {
        _close(nDescriptor);
    }
};
using CUniqueDescriptor = CUnique<CDescriptorCloser>;

// The module is linked to the same run-time library (msvcrt.dll), so that this is its standard output as well.
class CStreams final : public IOutputStreams
{
public:
    explicit CStreams(const std::string& strTrace) : m_bShown(strTrace == "-")
    {
        std::fflush(stdout);
        *m_own.Put() = _dup(_fileno(stdout));
        if (!m_own)
            throw CHostError("standard output is closed");
        // The output is UTF-8 with the line ends that it was given, on a console too.
        _setmode(m_own.Get(), _O_BINARY);
        SetConsoleOutputCP(CP_UTF8);
        *m_trace.Put() = m_bShown ? OpenTemporary() : OpenNamed(strTrace.empty() ? "NUL" : strTrace);
        if (!m_trace || _dup2(m_trace.Get(), _fileno(stdout)) != 0)
            throw CHostError((strTrace.empty() || m_bShown ? "the trace" : strTrace) +
                             " cannot be written: " + std::strerror(errno));
    }
    ~CStreams() override
    {
        std::fflush(stdout);
        _dup2(m_own.Get(), _fileno(stdout));
    }
    CStreams(const CStreams&) = delete;
    CStreams& operator=(const CStreams&) = delete;

    bool Write(std::string_view text) override
    {
        // A console takes only so much at once.
        constexpr std::size_t cbMost = 16 * 1024;
        while (!text.empty())
        {
            const std::string_view part = text.substr(0, cbMost);
            const int cbWritten = _write(m_own.Get(), part.data(), static_cast<unsigned>(part.size()));
            if (cbWritten <= 0)
                return false;
            text.remove_prefix(static_cast<std::size_t>(cbWritten));
        }
        return true;
    }
    std::string TakeTrace() override
    {
        std::string strText;
        std::fflush(stdout);
        if (!m_bShown)
            return strText;
        // Reading and writing share one position, which ends up where it was: at the end.
        _lseek(m_trace.Get(), m_nTaken, SEEK_SET);
        char chunk[4096];
        for (;;)
        {
            const int cbRead = _read(m_trace.Get(), chunk, sizeof(chunk));
            if (cbRead <= 0)
                break;
            strText.append(chunk, static_cast<std::size_t>(cbRead));
        }
        m_nTaken = _lseek(m_trace.Get(), 0, SEEK_END);
        return strText;
    }

private:
    // Text mode, because the run-time library writes wide text to a binary stream as it is.
    static int OpenNamed(const std::string& strFile)
    {
        return _wopen(PathOf(strFile).c_str(), _O_WRONLY | _O_CREAT | _O_TRUNC | _O_APPEND | _O_TEXT | _O_NOINHERIT,
                      _S_IREAD | _S_IWRITE);
    }
    static int OpenTemporary()
    {
        const std::filesystem::path file =
            std::filesystem::temp_directory_path() / ("korihost." + std::to_string(GetCurrentProcessId()) + ".trace");
        return _wopen(file.c_str(), _O_RDWR | _O_CREAT | _O_TRUNC | _O_APPEND | _O_TEXT | _O_TEMPORARY | _O_NOINHERIT,
                      _S_IREAD | _S_IWRITE);
    }

    bool m_bShown;
    long m_nTaken = 0;
    CUniqueDescriptor m_own;
    CUniqueDescriptor m_trace;
};
} // namespace

std::unique_ptr<IOutputStreams> SplitStandardOutput(const std::string& strTrace)
{
    return std::make_unique<CStreams>(strTrace);
}
