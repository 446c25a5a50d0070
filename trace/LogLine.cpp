#include "trace/LogLine.h"

#include "trace/TracePaths.h"

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <new>

namespace
{
constexpr std::size_t maxLength = KorCmnTracer::maxLineLength;
constexpr CWideView cutMark = OLESTR("...\n");

constexpr auto notRepresentable = static_cast<std::size_t>(-1);

bool IsRepresentable(WCHAR ch)
{
    constexpr WCHAR lastOfEveryLocale = 0x7F;
    const WCHAR szUnit[] = {ch, WCHAR{}};
    char szBytes[MB_LEN_MAX + 1];
    return ch <= lastOfEveryLocale || wcstombs(szBytes, szUnit, std::size(szBytes)) != notRepresentable;
}
} // namespace

CLogLine::CLogLine(const WCHAR* szModuleWord, const WCHAR* szText) : m_szLine(new (std::nothrow) WCHAR[maxLength + 1]())
{
    if (!m_szLine)
        return;
    SYSTEMTIME time = {};
    GetLocalTime(&time);
    constexpr int wasCut = -1;
    if (_snwprintf(m_szLine.get(), maxLength, OLESTR("%02d:%02d:%02d.%03d [%8X]   %s: %s"), time.wHour, time.wMinute,
                   time.wSecond, time.wMilliseconds, GetCurrentThreadId(), szModuleWord, szText) == wasCut)
        std::copy(cutMark.begin(), cutMark.end(), m_szLine.get() + maxLength - cutMark.size());
}

void CLogLine::ReplaceUnrepresentable()
{
    for (WCHAR* pch = m_szLine.get(); *pch != WCHAR{}; ++pch)
    {
        if (!IsRepresentable(*pch))
            *pch = OLESTR('?');
    }
}

CNarrowLine::CNarrowLine(const WCHAR* szLine)
{
    const std::size_t cbText = wcstombs(m_rgchText, szLine, maxLength);
    if (cbText == notRepresentable)
        return;
    m_text = {m_rgchText, cbText};
    if (m_text.ends_with('\n'))
    {
        std::copy_n("\r\n", 2, m_rgchText + cbText - 1);
        m_text = {m_rgchText, cbText + 1};
    }
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
