#include "profile/SsidText.h"

#include <optional>

namespace
{
// A digit's value stands in its index: the capital letters follow the small ones.
constexpr CWideView hexDigits = OLESTR("0123456789abcdefABCDEF");
constexpr std::size_t capitalOffset = 6;
constexpr std::size_t hexBase = 16;

std::optional<std::size_t> DigitValue(WCHAR ch)
{
    const std::size_t nIndex = hexDigits.find(ch);
    if (nIndex == CWideView::npos)
        return std::nullopt;
    return nIndex < hexBase ? nIndex : nIndex - capitalOffset;
}
} // namespace

bool HexToSsid(CWideView text, BYTE (&rgbSsid)[maxSsidLength], LONG* plLength)
{
    if (text.size() % 2 != 0 || text.size() / 2 > maxSsidLength)
        return false;
    for (std::size_t i = 0; i < text.size() / 2; ++i)
    {
        const auto nHigh = DigitValue(text[2 * i]);
        const auto nLow = DigitValue(text[2 * i + 1]);
        if (!nHigh || !nLow)
            return false;
        rgbSsid[i] = static_cast<BYTE>(*nHigh * hexBase + *nLow);
    }
    *plLength = static_cast<LONG>(text.size() / 2);
    return true;
}

bool NameToSsid(CWideView text, BYTE (&rgbSsid)[maxSsidLength], LONG* plLength)
{
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
