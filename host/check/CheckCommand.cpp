// korihost check: a verdict on profiles.
#include "host/CommandEnd.h"
#include "host/Commands.h"
#include "host/HostError.h"
#include "host/Shown.h"
#include "host/Terminal.h"
#include "host/check/CheckOutput.h"
#include "host/check/ProfileBatches.h"

#include <chrono>
#include <cstdlib>
#include <iostream>
#include <thread>
#include <utility>

namespace
{
struct CheckArguments
{
    std::vector<std::string> paths;
    std::string strFormat = textReport.szName;
    std::string strFailOn = "error";
    unsigned uJobs = std::max(std::thread::hardware_concurrency(), 1u);
};
constexpr const char* failOnWarning = "warning";

const CheckReport& ReportNamed(const std::string& strFormat)
{
    for (const CheckReport* pReport : {&jsonReport, &junitReport})
        if (pReport->szName == strFormat)
            return *pReport;
    return textReport;
}

// One line on standard error that counts, and is gone at the end; only for a person who has been waiting.
class CProgress
{
public:
    ~CProgress()
    {
        Clear();
    }
    // The report may go to the same terminal.
    void Clear()
    {
        if (std::exchange(m_bShown, false))
            std::cerr << "\r\x1b[K" << std::flush;
    }
    void Show(std::size_t nChecked)
    {
        if (!m_bPerson || std::chrono::steady_clock::now() - m_begin < std::chrono::seconds(1))
            return;
        m_bShown = true;
        std::cerr << "\r" << nChecked << " profiles checked" << std::flush;
    }

private:
    bool m_bPerson = IsTerminal(STDERR_FILENO);
    std::chrono::steady_clock::time_point m_begin = std::chrono::steady_clock::now();
    bool m_bShown = false;
};

void Count(CheckCounts& counts, const ProfileResult& result)
{
    ++counts.nChecked;
    counts.nValid += result.state == ProfileState::Valid ? 1 : 0;
    counts.nInvalid += result.state == ProfileState::Invalid ? 1 : 0;
    counts.nUnreadable += result.state == ProfileState::Unreadable ? 1 : 0;
    counts.nWarnedAbout += result.state == ProfileState::Valid && result.bWarnedAbout ? 1 : 0;
}

// Entries as the report takes them: separated, and kept back while the head still waits for the counts.
CheckCounts WriteEntries(CProfileBatches& batches, const CheckReport& report, const std::function<void(std::string_view)>& write)
{
    CheckCounts counts;
    CProgress progress;
    for (auto results = batches.Next(); !results.empty(); results = batches.Next())
    {
        std::string strEntries;
        for (const ProfileResult& result : results)
        {
            if (counts.nChecked != 0)
                strEntries += report.szSeparator;
            strEntries += result.strEntry;
            Count(counts, result);
        }
        progress.Clear();
        write(strEntries);
        progress.Show(counts.nChecked);
    }
    return counts;
}

CheckCounts WriteReport(CProfileBatches& batches, const CheckReport& report, const ReportOptions& options)
{
    CCheckOutput output;
    CheckCounts counts;
    if (report.bCountsFirst)
    {
        CSpool spool;
        counts = WriteEntries(batches, report, [&](std::string_view text) { spool.Write(text); });
        output.Write(report.head(counts, options));
        spool.CopyTo(output);
    }
    else
    {
        output.Write(report.head(counts, options));
        counts = WriteEntries(batches, report, [&](std::string_view text) { output.Write(text); });
    }
    output.Write(report.tail(counts));
    return counts;
}

void Check(const CheckArguments& arguments)
{
    std::vector<std::filesystem::path> paths;
    for (const std::string& strPath : arguments.paths)
        paths.push_back(PathOf(strPath));
    const ReportOptions options{IsTerminal(STDOUT_FILENO) && !std::getenv("NO_COLOR"), arguments.strFailOn == failOnWarning};
    const CheckReport& report = ReportNamed(arguments.strFormat);
    CProfileFiles files(paths);
    if (files.IsAtEnd())
    {
        std::cerr << "korihost: there is no profile file in " << Shown(arguments.paths.front()) << "\n";
        throw CommandEnd{exitUsage};
    }
    CProfileBatches batches(std::move(files), arguments.uJobs, report, options);
    const CheckCounts counts = WriteReport(batches, report, options);
    const std::size_t nFailed = counts.nInvalid + counts.nUnreadable + (options.bWarningsFail ? counts.nWarnedAbout : 0);
    if (nFailed != 0)
        throw CommandEnd{exitRefused};
}

std::string RequireThere(const std::string& strPath)
{
    std::error_code error;
    return std::filesystem::exists(PathOf(strPath), error) ? std::string() : strPath + ": there is no such file or folder";
}
} // namespace

void AddCheckCommand(CLI::App& app, CommandWork& chosen)
{
    constexpr unsigned uMostJobs = 256;
    const auto pArguments = std::make_shared<CheckArguments>();
    CLI::App* pCommand = app.add_subcommand("check", "Tell what the extension does not take of profiles, or takes differently");
    pCommand->add_option("PATH", pArguments->paths, "Profile files, and folders of which all *.xml are taken")
        ->required()
        ->type_name("")
        ->check(RequireThere);
    pCommand->add_option("--format", pArguments->strFormat, "How to tell it: text, json or junit")
        ->type_name("FORMAT")
        ->check(CLI::IsMember({textReport.szName, jsonReport.szName, junitReport.szName}));
    pCommand->add_option("--fail-on", pArguments->strFailOn, "What the exit code tells of: error, or warning too")
        ->type_name("LEVEL")
        ->check(CLI::IsMember({"error", failOnWarning}));
    pCommand->add_option("--jobs", pArguments->uJobs, "How many files to check at a time; the machine's processors by default")
        ->type_name("N")
        ->check(CLI::Range(1u, uMostJobs));
    pCommand->footer("docs/check.md has every rule with an example.\n\n"
                     "Exit codes: 0 every profile is valid, 1 some are invalid or unreadable, 2 wrong usage or no file.");
    pCommand->callback([pArguments, &chosen] { chosen = [pArguments] { Check(*pArguments); }; });
}
