// For a person: a line for each finding, and under it the profile's line with a mark.
#include "host/KeyMask.h"
#include "host/Shown.h"
#include "host/check/CheckReport.h"
#include "host/check/TextLines.h"

#include <algorithm>

namespace
{
constexpr std::string_view colourOff = "\x1b[0m";
constexpr std::string_view colourBold = "\x1b[1m";
constexpr std::string_view colourRed = "\x1b[1;31m";
constexpr std::string_view colourYellow = "\x1b[1;33m";
constexpr std::string_view colourGreen = "\x1b[32m";

std::string Coloured(std::string_view colour, const std::string& strText, const ReportOptions& options)
{
    return options.bColours ? std::string(colour) + strText + std::string(colourOff) : strText;
}

// Which part of a text the mask would change, with all of the key's element around it.
TextRange KeysIn(CWideView text)
{
    const CWideString strMasked = WithoutKeys(text);
    const auto [first, firstMasked] = std::mismatch(text.begin(), text.end(), strMasked.begin(), strMasked.end());
    if (first == text.end() && firstMasked == strMasked.end())
        return {text.size(), text.size()};
    const auto last = std::mismatch(text.rbegin(), text.rend(), strMasked.rbegin(), strMasked.rend()).first;
    // Repeated characters may count for the beginning and for the end.
    const auto nBegin = static_cast<std::size_t>(first - text.begin());
    const auto nEnd = std::max(nBegin, static_cast<std::size_t>(last.base() - text.begin()));
    constexpr CWideView keyElement = OLESTR("sharedKey");
    const std::size_t nElement = text.substr(0, nBegin).rfind(keyElement);
    const std::size_t nElementEnd = text.find(keyElement, nEnd);
    return {nElement == CWideView::npos ? nBegin : nElement,
            nElementEnd == CWideView::npos ? nEnd : nElementEnd + keyElement.size()};
}

std::size_t WidthShown(CWideView text)
{
    return WidthOf(Escaped(Utf8Of(text)));
}

// The part of a long line that has the place in it.
TextRange Window(const TextRange& place, std::size_t nLineBegin, std::size_t nLineEnd)
{
    constexpr std::size_t cchBefore = 60;
    constexpr std::size_t cchWindow = 120;
    const std::size_t nBegin = place.nBegin > nLineBegin + cchBefore ? place.nBegin - cchBefore : nLineBegin;
    return {nBegin, std::min(nLineEnd, nBegin + cchWindow)};
}

class CTextEntry
{
public:
    CTextEntry(const ProfileVerdict& verdict, const ReportOptions& options)
        : m_verdict(verdict), m_options(options), m_lines(verdict.strText), m_keys(KeysIn(verdict.strText)),
          m_strFile(Shown(verdict.strFile))
    {
    }

    std::string Write() const
    {
        std::string strEntry;
        for (const Finding& finding : ToldFindings(m_verdict))
            strEntry += Headline(finding) + (finding.place ? Excerpt(*finding.place) : "");
        const std::string strUntold = UntoldLine(m_verdict);
        return strUntold.empty() ? strEntry : strEntry + m_strFile + ": " + strUntold;
    }

private:
    std::string Headline(const Finding& finding) const
    {
        std::string strPlace = m_strFile + ":";
        if (finding.place)
        {
            const TextPosition position = m_lines.PositionOf(finding.place->nBegin);
            strPlace += std::to_string(position.nLine) + ":" + std::to_string(position.nColumn) + ":";
        }
        const bool bWarning = finding.pRule->severity == Severity::Warning;
        const std::string strSeverity = SeverityName(finding.pRule->severity) + std::string(":");
        return Coloured(colourBold, strPlace, m_options) + " " +
               Coloured(bWarning ? colourYellow : colourRed, strSeverity, m_options) + " " + Escaped(Sentence(finding)) + " [" +
               finding.pRule->szId + "]\n";
    }

    std::string Excerpt(const TextRange& place) const
    {
        const CWideView text = m_verdict.strText;
        const std::size_t nLine = m_lines.PositionOf(place.nBegin).nLine;
        const std::size_t nLineEnd = m_lines.End(nLine);
        const bool bAboutKeys = m_keys.nBegin < nLineEnd && m_keys.nEnd > m_lines.Begin(nLine);
        if (bAboutKeys || nLineEnd == m_lines.Begin(nLine))
            return {};
        const TextRange window = Window(place, m_lines.Begin(nLine), nLineEnd);
        CWideString strLine(text.substr(window.nBegin, window.nEnd - window.nBegin));
        std::replace(strLine.begin(), strLine.end(), OLESTR('\t'), OLESTR(' '));
        const std::size_t nMark = place.nBegin - window.nBegin;
        const CWideView marked = CWideView(strLine).substr(nMark, std::max<std::size_t>(place.nEnd - place.nBegin, 1));
        const std::string strMark = "^" + std::string(std::max<std::size_t>(WidthShown(marked), 1) - 1, '~');
        return "    " + Escaped(Utf8Of(strLine)) + "\n    " + std::string(WidthShown(CWideView(strLine).substr(0, nMark)), ' ') +
               Coloured(colourGreen, strMark, m_options) + "\n";
    }

    const ProfileVerdict& m_verdict;
    const ReportOptions& m_options;
    CTextLines m_lines;
    TextRange m_keys;
    std::string m_strFile;
};

std::string TextHead(const CheckCounts&, const ReportOptions&)
{
    return {};
}

std::string TextEntry(const ProfileVerdict& verdict, const ReportOptions& options)
{
    return verdict.findings.empty() ? std::string() : CTextEntry(verdict, options).Write();
}

std::string TextTail(const CheckCounts& counts)
{
    return std::to_string(counts.nChecked) + (counts.nChecked == 1 ? " profile" : " profiles") +
           " checked: " + std::to_string(counts.nValid) + " valid (" + std::to_string(counts.nWarnedAbout) + " with warnings), " +
           std::to_string(counts.nInvalid) + " invalid, " + std::to_string(counts.nUnreadable) + " unreadable\n";
}
} // namespace

const CheckReport textReport = {"text", false, "", TextHead, TextEntry, TextTail};
