#include "host/KeyMask.h"

#include "host/HostError.h"
#include "host/XmlScanner.h"
#include "host/check/ElementText.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>
#include <vector>

namespace
{
// All names here are in lower case, as Folded makes them.
constexpr CWideView keyNames[] = {OLESTR("sharedkey"), OLESTR("keymaterial"), OLESTR("password")};
// Elements of a key that tell nothing of it.
constexpr CWideView namesWithinKeys[] = {OLESTR("keytype"), OLESTR("protected"), OLESTR("keymaterial")};
// What ends a piece of markup stays in sight.
constexpr CWideView endings[] = {OLESTR("-->"), OLESTR("]]>"), OLESTR("?>"), OLESTR("/>"), OLESTR(">")};

WCHAR Folded(WCHAR ch)
{
    return ch >= OLESTR('A') && ch <= OLESTR('Z') ? static_cast<WCHAR>(ch - OLESTR('A') + OLESTR('a')) : ch;
}

CWideString Folded(CWideView text)
{
    CWideString strFolded(text);
    for (WCHAR& ch : strFolded)
        ch = Folded(ch);
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

// As far as a key's name may be mistaken for another.
bool IsName(CWideView name)
{
    const CWideString strFolded = Folded(name);
    return !name.empty() &&
           std::all_of(strFolded.begin(), strFolded.end(), [](WCHAR ch) { return ch == OLESTR(':') || IsNameCharacter(ch); });
}

std::size_t EndOfName(CWideView text, std::size_t nName)
{
    while (nName < text.size() && IsNameCharacter(text[nName]))
        ++nName;
    return nName;
}

// A text in lower case and with every reference resolved, also those that come of resolving others: nobody knows how often the
// text is going to be read.
class CReadText
{
public:
    explicit CReadText(CWideView written) : m_written(written)
    {
        for (std::size_t n = 0; n < written.size(); ++n)
        {
            WCHAR ch = Folded(written[n]);
            std::size_t nPosition = n;
            while (ch == OLESTR(';') && TakeReference(ch, nPosition))
            {
            }
            m_strText += ch;
            m_positions.push_back(nPosition);
        }
        m_positions.push_back(written.size());
    }

    CWideView Text() const
    {
        return m_strText;
    }

    // How the characters are written.
    CWideView Written(std::size_t nBegin, std::size_t nEnd) const
    {
        return m_written.substr(m_positions[nBegin], m_positions[nEnd] - m_positions[nBegin]);
    }

private:
    // Takes the reference off the text's end that the semicolon makes complete, for the character that it stands for.
    bool TakeReference(WCHAR& ch, std::size_t& nPosition)
    {
        const std::size_t nBegin = m_strText.find_last_not_of(OLESTR("#abcdefghijklmnopqrstuvwxyz0123456789"));
        if (nBegin == CWideString::npos || m_strText[nBegin] != OLESTR('&'))
            return false;
        const auto resolved = ReferenceOf(CWideView(m_strText).substr(nBegin + 1));
        if (!resolved || resolved->size() != 1)
            return false;
        ch = Folded(resolved->front());
        nPosition = m_positions[nBegin];
        m_strText.resize(nBegin);
        m_positions.resize(nBegin);
        return true;
    }

    CWideView m_written;
    CWideString m_strText;
    std::vector<std::size_t> m_positions; // in what is written; of the end too
};

// What stands before a name and its prefix.
CWideView Before(CWideView text, std::size_t nName)
{
    if (nName == 0 || text[nName - 1] != OLESTR(':'))
        return text.substr(0, nName);
    std::size_t nPrefix = nName - 1;
    while (nPrefix > 0 && IsNameCharacter(text[nPrefix - 1]))
        --nPrefix;
    return text.substr(0, nPrefix);
}

CWideView WithoutBlanksBehind(CWideView text)
{
    return text.substr(0, text.find_last_not_of(xmlWhiteSpace) + 1);
}

// Where the "<" at the text's end stands; the sign may follow it, and blanks.
std::optional<std::size_t> FindOpening(CWideView before, WCHAR chSign)
{
    before = WithoutBlanksBehind(before);
    if (before.ends_with(chSign))
        before = WithoutBlanksBehind(before.substr(0, before.size() - 1));
    return before.ends_with(OLESTR('<')) ? std::optional(before.size() - 1) : std::nullopt;
}

struct Hidden
{
    std::size_t nBegin;
    std::size_t nEnd;        // no less than nBegin
    CWideView shownBehind{}; // what of it is shown all the same
};

// Where the last end tag of the name begins, when that is no nearer than nFrom.
std::optional<std::size_t> LastEndTag(CWideView text, CWideView name, std::size_t nFrom)
{
    for (std::size_t n = text.rfind(name); n != CWideView::npos && n > nFrom; n = text.rfind(name, n - 1))
    {
        const CWideView before = Before(text, n);
        const CWideView behind = text.substr(n + name.size());
        const auto nEndTag = FindOpening(before, OLESTR('/'));
        if (nEndTag >= nFrom && WithoutBlanksBehind(before).ends_with(OLESTR('/')) &&
            (behind.empty() || !IsNameCharacter(behind.front())))
            return nEndTag;
    }
    return std::nullopt;
}

// Up to the last end tag of any key: those before it may stand within keys.
Hidden ElementContent(CWideView text, std::size_t nEnd)
{
    const std::size_t nContent = text.substr(nEnd).starts_with(OLESTR('>')) ? nEnd + 1 : nEnd;
    std::optional<std::size_t> nLast;
    for (const CWideView name : keyNames)
        nLast = std::max(nLast, LastEndTag(text, name, nContent));
    return {nContent, nLast.value_or(text.size())};
}

// Nothing is hidden behind a name that is no attribute's. In a tag, what follows the value is hidden with it: it is a part of the
// key when that has a quote in it.
Hidden AttributeValue(const CReadText& read, std::size_t nEnd, bool bInTag)
{
    const CWideView text = read.Text();
    const auto skipSpace = [&](std::size_t n) { return std::min(text.find_first_not_of(xmlWhiteSpace, n), text.size()); };
    const std::size_t nEquals = skipSpace(nEnd);
    if (!text.substr(nEquals).starts_with(OLESTR('=')))
        return {nEnd, nEnd};
    const std::size_t nValue = skipSpace(nEquals + 1);
    // What is written in another way than the opening quote, or as a reference, is a part of the value.
    const auto skipUnless = [&](std::size_t n, const auto& isEnd)
    {
        while (n < text.size() && !isEnd(read.Written(n, n + 1)))
            ++n;
        return n;
    };
    constexpr CWideView quotes = OLESTR("\"'");
    constexpr CWideView endsOfWords = OLESTR(" \t\r\n<>");
    const bool bQuoted = nValue < text.size() && quotes.find(text[nValue]) != CWideView::npos;
    const CWideView quote = bQuoted ? read.Written(nValue, nValue + 1) : CWideView();
    const std::size_t nBegin = nValue + (bQuoted ? 1 : 0);
    const std::size_t nValueEnd = skipUnless(
        nBegin, [&](CWideView written) { return bQuoted ? written == quote : endsOfWords.find(written) != CWideView::npos; });
    if (!bInTag)
        return {nBegin, nValueEnd};
    return {nBegin, std::min(text.find(OLESTR('>'), nValueEnd), text.size()), quote};
}

// A piece of text in which the names mean keys wherever something looks like a tag or an attribute.
CWideString MaskedWords(CWideView written)
{
    const CReadText read(written);
    const CWideView text = read.Text();
    CWideString strShown;
    std::size_t nShown = 0; // how much of the piece is shown or hidden already
    bool bInTag = false;
    for (std::size_t nName = 0, nEnd = 0; nName < text.size(); nName = std::max(nEnd + 1, nShown))
    {
        if (const CWideView before = text.substr(0, nName); before.ends_with(OLESTR('<')) || before.ends_with(OLESTR('>')))
            bInTag = before.ends_with(OLESTR('<')) && text[nName] != OLESTR('!') && text[nName] != OLESTR('?');
        nEnd = EndOfName(text, nName);
        const bool bPrefix = text.substr(nEnd).starts_with(OLESTR(':'));
        if (bPrefix || !IsOneOf(text.substr(nName, nEnd - nName), keyNames))
            continue;
        const bool bTag = FindOpening(Before(text, nName), OLESTR('?')).has_value();
        const Hidden hidden = bTag ? ElementContent(text, nEnd) : AttributeValue(read, nEnd, bInTag);
        if (hidden.nBegin == hidden.nEnd)
            continue;
        strShown += read.Written(nShown, hidden.nBegin);
        strShown.append(keyMask).append(hidden.shownBehind);
        nShown = hidden.nEnd;
    }
    return strShown += read.Written(nShown, text.size());
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

// With no more than the first attribute's name: those behind it may be parts of a key that has a quote in it.
CWideString KeyTag(CWideView text, const XmlToken& tag)
{
    CWideString strTag = OLESTR("<") + CWideString(tag.name);
    if (const auto attributes = AttributesOf(text, tag); !attributes.empty())
        strTag.append(OLESTR(" ")).append(attributes.front().name).append(OLESTR("='")).append(keyMask).append(OLESTR("'"));
    return strTag + (tag.kind == XmlTokenKind::EmptyTag ? OLESTR("/>") : OLESTR(">"));
}

bool IsBlank(CWideView written)
{
    return written.find_first_not_of(xmlWhiteSpace) == CWideView::npos;
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
            if (m_key.empty())
                m_strMasked += MaskedPiece(m_text.substr(m_nDone));
            else if (!m_bHiding)
                m_strMasked += keyMask;
        }
        return std::move(m_strMasked);
    }

private:
    // What is one text to a reader is one token here, with the comments and instructions in it.
    bool Next(XmlToken& token)
    {
        if (!m_scanner.Next(token))
            return false;
        const CWideView written = Written(token);
        if (token.kind != XmlTokenKind::Text && (written.find(OLESTR('<'), 1) != CWideView::npos || !IsName(token.name)))
            throw CHostError("a tag that is none");
        XmlToken next;
        for (CXmlScanner ahead = m_scanner;
             token.kind == XmlTokenKind::Text && IsCharacterData(written) && ahead.Next(next) &&
             next.kind == XmlTokenKind::Text && (IsCharacterData(Written(next)) || !IsBlank(Written(token)));
             m_scanner = ahead)
            token.nEnd = next.nEnd;
        return true;
    }

    void Add(const XmlToken& token)
    {
        const bool bKeyTag = IsKeyTag(token);
        if (!m_key.empty())
            AddWithinKey(token);
        else
            m_strMasked += bKeyTag ? KeyTag(m_text, token) : MaskedPiece(Written(token));
        if (token.kind == XmlTokenKind::StartTag && (bKeyTag || !m_key.empty()))
            m_key.push_back(token.name);
        else if (token.kind == XmlTokenKind::EndTag && !m_key.empty() && m_key.back() == token.name)
            m_key.pop_back();
    }

    void AddWithinKey(const XmlToken& token)
    {
        const CWideView written = Written(token);
        const bool bTag = token.kind != XmlTokenKind::Text;
        const bool bEndTag = token.kind == XmlTokenKind::EndTag;
        const bool bTellsNothing =
            bTag && PrefixOf(token.name) == PrefixOf(m_key.front()) && IsOneOf(Folded(LocalNameOf(token.name)), namesWithinKeys);
        if (bTellsNothing || (bEndTag && m_key.size() == 1 && token.name == m_key.front()))
        {
            m_strMasked += bEndTag ? CWideString(OLESTR("</")).append(token.name).append(OLESTR(">")) : KeyTag(m_text, token);
            m_bHiding = false;
        }
        else if (!bTag && IsBlank(written))
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
    std::vector<CWideView> m_key; // the names of the elements open from the outermost key element on
    bool m_bHiding = false;       // one mask stands for everything since the last tag that is shown
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
