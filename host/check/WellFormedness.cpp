#include "host/check/WellFormedness.h"

#include "host/HostError.h"
#include "host/check/ElementText.h"

#include <algorithm>
#include <set>

namespace
{
// Document components follow elements no deeper.
constexpr std::size_t maxDepth = 256;

bool IsNameStart(WCHAR ch)
{
    return (ch >= OLESTR('a') && ch <= OLESTR('z')) || (ch >= OLESTR('A') && ch <= OLESTR('Z')) || ch == OLESTR('_') ||
           ch == OLESTR(':') || ch >= 0xC0;
}

bool IsXmlName(CWideView name)
{
    const auto isPart = [](WCHAR ch) {
        return IsNameStart(ch) || (ch >= OLESTR('0') && ch <= OLESTR('9')) || ch == OLESTR('-') || ch == OLESTR('.') ||
               ch == 0xB7;
    };
    return !name.empty() && IsNameStart(name.front()) && std::all_of(name.begin(), name.end(), isPart);
}

class CFaultSearch
{
public:
    explicit CFaultSearch(CWideView text) : m_text(text)
    {
    }

    void Run()
    {
        for (std::size_t n = 0; n < m_text.size(); ++n)
            if (!IsCharacter(m_text, n))
                Fail(n, n + 1, "a character that no document may hold");
        XmlToken token;
        for (CXmlScanner scanner(m_text); Next(scanner, token);)
            Look(token);
        if (!m_open.empty())
            Fail(m_open.back().nBegin, m_open.back().nEnd, "<" + Utf8Of(m_open.back().name) + "> is never closed");
        if (!m_bHadRoot)
            Fail(m_text.size(), m_text.size(), "there is no element");
    }

private:
    [[noreturn]] static void Fail(std::size_t nBegin, std::size_t nEnd, std::string strReason)
    {
        throw DocumentFault{{nBegin, nEnd}, std::move(strReason)};
    }

    bool Next(CXmlScanner& scanner, XmlToken& token) const
    {
        const std::size_t nBegin = token.nEnd;
        try
        {
            return scanner.Next(token);
        }
        catch (const CHostError&)
        {
            const bool bComment = m_text.substr(nBegin).starts_with(OLESTR("<!--"));
            Fail(nBegin, nBegin + 1, bComment ? "a comment that never ends" : "a tag that never ends");
        }
    }

    void Look(const XmlToken& token)
    {
        if (token.kind == XmlTokenKind::Text)
            LookAtText(token);
        else if (token.kind == XmlTokenKind::EndTag)
            LookAtEndTag(token);
        else
            LookAtStartTag(token);
    }

    void LookAtText(const XmlToken& token) const
    {
        const CWideView text = m_text.substr(token.nBegin, token.nEnd - token.nBegin);
        constexpr CWideView commentOpening = OLESTR("<!--");
        if (text.starts_with(commentOpening))
        {
            const std::size_t nHyphens = text.find(OLESTR("--"), commentOpening.size());
            if (nHyphens + 3 != text.size())
                Fail(token.nBegin + nHyphens, token.nBegin + nHyphens + 2, "two hyphens within a comment");
            return;
        }
        if (text.starts_with(OLESTR("<?xml ")) && Trimmed(m_text.substr(0, token.nBegin)) != CWideView())
            Fail(token.nBegin, token.nEnd, "a declaration that is not at the beginning");
        if (text.starts_with(OLESTR("<?")))
            return;
        if (m_open.empty() && !Trimmed(text).empty())
            Fail(token.nBegin + static_cast<std::size_t>(Trimmed(text).data() - text.data()), token.nEnd,
                 "text outside of the root element");
        if (text.starts_with(OLESTR('<')))
            return;
        if (const std::size_t nEnd = text.find(OLESTR("]]>")); nEnd != CWideView::npos)
            Fail(token.nBegin + nEnd, token.nBegin + nEnd + 3, "the end of a CDATA section that has no beginning");
        LookAtReferences(token.nBegin, text);
    }

    void LookAtReferences(std::size_t nBegin, CWideView text) const
    {
        for (std::size_t n = 0; (n = text.find(OLESTR('&'), n)) != CWideView::npos; ++n)
        {
            const std::size_t nEnd = text.find(OLESTR(';'), n);
            if (nEnd == CWideView::npos || !ReferenceOf(text.substr(n + 1, nEnd - n - 1)))
                Fail(nBegin + n, nBegin + n + 1, "an & that begins no known reference (a plain one is written &amp;)");
        }
    }

    void LookAtEndTag(const XmlToken& token)
    {
        if (m_open.empty())
            Fail(token.nBegin, token.nEnd, "</" + Utf8Of(token.name) + "> closes nothing");
        if (token.name != m_open.back().name)
            Fail(token.nBegin, token.nEnd,
                 "</" + Utf8Of(token.name) + "> stands where </" + Utf8Of(m_open.back().name) + "> is expected");
        m_open.pop_back();
    }

    void LookAtStartTag(const XmlToken& token)
    {
        if (!IsXmlName(token.name))
            Fail(token.nBegin, token.nBegin + 1, "a < that begins no tag (a plain one is written &lt;)");
        if (m_open.empty() && m_bHadRoot)
            Fail(token.nBegin, token.nEnd, "a second root element");
        m_bHadRoot = true;
        LookAtAttributes(token);
        if (m_open.size() >= maxDepth)
            Fail(token.nBegin, token.nEnd, "elements too deep in one another");
        if (token.kind == XmlTokenKind::StartTag)
            m_open.push_back(token);
    }

    void LookAtAttributes(const XmlToken& token)
    {
        const std::size_t nInner = token.nBegin + 1 + token.name.size();
        const std::size_t nInnerEnd = token.nEnd - (token.kind == XmlTokenKind::EmptyTag ? 2 : 1);
        std::size_t nEnd = nInner;
        std::set<CWideView> names;
        for (const XmlAttribute& attribute : AttributesOf(m_text, token))
        {
            const std::size_t nBegin = nInner + attribute.nBegin;
            const std::size_t nName = m_text.find_first_not_of(xmlWhiteSpace, nBegin);
            nEnd = nInner + attribute.nEnd;
            if (nName == nBegin || !IsXmlName(attribute.name))
                Fail(nName, nName + 1, "an attribute was expected here");
            if (attribute.value.find(OLESTR('<')) != CWideView::npos)
                Fail(nName, nEnd, "a < in an attribute's value");
            LookAtReferences(static_cast<std::size_t>(attribute.value.data() - m_text.data()), attribute.value);
            if (!names.insert(attribute.name).second)
                Fail(nName, nEnd, "the attribute " + Utf8Of(attribute.name) + " stands twice");
        }
        const std::size_t nRest = m_text.find_first_not_of(xmlWhiteSpace, nEnd);
        if (nRest < nInnerEnd)
            Fail(nRest, nRest + 1, "an attribute was expected here");
        m_declared.resize(m_open.size());
        m_declared.emplace_back();
        for (const CWideView name : names)
            if (PrefixOf(name) == OLESTR("xmlns"))
                m_declared.back().push_back(LocalNameOf(name));
        names.insert(token.name);
        for (const CWideView name : names)
            if (!IsDeclared(PrefixOf(name)))
                Fail(token.nBegin, token.nEnd, "the prefix " + Utf8Of(PrefixOf(name)) + " is declared nowhere around it");
    }

    bool IsDeclared(CWideView prefix) const
    {
        if (prefix.empty() || prefix == OLESTR("xml") || prefix == OLESTR("xmlns"))
            return true;
        return std::any_of(m_declared.begin(), m_declared.end(),
                           [prefix](const std::vector<CWideView>& names)
                           { return std::find(names.begin(), names.end(), prefix) != names.end(); });
    }

    CWideView m_text;
    std::vector<XmlToken> m_open;
    std::vector<std::vector<CWideView>> m_declared; // by each open element
    bool m_bHadRoot = false;
};
} // namespace

std::optional<DocumentFault> FindFault(CWideView text)
{
    try
    {
        CFaultSearch(text).Run();
        return std::nullopt;
    }
    catch (DocumentFault& fault)
    {
        return std::move(fault);
    }
}
