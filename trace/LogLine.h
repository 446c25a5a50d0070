// The form of one line of the trace log: in memory as UTF-16, in the file as 8-bit text.
#pragma once

#include "values/WideText.h"

#include <memory>

// A line made from a message: local time, calling thread, module word, text. Beyond 2000 code units the line is cut and
// ends in "...\n". Empty (false) when there is no memory for it.
class CLogLine
{
public:
    CLogLine(const WCHAR* szModuleWord, const WCHAR* szText);

    explicit operator bool() const
    {
        return m_szLine != nullptr;
    }
    const WCHAR* Text() const
    {
        return m_szLine.get();
    }

private:
    std::unique_ptr<WCHAR[]> m_szLine;
};

// A line narrowed in the default locale; empty when a character has no 8-bit form there.
class CNarrowLine
{
public:
    explicit CNarrowLine(const WCHAR* szLine);

    const char* Text() const
    {
        return m_szText;
    }
    std::size_t Length() const
    {
        return m_cbText;
    }
    bool EndsInLineFeed() const
    {
        return m_cbText != 0 && m_szText[m_cbText - 1] == '\n';
    }

private:
    char m_szText[2001] = {};
    std::size_t m_cbText = 0;
};

// The path that a log without a configured one stands for: the program's own, with "Log.txt" in place of its extension.
void FormDefaultLogPath(WCHAR* szPath, std::size_t cchCapacity);
