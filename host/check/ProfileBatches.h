// Checking many files at a time.
#pragma once

#include "host/check/CheckReport.h"
#include "host/check/ProfileFiles.h"

#include <deque>

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

    // The results of the next files, in their order; none at the end. As many threads as there are jobs work on them, until
    // there are many results or long ones. Nothing of them is kept. Throws what a thread has thrown.
    std::vector<ProfileResult> Next();

private:
    // Gives how many of the results it has made, from the first one on.
    std::size_t Work(std::vector<ProfileResult>& results) const;

    CProfileFiles m_files;
    std::deque<std::filesystem::path> m_waiting; // the next ones
    unsigned m_uJobs;
    const CheckReport& m_report;
    const ReportOptions& m_options;
};
