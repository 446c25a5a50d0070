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
    // The run-time leaves a text that fills its count without a terminator: the last code unit stays one.
    WCHAR szMessage[cchMessageCapacity] = {};
    va_list arguments;
    va_start(arguments, szFormat);
    _vsnwprintf(szMessage, cchMessageCapacity - 1, szFormat, arguments);
    va_end(arguments);
    KorCmnTracer::Trace(lLevel, KorCmnTracer::Ihvui, szMessage);
}
