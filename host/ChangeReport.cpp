#include "host/ChangeReport.h"

#include "host/Difference.h"

std::string ChangeReport(const std::string& strBeforeName, CWideView before, const std::string& strAfterName, CWideView after)
{
    if (before == after)
        return strBeforeName + ": nothing changed\n";
    const std::string strDifference = UnifiedDifference(strBeforeName, before, strAfterName, after);
    return strDifference.empty() ? strBeforeName + ": only what is not shown changed\n" : strDifference;
}
