#include "host/Difference.h"

#include "host/XmlScanner.h"
#include "values/Utf8Text.h"

#include <dtl/dtl.hpp>
#include <sstream>
#include <vector>

namespace
{
constexpr CWideView mask = OLESTR("********");
constexpr CWideView keyElements[] = {OLESTR("sharedKey"), OLESTR("keyMaterial")};

bool HoldsKey(CWideView name)
{
    for (const CWideView element : keyElements)
        if (LocalNameOf(name) == element)
            return true;
    return false;
}

// Inside a key only the elements' names and the layout stay.
CWideString Masked(const XmlToken& token, CWideView written)
{
    switch (token.kind)
    {
    case XmlTokenKind::EndTag:
        return CWideString(written);
    case XmlTokenKind::StartTag:
        return CWideString(OLESTR("<")) + CWideString(token.name) + OLESTR(">");
    case XmlTokenKind::EmptyTag:
        return CWideString(OLESTR("<")) + CWideString(token.name) + OLESTR("/>");
    default:
        return CWideString(written.find_first_not_of(xmlWhiteSpace) == CWideView::npos ? written : mask);
    }
}

std::vector<std::string> LinesOf(CWideView text)
{
    std::vector<std::string> lines;
    while (!text.empty())
    {
        const std::size_t nEnd = text.find(OLESTR('\n'));
        CWideView line = text.substr(0, nEnd);
        if (line.ends_with(OLESTR('\r')))
            line.remove_suffix(1);
        lines.push_back(Utf8Of(line));
        text.remove_prefix(nEnd == CWideView::npos ? text.size() : nEnd + 1);
    }
    return lines;
}
} // namespace

CWideString WithoutKeys(CWideView profile)
{
    CWideString strMasked;
    CXmlScanner scanner(profile);
    std::size_t nKeyDepth = 0; // elements open from the outermost key element on
    for (XmlToken token; scanner.Next(token);)
    {
        const CWideView written = profile.substr(token.nBegin, token.nEnd - token.nBegin);
        const bool bInKey = nKeyDepth != 0;
        const bool bKeyTag = token.kind == XmlTokenKind::StartTag && HoldsKey(token.name);
        strMasked += bInKey || bKeyTag ? Masked(token, written) : CWideString(written);
        if (token.kind == XmlTokenKind::StartTag && (bInKey || bKeyTag))
            ++nKeyDepth;
        else if (token.kind == XmlTokenKind::EndTag && bInKey)
            --nKeyDepth;
    }
    return strMasked;
}

std::string ChangeReport(const std::string& strBeforeName, CWideView before, const std::string& strAfterName, CWideView after)
{
    if (before == after)
        return strBeforeName + ": nothing changed\n";
    const std::vector<std::string> linesBefore = LinesOf(WithoutKeys(before));
    const std::vector<std::string> linesAfter = LinesOf(WithoutKeys(after));
    if (linesBefore == linesAfter)
        return strBeforeName + ": only what is not shown changed\n";
    dtl::Diff<std::string> difference(linesBefore, linesAfter);
    difference.onHuge();
    difference.compose();
    difference.composeUnifiedHunks();
    std::ostringstream text;
    text << "--- " << strBeforeName << "\n+++ " << strAfterName << "\n";
    difference.printUnifiedFormat(text);
    return text.str();
}
