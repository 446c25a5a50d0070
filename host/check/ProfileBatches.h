// Checking many files at a time.
#pragma once

#include "host/check/CheckReport.h"
#include "host/check/ProfileFiles.h"

struct ProfileResult
{
    std::string strEntry; // of the report
    ProfileState state = ProfileState::Valid;
    bool bWarnedAbout = false;
};

class CProfileBatches
{
public:
    CProfileBatches(CProfileFiles files, unsigned uJobs, const CheckReport& report, const ReportOptions& options);

    // The results of the next files, in their order; none at the end. As many threads as there are jobs work on them, and
    // nothing of them is kept. Throws what a thread has thrown.
    std::vector<ProfileResult> Next();

private:
    void Work(const std::vector<std::filesystem::path>& files, std::vector<ProfileResult>& results) const;

    CProfileFiles m_files;
    unsigned m_uJobs;
    const CheckReport& m_report;
    const ReportOptions& m_options;
};
