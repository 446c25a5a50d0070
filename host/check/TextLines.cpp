#include "host/check/TextLines.h"

#include <algorithm>

namespace
{
constexpr CWideView lineEnds = OLESTR("\r\n");
}

CTextLines::CTextLines(CWideView text)
{
    std::size_t nBegin = 0;
    for (std::size_t nEnd = 0; (nEnd = text.find_first_of(lineEnds, nBegin)) != CWideView::npos;)
    {
        m_lines.push_back({nBegin, nEnd});
        nBegin = nEnd + (text.substr(nEnd).starts_with(lineEnds) ? 2 : 1);
    }
    m_lines.push_back({nBegin, text.size()});
}

TextPosition CTextLines::PositionOf(std::size_t nOffset) const
{
    const auto next = std::upper_bound(m_lines.begin(), m_lines.end(), nOffset,
                                       [](std::size_t nLeft, const Line& right) { return nLeft < right.nBegin; });
    return {static_cast<std::size_t>(next - m_lines.begin()), nOffset - std::prev(next)->nBegin + 1};
}
