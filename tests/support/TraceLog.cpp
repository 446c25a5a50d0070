#include "tests/support/TraceLog.h"

#include <fstream>
#include <iterator>
#include <regex>

namespace tests
{
std::vector<std::string> CTraceLog::Take()
{
    std::ifstream file(File(), std::ios::binary | std::ios::ate);
    // A log that is shorter than before was begun anew.
    if (!file || static_cast<std::size_t>(file.tellg()) < m_cbTaken)
        m_cbTaken = 0;
    file.seekg(static_cast<std::streamoff>(m_cbTaken));
    const std::string text(std::istreambuf_iterator<char>(file), {});
    m_cbTaken += text.size();
    // A message ends where the next line's prefix begins; the messages themselves may hold line feeds.
    static const std::regex prefix(R"(\d\d:\d\d:\d\d\.\d\d\d \[[ 0-9A-F]{8}\]   Ihvui: )");
    std::vector<std::string> messages;
    std::sregex_token_iterator it(text.begin(), text.end(), prefix, -1);
    for (; it != std::sregex_token_iterator(); ++it)
    {
        std::string message = *it;
        if (messages.empty() && message.empty() && it->first == text.begin())
            continue;
        if (message.ends_with("\r\n"))
            message.replace(message.size() - 2, 2, "\n");
        messages.push_back(message);
    }
    return messages;
}
} // namespace tests
