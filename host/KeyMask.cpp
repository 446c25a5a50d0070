#include "host/KeyMask.h"

#include "host/HostError.h"
#include "host/XmlScanner.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

namespace
{
// All names and forms here are in lower case, as Folded makes them.
constexpr CWideView keyNames[] = {OLESTR("sharedkey"), OLESTR("keymaterial"), OLESTR("password")};
// Elements of a key that tell nothing of it.
constexpr CWideView namesWithinKeys[] = {OLESTR("keytype"), OLESTR("protected"), OLESTR("keymaterial")};
// The "<" of a tag as a reference, without the ampersand, which may be one again.
constexpr CWideView references[] = {OLESTR("lt;"), OLESTR("#60;"), OLESTR("#x3c;")};
constexpr CWideView ampersand = OLESTR("amp;");
constexpr CWideView quotes[] = {OLESTR("\""), OLESTR("'"), OLESTR("&quot;"), OLESTR("&apos;"), OLESTR("&#34;"), OLESTR("&#39;")};
// What ends a piece of markup stays in sight.
constexpr CWideView endings[] = {OLESTR("-->"), OLESTR("]]>"), OLESTR("?>"), OLESTR("/>"), OLESTR(">")};

// Positions stay: only single letters change.
CWideString Folded(CWideView text)
{
    CWideString strFolded(text);
    for (WCHAR& ch : strFolded)
        if (ch >= OLESTR('A') && ch <= OLESTR('Z'))
            ch = static_cast<WCHAR>(ch - OLESTR('A') + OLESTR('a'));
    return strFolded;
}

template <std::size_t n>
bool IsOneOf(CWideView name, const CWideView (&names)[n])
{
    return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

bool IsKeyTag(const XmlToken& token)
{
    return (token.kind == XmlTokenKind::StartTag || token.kind == XmlTokenKind::EmptyTag) && IsKeyName(token.name);
}

bool IsNameCharacter(WCHAR ch)
{
    constexpr CWideView others = OLESTR("-_.");
    return (ch >= OLESTR('a') && ch <= OLESTR('z')) || (ch >= OLESTR('0') && ch <= OLESTR('9')) || ch >= 0x80 ||
           others.find(ch) != CWideView::npos;
}

std::size_t EndOfName(CWideView folded, std::size_t nName)
{
    while (nName < folded.size() && IsNameCharacter(folded[nName]))
        ++nName;
    return nName;
}

// What stands before a name and its prefix.
CWideView Before(CWideView folded, std::size_t nName)
{
    if (nName == 0 || folded[nName - 1] != OLESTR(':'))
        return folded.substr(0, nName);
    std::size_t nPrefix = nName - 1;
    while (nPrefix > 0 && IsNameCharacter(folded[nPrefix - 1]))
        --nPrefix;
    return folded.substr(0, nPrefix);
}

// Where the "<" at the text's end begins, in whatever way it is written.
std::optional<std::size_t> FindOpening(CWideView before)
{
    if (before.ends_with(OLESTR('<')))
        return before.size() - 1;
    const auto* pReference = std::find_if(std::begin(references), std::end(references),
                                          [&](CWideView reference) { return before.ends_with(reference); });
    if (pReference == std::end(references))
        return std::nullopt;
    before.remove_suffix(pReference->size());
    while (before.ends_with(ampersand))
        before.remove_suffix(ampersand.size());
    return before.ends_with(OLESTR('&')) ? std::optional(before.size() - 1) : std::nullopt;
}

CWideView WithoutSign(CWideView before, WCHAR chSign)
{
    return before.ends_with(chSign) ? before.substr(0, before.size() - 1) : before;
}

struct Hidden
{
    std::size_t nBegin;
    std::size_t nEnd; // no less than nBegin
};

// Where the last end tag of the name begins, when that is no nearer than nFrom.
std::optional<std::size_t> LastEndTag(CWideView folded, CWideView name, std::size_t nFrom)
{
    for (std::size_t n = folded.rfind(name); n != CWideView::npos && n > nFrom; n = folded.rfind(name, n - 1))
    {
        const CWideView before = Before(folded, n);
        const CWideView behind = folded.substr(n + name.size());
        const auto nEndTag = FindOpening(WithoutSign(before, OLESTR('/')));
        if (nEndTag >= nFrom && before.ends_with(OLESTR('/')) && (behind.empty() || !IsNameCharacter(behind.front())))
            return nEndTag;
    }
    return std::nullopt;
}

// Up to the last end tag of any key: those before it may stand within keys.
Hidden ElementContent(CWideView folded, std::size_t nEnd)
{
    const std::size_t nContent = folded.substr(nEnd).starts_with(OLESTR('>')) ? nEnd + 1 : nEnd;
    std::optional<std::size_t> nLast;
    for (const CWideView name : keyNames)
        nLast = std::max(nLast, LastEndTag(folded, name, nContent));
    return {nContent, nLast.value_or(folded.size())};
}

// Nothing is hidden behind a name that is no attribute's.
Hidden AttributeValue(CWideView folded, std::size_t nEnd)
{
    const auto skipSpace = [&](std::size_t n) { return std::min(folded.find_first_not_of(xmlWhiteSpace, n), folded.size()); };
    const std::size_t nEquals = skipSpace(nEnd);
    if (!folded.substr(nEquals).starts_with(OLESTR('=')))
        return {nEnd, nEnd};
    const std::size_t nValue = skipSpace(nEquals + 1);
    for (const CWideView quote : quotes)
        if (folded.substr(nValue).starts_with(quote))
            return {nValue + quote.size(), std::min(folded.find(quote, nValue + quote.size()), folded.size())};
    return {nValue, std::min(folded.find_first_of(OLESTR(" \t\r\n<>"), nValue), folded.size())};
}

// A piece of text in which the names mean keys wherever something looks like a tag or an attribute.
CWideString MaskedWords(CWideView written)
{
    const CWideString strFolded = Folded(written);
    const CWideView folded = strFolded;
    CWideString strShown;
    std::size_t nShown = 0; // how much of the piece is shown or hidden already
    for (std::size_t nName = 0, nEnd = 0; nName < folded.size(); nName = std::max(nEnd + 1, nShown))
    {
        nEnd = EndOfName(folded, nName);
        const bool bPrefix = folded.substr(nEnd).starts_with(OLESTR(':'));
        if (bPrefix || !IsOneOf(folded.substr(nName, nEnd - nName), keyNames))
            continue;
        const bool bTag = FindOpening(WithoutSign(Before(folded, nName), OLESTR('?'))).has_value();
        const Hidden hidden = bTag ? ElementContent(folded, nEnd) : AttributeValue(folded, nEnd);
        if (hidden.nBegin == hidden.nEnd)
            continue;
        strShown += written.substr(nShown, hidden.nBegin - nShown);
        strShown += keyMask;
        nShown = hidden.nEnd;
    }
    return strShown += written.substr(nShown);
}

CWideString MaskedPiece(CWideView written)
{
    std::size_t cchTail = written.size() - (written.find_last_not_of(xmlWhiteSpace) + 1);
    const auto* pEnding =
        std::find_if(std::begin(endings), std::end(endings), [&](CWideView ending) { return written.ends_with(ending); });
    if (written.starts_with(OLESTR('<')) && pEnding != std::end(endings))
        cchTail = pEnding->size();
    const std::size_t cchHead = written.size() - cchTail;
    return MaskedWords(written.substr(0, cchHead)) + CWideString(written.substr(cchHead));
}

CWideString KeyTag(CWideView text, const XmlToken& tag)
{
    CWideString strTag = OLESTR("<") + CWideString(tag.name);
    for (const XmlAttribute& attribute : AttributesOf(text, tag))
        strTag.append(OLESTR(" ")).append(attribute.name).append(OLESTR("='")).append(keyMask).append(OLESTR("'"));
    return strTag + (tag.kind == XmlTokenKind::EmptyTag ? OLESTR("/>") : OLESTR(">"));
}

bool IsCharacterData(CWideView written)
{
    return !written.starts_with(OLESTR('<')) || written.starts_with(OLESTR("<![CDATA["));
}

// Masks a text token by token. Within a key nothing is shown but white space and the tags that tell nothing.
class CMaskedText
{
public:
    explicit CMaskedText(CWideView text) : m_text(text), m_scanner(text)
    {
    }

    CWideString Masked()
    {
        try
        {
            for (XmlToken token; Next(token); m_nDone = token.nEnd)
                Add(token);
        }
        catch (const CHostError&)
        {
            // What follows is no XML.
            if (m_nKeyDepth == 0)
                m_strMasked += MaskedPiece(m_text.substr(m_nDone));
            else if (!m_bHiding)
                m_strMasked += keyMask;
        }
        return std::move(m_strMasked);
    }

private:
    // Character data that is one text to a reader is one token here.
    bool Next(XmlToken& token)
    {
        if (!m_scanner.Next(token))
            return false;
        const CWideView written = Written(token);
        if (token.kind != XmlTokenKind::Text && written.find(OLESTR('<'), 1) != CWideView::npos)
            throw CHostError("a tag within a tag");
        XmlToken next;
        for (CXmlScanner ahead = m_scanner; token.kind == XmlTokenKind::Text && IsCharacterData(written) && ahead.Next(next) &&
                                            next.kind == XmlTokenKind::Text && IsCharacterData(Written(next));
             m_scanner = ahead)
            token.nEnd = next.nEnd;
        return true;
    }

    void Add(const XmlToken& token)
    {
        const bool bKeyTag = IsKeyTag(token);
        if (m_nKeyDepth != 0)
            AddWithinKey(token);
        else
            m_strMasked += bKeyTag ? KeyTag(m_text, token) : MaskedPiece(Written(token));
        if (token.kind == XmlTokenKind::StartTag && (bKeyTag || m_nKeyDepth != 0))
            ++m_nKeyDepth;
        else if (token.kind == XmlTokenKind::EndTag && m_nKeyDepth != 0)
            --m_nKeyDepth;
    }

    void AddWithinKey(const XmlToken& token)
    {
        const CWideView written = Written(token);
        const bool bTag = token.kind != XmlTokenKind::Text;
        const bool bEnd = token.kind == XmlTokenKind::EndTag && m_nKeyDepth == 1;
        if (bEnd || (bTag && IsOneOf(Folded(LocalNameOf(token.name)), namesWithinKeys)))
        {
            m_strMasked += token.kind == XmlTokenKind::EndTag ? CWideString(written) : KeyTag(m_text, token);
            m_bHiding = false;
        }
        else if (!bTag && written.find_first_not_of(xmlWhiteSpace) == CWideView::npos)
            m_strMasked += written;
        else if (!std::exchange(m_bHiding, true))
            m_strMasked += keyMask;
    }

    CWideView Written(const XmlToken& token) const
    {
        return m_text.substr(token.nBegin, token.nEnd - token.nBegin);
    }

    CWideView m_text;
    CXmlScanner m_scanner;
    CWideString m_strMasked;
    std::size_t m_nDone = 0;
    std::size_t m_nKeyDepth = 0; // elements open from the outermost key element on
    bool m_bHiding = false;      // one mask stands for everything since the last tag that is shown
};
} // namespace

bool IsKeyName(CWideView name)
{
    return IsOneOf(Folded(LocalNameOf(name)), keyNames);
}

CWideString WithoutKeys(CWideView text)
{
    return CMaskedText(text).Masked();
}
