#include "profile/SsidText.h"

#include "values/WideText.h"

namespace
{
// A digit's value stands in its index: the capital letters follow the small ones.
constexpr CWideView hexDigits = OLESTR("0123456789abcdefABCDEF");
constexpr std::size_t capitalOffset = 6;
constexpr std::size_t hexBase = 16;

bool DigitValue(WCHAR ch, std::size_t& nValue)
{
    nValue = hexDigits.find(ch);
    if (nValue == CWideView::npos)
        return false;
    if (nValue >= hexBase)
        nValue -= capitalOffset;
    return true;
}
} // namespace

bool HexToSsid(const WCHAR* szText, BYTE (&rgbSsid)[maxSsidLength], LONG* plLength)
{
    if (!szText)
        return false;
    const CWideView text(szText);
    if (text.size() % 2 != 0 || text.size() / 2 > maxSsidLength)
        return false;
    for (std::size_t i = 0; i < text.size() / 2; ++i)
    {
        std::size_t nHigh = 0;
        std::size_t nLow = 0;
        if (!DigitValue(text[2 * i], nHigh) || !DigitValue(text[2 * i + 1], nLow))
            return false;
        rgbSsid[i] = static_cast<BYTE>(nHigh * hexBase + nLow);
    }
    *plLength = static_cast<LONG>(text.size() / 2);
    return true;
}

bool NameToSsid(const WCHAR* szText, BYTE (&rgbSsid)[maxSsidLength], LONG* plLength)
{
    if (!szText)
        return false;
    const CWideView text(szText);
    if (text.size() > maxSsidLength)
        return false;
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        if (text[i] < OLESTR(' ') || text[i] > OLESTR('~'))
            return false;
        rgbSsid[i] = static_cast<BYTE>(text[i]);
    }
    *plLength = static_cast<LONG>(text.size());
    return true;
}
