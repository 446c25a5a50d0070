// The form of one line of the trace log: in memory as UTF-16, in the file as 8-bit text.
#pragma once

#include "trace/KorCmnTracer.h"
#include "values/WideText.h"

#include <memory>
#include <string_view>

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

    // Puts a question mark for every code unit that has no 8-bit form in the default locale: a stream that meets one would
    // lose it with all that follows. A stream of wide characters could show it, but nothing tells which kind a host has.
    void ReplaceUnrepresentable();

private:
    std::unique_ptr<WCHAR[]> m_szLine;
};

// A line as the file holds it: narrowed in the default locale, with a final line feed as carriage return and line feed. Empty
// when a character has no 8-bit form there.
class CNarrowLine
{
public:
    explicit CNarrowLine(const WCHAR* szLine);

    std::string_view Text() const
    {
        return m_text;
    }

private:
    char m_rgchText[KorCmnTracer::maxLineLength + 1]; // the carriage return has no place of its own in the line
    std::string_view m_text;
};

// The path that a log without a configured one stands for: the program's own, with "Log.txt" in place of its extension.
void FormDefaultLogPath(WCHAR* szPath, std::size_t cchCapacity);
