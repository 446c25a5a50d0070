// The forms in which verdicts are told.
#pragma once

#include "host/check/Findings.h"

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
