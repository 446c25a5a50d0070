#include "host/OutputSplit.h"

#include "host/HostError.h"

COutputSplit::COutputSplit(const std::string& strTrace) : m_pStreams(SplitStandardOutput(strTrace))
{
}

COutputSplit::~COutputSplit()
{
    m_pStreams->Write(PrefixedTraceLines(m_pStreams->TakeTrace()));
}

void COutputSplit::Write(std::string_view text)
{
    if (!m_pStreams->Write(PrefixedTraceLines(m_pStreams->TakeTrace())) || !m_pStreams->Write(text))
        throw CHostError("standard output cannot be written");
}

std::string PrefixedTraceLines(std::string_view text)
{
    std::string strLines;
    while (!text.empty())
    {
        const std::size_t nEnd = text.find('\n');
        std::string_view line = text.substr(0, nEnd);
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        strLines += "trace: ";
        strLines += line;
        strLines += '\n';
        text.remove_prefix(nEnd == std::string_view::npos ? text.size() : nEnd + 1);
    }
    return strLines;
}
