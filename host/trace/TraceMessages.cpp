#include "host/trace/TraceMessages.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <utility>

namespace
{
// The beginning of a message: digits, hexadecimal digits behind spaces, and the module's word with a colon.
constexpr std::string_view beginning = "00:00:00.000 [XXXXXXXX]   ";
constexpr std::size_t bracket = beginning.find('[');
constexpr std::size_t cbLongestBeginning = beginning.size() + 32;
// The module writes no line that is longer; a file that is none of its own is read in pieces of this size.
constexpr std::size_t cbMostHeld = 64 * 1024;

bool IsDigit(char ch)
{
    return ch >= '0' && ch <= '9';
}

bool Fits(char expected, char ch)
{
    if (expected == '0')
        return IsDigit(ch);
    return expected == 'X' ? ch == ' ' || IsDigit(ch) || (ch >= 'A' && ch <= 'F') : ch == expected;
}

struct Beginning
{
    std::uint32_t nTime = 0;
    std::uint32_t nThread = 0;
    std::size_t cb = 0;
};

std::uint32_t Number(std::string_view digits, int nBase = 10)
{
    std::uint32_t nNumber = 0;
    digits.remove_prefix(std::min(digits.find_first_not_of(' '), digits.size()));
    std::from_chars(digits.data(), digits.data() + digits.size(), nNumber, nBase);
    return nNumber;
}

std::optional<Beginning> LineBeginning(std::string_view text)
{
    if (text.size() <= beginning.size() || !std::equal(beginning.begin(), beginning.end(), text.begin(), Fits))
        return std::nullopt;
    const std::string_view word = text.substr(beginning.size(), cbLongestBeginning - beginning.size());
    const std::size_t nColon = word.find(": ");
    if (nColon == std::string_view::npos || word.substr(0, nColon).find_first_of(" \r\n") != std::string_view::npos)
        return std::nullopt;
    const std::uint32_t nMinutes = Number(text.substr(0, 2)) * 60 + Number(text.substr(3, 2));
    return Beginning{(nMinutes * 60 + Number(text.substr(6, 2))) * 1000 + Number(text.substr(9, 3)),
                     Number(text.substr(bracket + 1, 8), 16), beginning.size() + nColon + 2};
}
} // namespace

CTraceMessages::CTraceMessages(Taker taker, std::uint64_t nOffset) : m_taker(std::move(taker))
{
    m_current.nOffset = nOffset;
}

void CTraceMessages::Feed(std::string_view bytes)
{
    m_strHeld.append(bytes);
    for (;;)
    {
        const std::size_t nBracket = m_strHeld.find('[', m_nSearched + bracket);
        // A writer that was killed leaves a line without its end, so a message may begin anywhere in a line.
        if (nBracket == std::string::npos || m_strHeld.size() - nBracket < cbLongestBeginning)
        {
            m_nSearched = (nBracket == std::string::npos ? std::max(m_strHeld.size(), bracket) : nBracket) - bracket;
            break;
        }
        m_nSearched = nBracket - bracket;
        if (LineBeginning(std::string_view(m_strHeld).substr(m_nSearched)))
            HandOut(m_nSearched);
        m_nSearched += 1;
    }
    if (m_strHeld.size() > cbMostHeld)
        HandOut(m_nSearched);
}

void CTraceMessages::Finish()
{
    while (m_nSearched + bracket < m_strHeld.size())
    {
        if (m_nSearched > 0 && LineBeginning(std::string_view(m_strHeld).substr(m_nSearched)))
            HandOut(m_nSearched);
        m_nSearched += 1;
    }
    HandOut(m_strHeld.size());
}

void CTraceMessages::BeginAnew()
{
    m_strHeld.clear();
    m_nSearched = 0;
    m_current.nOffset = 0;
    m_bWithin = false;
}

void CTraceMessages::HandOut(std::size_t cbMessage)
{
    std::string_view text = std::string_view(m_strHeld).substr(0, cbMessage);
    if (const auto found = LineBeginning(text))
    {
        m_bHasAny = m_bWithin = true;
        m_current.nTime = found->nTime;
        m_current.nThread = found->nThread;
        text.remove_prefix(found->cb);
    }
    // A file of the echo has one line end of the message's and one of the echo's.
    while (text.ends_with('\n') || text.ends_with('\r'))
        text.remove_suffix(1);
    m_current.text = text;
    if (m_bWithin && cbMessage > 0)
        m_taker(m_current);
    m_current.nOffset += cbMessage;
    m_strHeld.erase(0, cbMessage);
    m_nSearched = 0;
}
