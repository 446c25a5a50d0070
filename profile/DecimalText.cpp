#include "profile/DecimalText.h"

#include <algorithm>
#include <limits>
#include <string>

LONG ParseDecimal(CWideView text)
{
    text.remove_prefix(std::min(text.find_first_not_of(OLESTR(" \t\n\v\f\r")), text.size()));
    const bool bNegative = text.starts_with(OLESTR('-'));
    if (bNegative || text.starts_with(OLESTR('+')))
        text.remove_prefix(1);

    constexpr long long beyondAll = std::numeric_limits<LONG>::max() * 2LL;
    long long nValue = 0;
    for (const WCHAR ch : text)
    {
        if (ch < OLESTR('0') || ch > OLESTR('9'))
            break;
        nValue = std::min(nValue * 10 + (ch - OLESTR('0')), beyondAll);
    }
    const long long nSigned = bNegative ? -nValue : nValue;
    return static_cast<LONG>(std::clamp<long long>(nSigned, std::numeric_limits<LONG>::min(), std::numeric_limits<LONG>::max()));
}

CWideString FormatDecimal(LONG lValue)
{
    const std::string digits = std::to_string(lValue);
    return CWideString(digits.begin(), digits.end());
}
