#include "host/ProfileText.h"

#include "host/HostError.h"
#include "host/XmlScanner.h"

#include <algorithm>

namespace
{
// How far a declaration is looked for; it is a line in practice.
constexpr std::size_t maxDeclarationLength = 1024;

struct EncodingName
{
    std::string_view name; // lower case
    TextEncoding encoding;
};
constexpr EncodingName encodingNames[] = {
    {"utf-8", TextEncoding::Utf8},
    {"utf8", TextEncoding::Utf8},
    // These are looked up for 8-bit text only: whoever re-encoded the file left its declaration behind.
    {"utf-16", TextEncoding::Utf8},
    {"utf-16le", TextEncoding::Utf8},
    {"utf-16be", TextEncoding::Utf8},
    {"ucs-2", TextEncoding::Utf8},
    {"iso-10646-ucs-2", TextEncoding::Utf8},
    {"us-ascii", TextEncoding::UsAscii},
    {"ascii", TextEncoding::UsAscii},
    {"iso-8859-1", TextEncoding::Iso8859_1},
    {"latin1", TextEncoding::Iso8859_1},
    {"windows-1252", TextEncoding::Windows1252},
    {"cp1252", TextEncoding::Windows1252},
};

// What windows-1252 has in place of the control characters 0x80 to 0x9F; its five gaps stay those.
constexpr char16_t windows1252Row[] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};
constexpr char32_t rowBegin = 0x80;
constexpr char32_t rowEnd = 0xA0;

char32_t FromByte(unsigned char byte, TextEncoding encoding)
{
    const bool bInRow = encoding == TextEncoding::Windows1252 && byte >= rowBegin && byte < rowEnd;
    return bInRow ? windows1252Row[byte - rowBegin] : byte;
}

std::optional<unsigned char> ToByte(char32_t codePoint, TextEncoding encoding)
{
    if (codePoint < rowBegin)
        return static_cast<unsigned char>(codePoint);
    if (encoding == TextEncoding::UsAscii)
        return std::nullopt;
    if (codePoint <= 0xFF && (encoding == TextEncoding::Iso8859_1 || codePoint >= rowEnd))
        return static_cast<unsigned char>(codePoint);
    if (encoding == TextEncoding::Iso8859_1)
        return std::nullopt;
    const auto* pFound = std::find(std::begin(windows1252Row), std::end(windows1252Row), codePoint);
    if (pFound == std::end(windows1252Row))
        return std::nullopt;
    return static_cast<unsigned char>(rowBegin + static_cast<char32_t>(pFound - std::begin(windows1252Row)));
}

std::optional<std::size_t> FirstNonAscii(std::string_view bytes)
{
    const auto it = std::find_if(bytes.begin(), bytes.end(), [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
    if (it == bytes.end())
        return std::nullopt;
    return static_cast<std::size_t>(it - bytes.begin());
}

std::string DeclaredName(std::string_view bytes)
{
    CWideString strHead;
    for (const char c : bytes.substr(0, maxDeclarationLength))
        strHead.push_back(static_cast<WCHAR>(static_cast<unsigned char>(c)));
    const auto declaration = FindEncodingDeclaration(strHead);
    std::string strName = declaration ? Utf8Of(declaration->name) : std::string("utf-8");
    for (char& c : strName)
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    return strName;
}

TextEncoding DeclaredEncoding(std::string_view bytes)
{
    const std::string strName = DeclaredName(bytes);
    for (const EncodingName& row : encodingNames)
        if (row.name == strName)
            return row.encoding;
    if (FirstNonAscii(bytes))
        throw CHostError("the encoding \"" + strName + "\" that the file declares is not supported");
    return TextEncoding::UsAscii;
}

[[noreturn]] void RefuseByte(const char* szReason, std::size_t nOffset)
{
    throw CHostError(std::string(szReason) + " at byte offset " + std::to_string(nOffset));
}

CWideString DecodeUtf16(std::string_view bytes, UnicodeForm form, std::size_t cbBefore)
{
    if (bytes.size() % 2 != 0)
        RefuseByte("half a UTF-16 code unit", cbBefore + bytes.size() - 1);
    return WideOfUtf16(bytes, form);
}

CWideString DecodeUtf8(std::string_view bytes, std::size_t cbBefore)
{
    std::size_t nIllFormed = 0;
    if (auto strText = WideOfUtf8(bytes, &nIllFormed))
        return *strText;
    RefuseByte("ill-formed UTF-8", cbBefore + nIllFormed);
}

CWideString DecodeSingleBytes(std::string_view bytes, TextEncoding encoding)
{
    if (encoding == TextEncoding::UsAscii)
        if (const auto nOffset = FirstNonAscii(bytes))
            RefuseByte("a byte that is not US-ASCII, which the file declares,", *nOffset);
    CWideString strText;
    strText.reserve(bytes.size());
    for (const char c : bytes)
        strText.push_back(static_cast<WCHAR>(FromByte(static_cast<unsigned char>(c), encoding)));
    return strText;
}

std::string EncodeUtf16(CWideView text, bool bBigEndian)
{
    std::string strBytes;
    strBytes.reserve(text.size() * 2);
    for (const WCHAR unit : text)
    {
        const char high = static_cast<char>(static_cast<unsigned char>(unit >> 8));
        const char low = static_cast<char>(static_cast<unsigned char>(unit & 0xFF));
        strBytes.push_back(bBigEndian ? high : low);
        strBytes.push_back(bBigEndian ? low : high);
    }
    return strBytes;
}

char32_t TakeCodePoint(CWideView& text)
{
    const char32_t first = text.front();
    text.remove_prefix(1);
    if ((first & 0xFC00) != 0xD800 || text.empty() || (text.front() & 0xFC00) != 0xDC00)
        return first;
    const char32_t second = text.front();
    text.remove_prefix(1);
    return 0x10000 + ((first & 0x3FF) << 10) + (second & 0x3FF);
}

std::string EncodeSingleBytes(CWideView text, TextEncoding encoding)
{
    std::string strBytes;
    strBytes.reserve(text.size());
    while (!text.empty())
    {
        const char32_t codePoint = TakeCodePoint(text);
        if (const auto byte = ToByte(codePoint, encoding))
            strBytes.push_back(static_cast<char>(*byte));
        else
            strBytes += "&#" + std::to_string(static_cast<unsigned long>(codePoint)) + ";";
    }
    return strBytes;
}
} // namespace

std::optional<EncodingDeclaration> FindEncodingDeclaration(CWideView text)
{
    constexpr CWideView opening = OLESTR("<?xml");
    const std::size_t nBegin = text.find_first_not_of(xmlWhiteSpace);
    if (nBegin == CWideView::npos || !text.substr(nBegin).starts_with(opening))
        return std::nullopt;
    const std::size_t nEnd = text.find(OLESTR("?>"), nBegin);
    if (nEnd == CWideView::npos)
        return std::nullopt;
    const std::size_t nAttributes = nBegin + opening.size();
    for (const XmlAttribute& attribute : ScanAttributes(text.substr(nAttributes, nEnd - nAttributes)))
        if (attribute.name == OLESTR("encoding"))
            return EncodingDeclaration{nAttributes + attribute.nBegin, nAttributes + attribute.nEnd, attribute.value};
    return std::nullopt;
}

ProfileText DecodeProfile(std::string_view bytes)
{
    const auto [form, cbMark] = BeginningOf(bytes);
    const std::string_view text = bytes.substr(cbMark);
    if (form != UnicodeForm::Utf8)
        return {DecodeUtf16(text, form, cbMark),
                form == UnicodeForm::Utf16BigEndian ? TextEncoding::Utf16BigEndian : TextEncoding::Utf16LittleEndian,
                cbMark != 0};
    const TextEncoding encoding = cbMark != 0 ? TextEncoding::Utf8 : DeclaredEncoding(bytes);
    if (encoding == TextEncoding::Utf8)
        return {DecodeUtf8(text, cbMark), encoding, cbMark != 0};
    return {DecodeSingleBytes(text, encoding), encoding, false};
}

std::string EncodeProfile(const ProfileText& profile)
{
    const CWideString strText = (profile.bByteOrderMark ? OLESTR("\xFEFF") : OLESTR("")) + profile.strText;
    switch (profile.encoding)
    {
    case TextEncoding::Utf8:
        return Utf8Of(strText);
    case TextEncoding::Utf16LittleEndian:
        return EncodeUtf16(strText, false);
    case TextEncoding::Utf16BigEndian:
        return EncodeUtf16(strText, true);
    default:
        return EncodeSingleBytes(strText, profile.encoding);
    }
}
