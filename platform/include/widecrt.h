// C run-time functions on UTF-16 text. The platform's own take its wchar_t; here they are overloads for the 16-bit
// character, so that the same call compiles on both builds. Formats know %s (a UTF-16 text; a null one prints as
// "(null)"), %d, %u, %x, %X, %p and %%; with any other conversion the result is -1.
#pragma once

#include "windef.h"

#include <cstdarg>
#include <cstdio>

int _vsnwprintf(WCHAR* szBuffer, std::size_t cchBuffer, const WCHAR* szFormat, va_list arguments);
int _snwprintf(WCHAR* szBuffer, std::size_t cchBuffer, const WCHAR* szFormat, ...);
std::FILE* _wfopen(const WCHAR* szFileName, const WCHAR* szMode);
int _putws(const WCHAR* szText);
std::size_t wcstombs(char* szText, const WCHAR* szWide, std::size_t cbText);
