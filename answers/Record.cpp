#include "answers/Record.h"

#include <cstdio>
#include <cstdlib>

namespace answers
{
namespace
{
template <class View>
std::string ShownCharacters(View text)
{
    std::string shown;
    for (const auto ch : text)
    {
        const auto uUnit = static_cast<unsigned>(static_cast<std::make_unsigned_t<decltype(ch)>>(ch));
        if (uUnit >= ' ' && uUnit < 0x7F && uUnit != '\\')
        {
            shown += static_cast<char>(uUnit);
            continue;
        }
        char szEscape[8];
        std::snprintf(szEscape, sizeof(szEscape), "\\u%04X", uUnit & 0xFFFF);
        shown += szEscape;
    }
    return shown;
}
} // namespace

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

std::string Shown(CWideView text)
{
    return ShownCharacters(text);
}

std::string Shown(std::string_view bytes)
{
    return ShownCharacters(bytes);
}

std::string ShownHex(std::uint64_t uValue)
{
    char szValue[20];
    std::snprintf(szValue, sizeof(szValue), "0x%08llX", static_cast<unsigned long long>(uValue));
    return szValue;
}

std::string ShownSuccess(bool bSucceeded)
{
    const DWORD dwError = GetLastError();
    return bSucceeded ? "ok" : "failed, error " + std::to_string(dwError);
}
} // namespace answers
