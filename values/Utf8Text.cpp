#include "values/Utf8Text.h"

#include <new>

namespace
{
// A code unit takes at least one byte, and at most three.
constexpr std::size_t cbMostOfUnit = 3;
constexpr std::size_t cbLongestSequence = 4;

std::optional<CWideString> ToWide(std::string_view bytes, DWORD dwFlags)
{
    CWideString strText(bytes.size(), WCHAR{});
    if (bytes.empty())
        return strText;
    const int cch = MultiByteToWideChar(CP_UTF8, dwFlags, bytes.data(), static_cast<int>(bytes.size()), strText.data(),
                                        static_cast<int>(strText.size()));
    if (cch == 0)
        return std::nullopt;
    strText.resize(static_cast<std::size_t>(cch));
    return strText;
}

std::optional<std::string> ToUtf8(CWideView text, DWORD dwFlags)
{
    std::string strBytes(text.size() * cbMostOfUnit, '\0');
    if (text.empty())
        return strBytes;
    const int cb = WideCharToMultiByte(CP_UTF8, dwFlags, text.data(), static_cast<int>(text.size()), strBytes.data(),
                                       static_cast<int>(strBytes.size()), nullptr, nullptr);
    if (cb == 0)
        return std::nullopt;
    strBytes.resize(static_cast<std::size_t>(cb));
    return strBytes;
}
} // namespace

std::optional<CWideString> WideOfUtf8(std::string_view bytes)
{
    return ToWide(bytes, MB_ERR_INVALID_CHARS);
}

std::size_t IllFormedUtf8At(std::string_view bytes)
{
    std::size_t nPosition = 0;
    for (std::size_t cb = 1; nPosition < bytes.size() && cb <= cbLongestSequence;)
    {
        const bool bSequence = WideOfUtf8(bytes.substr(nPosition, cb)).has_value();
        nPosition += bSequence ? cb : 0;
        cb = bSequence ? 1 : cb + 1;
    }
    return nPosition;
}

std::optional<std::string> Utf8OfWide(CWideView text)
{
    return ToUtf8(text, WC_ERR_INVALID_CHARS);
}

CWideString WideOf(std::string_view bytes)
{
    if (auto strText = ToWide(bytes, 0))
        return *strText;
    throw std::bad_alloc();
}

std::string Utf8Of(CWideView text)
{
    if (auto strBytes = ToUtf8(text, 0))
        return *strBytes;
    throw std::bad_alloc();
}

TextBeginning BeginningOf(std::string_view bytes)
{
    if (bytes.starts_with("\xEF\xBB\xBF"))
        return {false, false, 3};
    if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF"))
        return {true, bytes[0] == '\xFE', 2};
    return {bytes.size() >= 2 && (bytes[0] == '\0') != (bytes[1] == '\0'), bytes.starts_with('\0'), 0};
}

CWideString WideOfUtf16(std::string_view bytes, bool bBigEndian)
{
    CWideString strText;
    for (std::size_t n = 0; n + 1 < bytes.size(); n += 2)
    {
        const unsigned uFirst = static_cast<unsigned char>(bytes[n]);
        const unsigned uSecond = static_cast<unsigned char>(bytes[n + 1]);
        strText.push_back(static_cast<WCHAR>(bBigEndian ? uFirst << 8 | uSecond : uSecond << 8 | uFirst));
    }
    return strText;
}
