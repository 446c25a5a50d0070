#include "values/Utf8Text.h"

#include <new>

namespace
{
constexpr std::size_t cbLongestSequence = 4;

// After a conversion that failed: anything but the text itself, such as want of memory, says nothing about the text.
void RequireIllFormed()
{
    if (GetLastError() != ERROR_NO_UNICODE_TRANSLATION)
        throw std::bad_alloc();
}

// Both calls ask at once for the most that the result can be, because asking for its size first converts everything twice.
std::optional<CWideString> ToWide(std::string_view bytes, DWORD dwFlags)
{
    if (bytes.empty())
        return CWideString();
    const int cb = static_cast<int>(bytes.size());
    CWideString strText(bytes.size(), WCHAR{});
    const int cch = MultiByteToWideChar(CP_UTF8, dwFlags, bytes.data(), cb, strText.data(), cb);
    if (cch == 0)
    {
        RequireIllFormed();
        return std::nullopt;
    }
    strText.resize(static_cast<std::size_t>(cch));
    return strText;
}

std::optional<std::string> ToUtf8(CWideView text, DWORD dwFlags)
{
    constexpr std::size_t cbLongestUnit = 3;
    if (text.empty())
        return std::string();
    std::string strBytes(text.size() * cbLongestUnit, '\0');
    const int cb = WideCharToMultiByte(CP_UTF8, dwFlags, text.data(), static_cast<int>(text.size()), strBytes.data(),
                                       static_cast<int>(strBytes.size()), nullptr, nullptr);
    if (cb == 0)
    {
        RequireIllFormed();
        return std::nullopt;
    }
    strBytes.resize(static_cast<std::size_t>(cb));
    return strBytes;
}

// Of bytes that are not UTF-8.
std::size_t FirstIllFormed(std::string_view bytes)
{
    std::size_t nPosition = 0;
    for (std::size_t cb = 1; cb <= cbLongestSequence && nPosition < bytes.size();)
    {
        const bool bSequence = WideOfUtf8(bytes.substr(nPosition, cb)).has_value();
        nPosition += bSequence ? cb : 0;
        cb = bSequence ? 1 : cb + 1;
    }
    return nPosition;
}
} // namespace

std::optional<CWideString> WideOfUtf8(std::string_view bytes, std::size_t* pnIllFormed)
{
    auto strText = ToWide(bytes, MB_ERR_INVALID_CHARS);
    if (!strText && pnIllFormed)
        *pnIllFormed = FirstIllFormed(bytes);
    return strText;
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
        return {UnicodeForm::Utf8, 3};
    if (bytes.starts_with("\xFF\xFE"))
        return {UnicodeForm::Utf16LittleEndian, 2};
    if (bytes.starts_with("\xFE\xFF"))
        return {UnicodeForm::Utf16BigEndian, 2};
    const std::size_t nZero = bytes.substr(0, 2).find('\0');
    if (nZero == std::string_view::npos)
        return {UnicodeForm::Utf8, 0};
    return {nZero == 0 ? UnicodeForm::Utf16BigEndian : UnicodeForm::Utf16LittleEndian, 0};
}

CWideString WideOfUtf16(std::string_view bytes, UnicodeForm form)
{
    CWideString strText;
    for (; bytes.size() >= sizeof(WCHAR); bytes.remove_prefix(sizeof(WCHAR)))
    {
        const auto first = static_cast<unsigned char>(bytes.front());
        const auto second = static_cast<unsigned char>(bytes[1]);
        const bool bBigEndian = form == UnicodeForm::Utf16BigEndian;
        strText.push_back(static_cast<WCHAR>((bBigEndian ? first : second) * 256 + (bBigEndian ? second : first)));
    }
    return strText;
}
