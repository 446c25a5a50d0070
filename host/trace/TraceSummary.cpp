#include "host/trace/TraceSummary.h"

#include "host/Escaped.h"

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <string_view>

namespace
{
// A log of any length is summed up in the same memory.
constexpr std::size_t cMostKinds = 100;
constexpr std::size_t cbMostShown = 90;

// What an operation was given, and not what it made of it.
constexpr std::string_view questions[] = {
    "auth element: ", "bstrIHVProfile: ", "bstrIHVProfile (IN): ", "pDot11ExtUIProperty->bstrDisplayText", "-- IID_"};

bool IsQuestion(std::string_view line)
{
    return std::any_of(std::begin(questions), std::end(questions),
                       [&](std::string_view question) { return line.starts_with(question); });
}

// As it is shown: one line, and no more than fits.
std::string Kind(const std::string& strWhat)
{
    std::string strKind = Escaped(std::string_view(strWhat).substr(0, cbMostShown));
    if (strWhat.size() > cbMostShown)
        strKind += "...";
    return strKind;
}

// The one that is counted for the kind: one for all when there are too many.
template <class Value>
Value& Counted(std::map<std::string, Value>& kinds, const std::string& strWhat)
{
    const std::string strKind = Kind(strWhat);
    return kinds[kinds.contains(strKind) || kinds.size() < cMostKinds ? strKind : "(others)"];
}

std::string CountedRow(std::size_t cIndent, std::size_t nCount, const std::string& strKind)
{
    char szNumber[32];
    std::snprintf(szNumber, sizeof(szNumber), "%8zu  ", nCount);
    return std::string(cIndent, ' ') + szNumber + strKind + "\n";
}
} // namespace

void CTraceSummary::Add(const TraceCall& call)
{
    Operation& operation = Counted(m_operations, call.strOperation.empty() ? "(before the first operation)" : call.strOperation);
    operation.cCalls += call.bGoesOn ? 0 : 1;
    for (const std::string& strLine : call.lines)
        if (IsTraceError(strLine))
            Counted(operation.errors, strLine) += 1;
        else if (IsQuestion(strLine))
            Counted(operation.asked, strLine) += 1;
}

std::string CTraceSummary::Text() const
{
    std::string strText;
    for (const auto& [strName, operation] : m_operations)
    {
        strText += CountedRow(0, operation.cCalls, strName);
        for (const auto* pKinds : {&operation.asked, &operation.errors})
            for (const auto& [strLine, nCount] : *pKinds)
                strText += CountedRow(10, nCount, strLine);
    }
    return strText;
}
