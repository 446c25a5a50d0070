#include "host/StandardOutput.h"

#include "host/HostError.h"
#include "host/Terminal.h"

#include <algorithm>
#include <cstdio>

CStandardOutput::CStandardOutput()
{
    std::fflush(stdout);
    m_descriptor = KeepStandardOutput();
    if (!m_descriptor)
        throw CHostError("standard output is closed");
}

bool CStandardOutput::Write(std::string_view text) const
{
    // A console takes only so much at once.
    constexpr std::size_t cbMost = 16 * 1024;
    while (!text.empty())
    {
        const auto cbWritten = write(m_descriptor.Get(), text.data(), static_cast<unsigned>(std::min(text.size(), cbMost)));
        if (cbWritten <= 0)
            return false;
        text.remove_prefix(static_cast<std::size_t>(cbWritten));
    }
    return true;
}

bool CStandardOutput::WantsColours() const
{
    return GetEnvironmentVariableW(OLESTR("NO_COLOR"), nullptr, 0) <= 1 && IsTerminal(m_descriptor.Get());
}
