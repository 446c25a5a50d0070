#include "host/Difference.h"

#include "host/Shown.h"
#include "values/Utf8Text.h"

#include <dtl/dtl.hpp>
#include <sstream>
#include <vector>

namespace
{
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

std::string ChangeReport(const std::string& strBeforeName, CWideView before, const std::string& strAfterName, CWideView after)
{
    if (before == after)
        return Shown(strBeforeName) + ": nothing changed\n";
    const std::vector<std::string> linesBefore = LinesOf(WithoutKeys(before));
    const std::vector<std::string> linesAfter = LinesOf(WithoutKeys(after));
    if (linesBefore == linesAfter)
        return Shown(strBeforeName) + ": only what is not shown changed\n";
    dtl::Diff<std::string> difference(linesBefore, linesAfter);
    difference.onHuge();
    difference.compose();
    difference.composeUnifiedHunks();
    std::ostringstream text;
    text << "--- " << Shown(strBeforeName) << "\n+++ " << Shown(strAfterName) << "\n";
    difference.printUnifiedFormat(text);
    return text.str();
}
