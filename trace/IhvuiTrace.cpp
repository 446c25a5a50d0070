#include "trace/IhvuiTrace.h"

#include "trace/KorCmnTracer.h"

#include <cstdarg>
#include <cstdio>

namespace
{
constexpr std::size_t cchMessageCapacity = 4096;
}

void TraceFormat::Write(LONG lLevel, const WCHAR* szFormat, ...)
{
    WCHAR szMessage[cchMessageCapacity];
    // What cannot be formatted is an empty text; one that fills its count is left without a terminator by the run-time.
    szMessage[0] = szMessage[cchMessageCapacity - 1] = WCHAR{};
    va_list arguments;
    va_start(arguments, szFormat);
    _vsnwprintf(szMessage, cchMessageCapacity - 1, szFormat, arguments);
    va_end(arguments);
    KorCmnTracer::Trace(lLevel, KorCmnTracer::Ihvui, szMessage);
}
