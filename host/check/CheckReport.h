// The forms in which verdicts are told.
#pragma once

#include "host/check/Findings.h"

#include <algorithm>
#include <span>

struct CheckCounts
{
    std::size_t nChecked = 0;
    std::size_t nValid = 0;
    std::size_t nInvalid = 0;
    std::size_t nUnreadable = 0;
    std::size_t nWarnedAbout = 0; // of the valid ones
};

struct ReportOptions
{
    bool bColours = false;
    bool bWarningsFail = false;
};

// The findings of a file that are told one by one: a file may have more of them than bytes can be spared for.
inline std::span<const Finding> ToldFindings(const ProfileVerdict& verdict)
{
    constexpr std::size_t nMostTold = 1000;
    return std::span(verdict.findings).first(std::min(verdict.findings.size(), nMostTold));
}

// How many more there are.
inline std::size_t UntoldFindings(const ProfileVerdict& verdict)
{
    return verdict.findings.size() - ToldFindings(verdict).size();
}

// "and 12 more findings", for a line behind those that are told; nothing when they are all.
inline std::string UntoldLine(const ProfileVerdict& verdict)
{
    const std::size_t nUntold = UntoldFindings(verdict);
    return nUntold == 0 ? std::string()
                        : "and " + std::to_string(nUntold) + (nUntold == 1 ? " more finding\n" : " more findings\n");
}

// The whole is the head, the entries with the separator between them, and the tail; UTF-8.
struct CheckReport
{
    const char* szName; // on the command line
    bool bCountsFirst;  // the head needs the counts, so that it is written when all is done
    const char* szSeparator;
    std::string (*head)(const CheckCounts& counts, const ReportOptions& options);
    std::string (*entry)(const ProfileVerdict& verdict, const ReportOptions& options); // on any thread
    std::string (*tail)(const CheckCounts& counts);
};

extern const CheckReport textReport;
extern const CheckReport jsonReport;
extern const CheckReport junitReport;
