// For build servers: one case a file.
#include "host/Shown.h"
#include "host/check/CheckReport.h"
#include "host/check/TextLines.h"

namespace
{
constexpr std::string_view suiteName = "korihost check";

std::string Quoted(std::string_view text)
{
    std::string strQuoted;
    for (const char c : text)
        switch (c)
        {
        case '<':
            strQuoted += "&lt;";
            break;
        case '>':
            strQuoted += "&gt;";
            break;
        case '&':
            strQuoted += "&amp;";
            break;
        case '"':
            strQuoted += "&quot;";
            break;
        default:
            strQuoted += c;
        }
    return strQuoted;
}

std::string LineOf(const Finding& finding, const CTextLines& lines)
{
    std::string strLine;
    if (finding.place)
    {
        const TextPosition position = lines.PositionOf(finding.place->nBegin);
        strLine = std::to_string(position.nLine) + ":" + std::to_string(position.nColumn) + ": ";
    }
    return Quoted(strLine + SeverityName(finding.pRule->severity) + ": " + Escaped(Sentence(finding)) + " [" +
                  finding.pRule->szId + "]\n");
}

std::string JunitHead(const CheckCounts& counts, const ReportOptions& options)
{
    const std::size_t nFailures = counts.nInvalid + (options.bWarningsFail ? counts.nWarnedAbout : 0);
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites>\n<testsuite name=\"" + std::string(suiteName) +
           "\" tests=\"" + std::to_string(counts.nChecked) + "\" failures=\"" + std::to_string(nFailures) + "\" errors=\"" +
           std::to_string(counts.nUnreadable) + "\">\n";
}

// What becomes of the case, told by the element around its findings.
const char* OutcomeOf(const ProfileVerdict& verdict, const ReportOptions& options)
{
    if (verdict.State() == ProfileState::Unreadable)
        return "error";
    const bool bFails = verdict.State() == ProfileState::Invalid || options.bWarningsFail;
    return bFails ? "failure" : "system-out";
}

std::string JunitEntry(const ProfileVerdict& verdict, const ReportOptions& options)
{
    std::string strEntry =
        "<testcase classname=\"" + std::string(suiteName) + "\" name=\"" + Quoted(Shown(verdict.strFile)) + "\"";
    if (verdict.findings.empty())
        return strEntry + "/>\n";
    const std::string strOutcome = OutcomeOf(verdict, options);
    strEntry += ">\n<" + strOutcome;
    if (strOutcome != "system-out")
        strEntry += std::string(" type=\"") + StateName(verdict.State()) + "\" message=\"" +
                    std::to_string(verdict.findings.size()) + (verdict.findings.size() == 1 ? " finding" : " findings") + "\"";
    strEntry += ">";
    const CTextLines lines(verdict.strText);
    for (const Finding& finding : ToldFindings(verdict))
        strEntry += LineOf(finding, lines);
    return strEntry + UntoldLine(verdict) + "</" + strOutcome + ">\n</testcase>\n";
}

std::string JunitTail(const CheckCounts&)
{
    return "</testsuite>\n</testsuites>\n";
}
} // namespace

const CheckReport junitReport = {"junit", true, "", JunitHead, JunitEntry, JunitTail};
