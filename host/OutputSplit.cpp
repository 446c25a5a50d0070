#include "host/OutputSplit.h"

#include "host/Escaped.h"
#include "host/HostError.h"
#include "host/KeyMask.h"
#include "host/Terminal.h"
#include "values/Utf8Text.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>

COutputSplit::COutputSplit(const std::string& strTrace) : m_bShown(strTrace == "-")
{
    m_trace = m_bShown ? OpenTemporaryTrace() : OpenTraceFile(strTrace);
    if (!m_trace || dup2(m_trace.Get(), STDOUT_FILENO) < 0)
        throw CHostError((strTrace.empty() || m_bShown ? "the trace" : strTrace) + " cannot be written: " + std::strerror(errno));
}

COutputSplit::~COutputSplit()
{
    ShowTrace();
    std::fflush(stdout);
    dup2(m_own.Descriptor(), STDOUT_FILENO);
}

void COutputSplit::Write(std::string_view text)
{
    WriteBytes(EscapedLines(text));
}

void COutputSplit::WriteBytes(std::string_view bytes)
{
    if (!ShowTrace() || !m_own.Write(bytes))
        throw COutputClosed();
}

bool COutputSplit::IsSeen() const
{
    return IsTerminal(m_own.Descriptor());
}

std::string COutputSplit::TakeTrace()
{
    std::string strText;
    std::fflush(stdout);
    if (!m_bShown)
        return strText;
    // Reading and the module's writing share one position, which ends up where it was: at the end.
    lseek(m_trace.Get(), m_nTaken, SEEK_SET);
    char chunk[4096];
    for (;;)
    {
        const auto cbRead = read(m_trace.Get(), chunk, sizeof(chunk));
        if (cbRead <= 0)
            break;
        strText.append(chunk, static_cast<std::size_t>(cbRead));
    }
    m_nTaken = lseek(m_trace.Get(), 0, SEEK_END);
    return Utf8Of(WithoutKeys(WideOf(strText)));
}

// Each line with "trace: " in front; a text that ends within a line gets its line end.
bool COutputSplit::ShowTrace()
{
    const std::string strTrace = TakeTrace();
    std::string strLines;
    for (std::string_view rest = strTrace; !rest.empty();)
    {
        const std::size_t nEnd = std::min(rest.find('\n'), rest.size());
        const std::string_view line = rest.substr(0, nEnd);
        strLines.append("trace: ").append(line.substr(0, line.size() - (line.ends_with('\r') ? 1 : 0))).append("\n");
        rest.remove_prefix(std::min(nEnd + 1, rest.size()));
    }
    return m_own.Write(EscapedLines(strLines));
}
