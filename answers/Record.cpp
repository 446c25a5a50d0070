#include "answers/Record.h"

#include <cstdio>
#include <cstdlib>

namespace answers
{
CRecord::CRecord(const std::filesystem::path& file) : m_file(file, std::ios::binary)
{
    if (m_file)
        return;
    std::fprintf(stderr, "%s cannot be written\n", file.string().c_str());
    std::exit(1);
}

void CRecord::About(std::string_view subject)
{
    m_subject = subject;
}

void CRecord::Add(std::string_view question, std::string_view answer)
{
    m_file << m_subject << ": " << question << " -> " << answer << '\n';
}

bool CRecord::Finish()
{
    m_file.flush();
    return static_cast<bool>(m_file);
}

} // namespace answers
