#include "tests/support/TraceLog.h"

#include "tests/support/Pattern.h"

namespace tests
{
std::vector<std::string> CTraceLog::Take()
{
    // A log that is shorter than before was begun anew.
    std::error_code missing;
    if (const auto cbFile = std::filesystem::file_size(File(), missing); missing || cbFile < m_cbTaken)
        m_cbTaken = 0;
    const std::string text = ReadBytes(File(), m_cbTaken);
    m_cbTaken += text.size();
    // A message ends where the next line's prefix begins; the messages themselves may hold line feeds.
    auto messages = Split(text, R"(\d\d:\d\d:\d\d\.\d\d\d \[[ 0-9A-F]{8}\]   Ihvui: )");
    if (!messages.empty() && messages.front().empty())
        messages.erase(messages.begin());
    for (auto& message : messages)
        if (message.ends_with("\r\n"))
            message.replace(message.size() - 2, 2, "\n");
    return messages;
}

CUniqueFile CTraceLog::HeldByAnother(DWORD dwOffset, DWORD cbLock) const
{
    CUniqueFile file(CreateFileW(PlatformNameOf(File()).c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                 OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    OVERLAPPED region = {};
    region.Offset = dwOffset;
    if (!LockFileEx(file.Get(), LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, cbLock, 0, &region))
        file.Reset();
    return file;
}
} // namespace tests
