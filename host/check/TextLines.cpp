#include "host/check/TextLines.h"

#include <algorithm>

namespace
{
constexpr CWideView lineEnds = OLESTR("\r\n");
}

CTextLines::CTextLines(CWideView text) : m_text(text), m_begins{0}
{
    for (std::size_t n = 0; (n = text.find_first_of(lineEnds, n)) != CWideView::npos;)
    {
        n += text.substr(n).starts_with(lineEnds) ? 2 : 1;
        m_begins.push_back(n);
    }
}

TextPosition CTextLines::PositionOf(std::size_t nOffset) const
{
    const auto next = std::upper_bound(m_begins.begin(), m_begins.end(), nOffset);
    return {static_cast<std::size_t>(next - m_begins.begin()), nOffset - *std::prev(next) + 1};
}

std::size_t CTextLines::Begin(std::size_t nLine) const
{
    return m_begins[nLine - 1];
}

std::size_t CTextLines::End(std::size_t nLine) const
{
    return std::min(m_text.find_first_of(lineEnds, Begin(nLine)), m_text.size());
}
