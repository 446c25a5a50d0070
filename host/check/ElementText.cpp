#include "host/check/ElementText.h"

#include "host/XmlScanner.h"

#include <algorithm>
#include <charconv>
#include <string>

namespace
{
constexpr CWideView openingOfCharacters = OLESTR("<![CDATA[");
constexpr std::size_t cchClosingOfCharacters = 3;

struct Entity
{
    CWideView name;
    WCHAR ch;
};
// Without a document type there are no others.
constexpr Entity entities[] = {{OLESTR("lt"), OLESTR('<')},
                               {OLESTR("gt"), OLESTR('>')},
                               {OLESTR("amp"), OLESTR('&')},
                               {OLESTR("quot"), OLESTR('"')},
                               {OLESTR("apos"), OLESTR('\'')}};

CWideString Units(unsigned uCodePoint)
{
    if (uCodePoint < 0x10000)
        return CWideString(1, static_cast<WCHAR>(uCodePoint));
    return {static_cast<WCHAR>(0xD800 + ((uCodePoint - 0x10000) >> 10)), static_cast<WCHAR>(0xDC00 + (uCodePoint & 0x3FF))};
}

// A document's line ends are line feeds, however the file writes them.
void AppendCharacters(CWideString& strText, CWideView piece, bool bHasReferences)
{
    for (std::size_t n = 0; n < piece.size(); ++n)
    {
        const std::size_t nEnd = bHasReferences && piece[n] == OLESTR('&') ? piece.find(OLESTR(';'), n) : CWideView::npos;
        if (nEnd != CWideView::npos)
        {
            strText += ReferenceOf(piece.substr(n + 1, nEnd - n - 1)).value_or(CWideString());
            n = nEnd;
        }
        else if (piece[n] != OLESTR('\r'))
            strText += piece[n];
        else if (!piece.substr(n + 1).starts_with(OLESTR('\n')))
            strText += OLESTR('\n');
    }
}

// At the depth 0 alone, or at all depths.
CWideString Gather(CWideView content, bool bBelow)
{
    CWideString strText;
    CXmlScanner scanner(content);
    int nDepth = 0;
    for (XmlToken token; scanner.Next(token);)
    {
        nDepth += token.kind == XmlTokenKind::StartTag ? 1 : token.kind == XmlTokenKind::EndTag ? -1 : 0;
        if (token.kind != XmlTokenKind::Text || (nDepth != 0 && !bBelow))
            continue;
        const CWideView piece = content.substr(token.nBegin, token.nEnd - token.nBegin);
        if (!piece.starts_with(OLESTR('<')))
            AppendCharacters(strText, piece, true);
        else if (piece.starts_with(openingOfCharacters))
            AppendCharacters(
                strText,
                piece.substr(openingOfCharacters.size(), piece.size() - openingOfCharacters.size() - cchClosingOfCharacters),
                false);
    }
    return strText;
}
} // namespace

bool IsCharacter(CWideView text, std::size_t n)
{
    const WCHAR ch = text[n];
    const auto isHalf = [text](std::size_t nOther, WCHAR chKind)
    { return nOther < text.size() && (text[nOther] & 0xFC00) == chKind; };
    if (isHalf(n, 0xD800))
        return isHalf(n + 1, 0xDC00);
    if (isHalf(n, 0xDC00))
        return n != 0 && isHalf(n - 1, 0xD800);
    return ch == OLESTR('\t') || ch == OLESTR('\n') || ch == OLESTR('\r') || (ch >= OLESTR(' ') && ch < 0xFFFE);
}

std::optional<CWideString> ReferenceOf(CWideView name)
{
    if (!name.starts_with(OLESTR('#')))
    {
        const auto* pEntity =
            std::find_if(std::begin(entities), std::end(entities), [&](const Entity& entity) { return entity.name == name; });
        return pEntity == std::end(entities) ? std::nullopt : std::optional(CWideString(1, pEntity->ch));
    }
    const bool bHex = name.starts_with(OLESTR("#x"));
    const std::string strDigits(name.begin() + (bHex ? 2 : 1), name.end());
    unsigned uCodePoint = 0;
    const char* const pEnd = strDigits.data() + strDigits.size();
    const auto [pRead, error] = std::from_chars(strDigits.data(), pEnd, uCodePoint, bHex ? 16 : 10);
    if (error != std::errc() || pRead != pEnd || uCodePoint > 0x10FFFF || !IsCharacter(Units(uCodePoint), 0))
        return std::nullopt;
    return Units(uCodePoint);
}

CWideString TextOf(const CElementMap& map, const XmlElement& element)
{
    return Gather(map.Content(element), true);
}

CWideString OwnTextOf(const CElementMap& map, const XmlElement& element)
{
    return Gather(map.Content(element), false);
}

CWideView Trimmed(CWideView text)
{
    text.remove_prefix(std::min(text.find_first_not_of(xmlWhiteSpace), text.size()));
    return text.substr(0, text.find_last_not_of(xmlWhiteSpace) + 1);
}
