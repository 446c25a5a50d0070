#include "host/check/CheckOutput.h"

#include "host/HostError.h"

#include <cerrno>
#include <cstring>

namespace
{
void WriteAll(const CUniqueDescriptor& descriptor, std::string_view text, const char* szWhere)
{
    while (!text.empty())
    {
        const auto cbWritten = write(descriptor.Get(), text.data(), static_cast<unsigned>(text.size()));
        if (cbWritten < 0 && errno != EINTR)
            throw CHostError(std::string(szWhere) + " cannot be written: " + std::strerror(errno));
        text.remove_prefix(static_cast<std::size_t>(std::max<decltype(cbWritten)>(cbWritten, 0)));
    }
}
} // namespace

CCheckOutput::CCheckOutput() : m_own(KeepStandardOutput())
{
    if (!m_own)
        throw CHostError("there is no standard output");
}

void CCheckOutput::Write(std::string_view text)
{
    WriteAll(m_own, text, "standard output");
}

CSpool::CSpool() : m_file(OpenTemporaryTrace())
{
    if (!m_file)
        throw CHostError(std::string("a temporary file cannot be made: ") + std::strerror(errno));
}

void CSpool::Write(std::string_view text)
{
    WriteAll(m_file, text, "the temporary file");
}

void CSpool::CopyTo(CCheckOutput& output)
{
    lseek(m_file.Get(), 0, SEEK_SET);
    char chunk[64 * 1024];
    while (const auto cbRead = read(m_file.Get(), chunk, sizeof(chunk)))
    {
        if (cbRead < 0)
            throw CHostError(std::string("the temporary file cannot be read: ") + std::strerror(errno));
        output.Write({chunk, static_cast<std::size_t>(cbRead)});
    }
}
