#include "host/OutputStreams.h"

#include "host/HostError.h"
#include "host/native/UniqueDescriptor.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>

namespace
{
class CStreams final : public IOutputStreams
{
public:
    explicit CStreams(const std::string& strTrace) : m_bShown(strTrace == "-")
    {
        std::fflush(stdout);
        *m_own.Put() = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
        if (!m_own)
            throw CHostError("standard output is closed");
        *m_trace.Put() = m_bShown ? OpenTemporary() : OpenNamed(strTrace.empty() ? "/dev/null" : strTrace);
        if (!m_trace || dup2(m_trace.Get(), STDOUT_FILENO) < 0)
            throw CHostError((strTrace.empty() || m_bShown ? "the trace" : strTrace) +
                             " cannot be written: " + std::strerror(errno));
    }
    ~CStreams() override
    {
        std::fflush(stdout);
        dup2(m_own.Get(), STDOUT_FILENO);
    }
    CStreams(const CStreams&) = delete;
    CStreams& operator=(const CStreams&) = delete;

    bool Write(std::string_view text) override
    {
        return WriteAll(m_own.Get(), text);
    }
    // What came since the last call, when the trace is to be shown.
    std::string TakeTrace() override
    {
        std::string strText;
        std::fflush(stdout);
        if (!m_bShown)
            return strText;
        char chunk[4096];
        for (;;)
        {
            const ssize_t cbRead = pread(m_trace.Get(), chunk, sizeof(chunk), m_nTaken);
            if (cbRead <= 0)
                return strText;
            m_nTaken += cbRead;
            strText.append(chunk, static_cast<std::size_t>(cbRead));
        }
    }

private:
    static int OpenNamed(const std::string& strFile)
    {
        return open(strFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_APPEND | O_CLOEXEC, 0666);
    }
    static int OpenTemporary()
    {
        std::string strName = (std::filesystem::temp_directory_path() / "korihost.XXXXXX").string();
        const int nDescriptor = mkostemp(strName.data(), O_APPEND | O_CLOEXEC);
        if (nDescriptor >= 0)
            unlink(strName.c_str());
        return nDescriptor;
    }

    bool m_bShown;
    off_t m_nTaken = 0;
    CUniqueDescriptor m_own;
    CUniqueDescriptor m_trace;
};

} // namespace

std::unique_ptr<IOutputStreams> SplitStandardOutput(const std::string& strTrace)
{
    return std::make_unique<CStreams>(strTrace);
}
