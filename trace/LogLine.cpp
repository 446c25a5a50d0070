#include "trace/LogLine.h"

#include "trace/KorCmnTracer.h"
#include "trace/TracePaths.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <new>

namespace
{
constexpr std::size_t maxLength = KorCmnTracer::maxLineLength;
constexpr CWideView cutMark = OLESTR("...\n");

struct TimeStamp
{
    WCHAR szText[100];
};

TimeStamp FormTimeStamp()
{
    SYSTEMTIME time = {};
    GetLocalTime(&time);
    TimeStamp stamp = {};
    _snwprintf(stamp.szText, std::size(stamp.szText) - 1, OLESTR("%02d:%02d:%02d.%03d"), time.wHour, time.wMinute, time.wSecond,
               time.wMilliseconds);
    return stamp;
}
} // namespace

CLogLine::CLogLine(const WCHAR* szModuleWord, const WCHAR* szText) : m_szLine(new (std::nothrow) WCHAR[maxLength + 1]())
{
    if (!m_szLine)
        return;
    const int cchLine = _snwprintf(m_szLine.get(), maxLength, OLESTR("%s [%8X]   %s: %s"), FormTimeStamp().szText,
                                   GetCurrentThreadId(), szModuleWord, szText);
    if (cchLine >= 0 && static_cast<std::size_t>(cchLine) <= maxLength)
        return;
    std::copy(cutMark.begin(), cutMark.end(), m_szLine.get() + maxLength - cutMark.size());
}

CNarrowLine::CNarrowLine(const WCHAR* szLine)
{
    const std::size_t cbText = wcstombs(m_szText, szLine, std::size(m_szText) - 1);
    if (cbText != static_cast<std::size_t>(-1))
        m_cbText = cbText;
}

void FormDefaultLogPath(WCHAR* szPath, std::size_t cchCapacity)
{
    WCHAR szProgram[MAX_PATH + 1] = {};
    GetModuleFileNameW(nullptr, szProgram, MAX_PATH);
    const int nDot = ReverseFind(szProgram, OLESTR('.'));
    if (nDot > ReverseFind(szProgram, OLESTR('\\')))
        szProgram[nDot] = WCHAR{};
    if (_snwprintf(szPath, cchCapacity - 1, OLESTR("%sLog.txt"), szProgram) < 0)
        szPath[cchCapacity - 1] = WCHAR{};
}
