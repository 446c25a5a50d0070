#include "host/trace/TraceSummary.h"

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

void Count(std::map<std::string, std::size_t>& kinds, const std::string& strLine)
{
    const bool bIsKnown = kinds.contains(strLine) || kinds.size() < cMostKinds;
    kinds[bIsKnown ? strLine : "(others)"] += 1;
}

std::string CountedRow(std::size_t cIndent, std::size_t nCount, std::string strWhat)
{
    if (strWhat.size() > cbMostShown)
    {
        strWhat.resize(cbMostShown);
        // Not within a character.
        while (!strWhat.empty() && (static_cast<unsigned char>(strWhat.back()) & 0x80U) != 0)
            strWhat.pop_back();
        strWhat += "...";
    }
    char szNumber[32];
    std::snprintf(szNumber, sizeof(szNumber), "%8zu  ", nCount);
    return std::string(cIndent, ' ') + szNumber + strWhat + "\n";
}
} // namespace

void CTraceSummary::Add(const TraceCall& call)
{
    Operation& operation = m_operations[call.strOperation.empty() ? "(before the first operation)" : call.strOperation];
    operation.cCalls += call.bGoesOn ? 0 : 1;
    for (const std::string& strLine : call.lines)
        if (IsTraceError(strLine))
            Count(operation.errors, strLine);
        else if (IsQuestion(strLine))
            Count(operation.asked, strLine);
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
