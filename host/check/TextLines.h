// The lines of a text, and places in them as a person counts.
#pragma once

#include "values/WideText.h"

#include <vector>

struct TextPosition
{
    std::size_t nLine;   // from 1
    std::size_t nColumn; // from 1, in UTF-16 units
};

class CTextLines
{
public:
    // A line ends with a line feed, a carriage return, or both.
    explicit CTextLines(CWideView text);

    TextPosition PositionOf(std::size_t nOffset) const;
    // Where the line begins, and where it ends without its line end.
    std::size_t Begin(std::size_t nLine) const
    {
        return m_lines[nLine - 1].nBegin;
    }
    std::size_t End(std::size_t nLine) const
    {
        return m_lines[nLine - 1].nEnd;
    }

private:
    struct Line
    {
        std::size_t nBegin;
        std::size_t nEnd;
    };
    std::vector<Line> m_lines;
};
