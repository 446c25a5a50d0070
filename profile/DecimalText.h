// Decimal numbers as profiles carry them.
#pragma once

#include "values/WideText.h"

// Leading white space is skipped, then an optional sign and the digits up to the first other character; no digits give
// 0. A value beyond 32 bits gives the nearest one that fits, so that a number that is far too large never turns into a
// small one that looks valid.
LONG ParseDecimal(CWideView text);

CWideString FormatDecimal(LONG lValue);
