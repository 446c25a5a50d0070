#include "host/check/ProfileBatches.h"

#include "host/Module.h"
#include "host/check/ProfileCheck.h"

#include <atomic>
#include <future>

namespace
{
// Enough for starting the threads to cost nothing beside the work.
constexpr std::size_t nFilesForEach = 256;
} // namespace

CProfileBatches::CProfileBatches(CProfileFiles files, unsigned uJobs, const CheckReport& report, const ReportOptions& options)
    : m_files(std::move(files)), m_uJobs(uJobs), m_report(report), m_options(options)
{
}

std::vector<ProfileResult> CProfileBatches::Next()
{
    std::vector<std::filesystem::path> files;
    while (files.size() < nFilesForEach * m_uJobs)
    {
        auto file = m_files.Next();
        if (!file)
            break;
        files.push_back(std::move(*file));
    }
    std::vector<ProfileResult> results(files.size());
    Work(files, results);
    return results;
}

void CProfileBatches::Work(const std::vector<std::filesystem::path>& files, std::vector<ProfileResult>& results) const
{
    std::atomic<std::size_t> nNext = 0;
    const auto work = [&]
    {
        const CComApartment apartment;
        for (std::size_t n = 0; (n = nNext++) < files.size();)
        {
            const ProfileVerdict verdict = CheckProfile(files[n]);
            results[n] = {m_report.entry(verdict, m_options), verdict.State(), verdict.Count(Severity::Warning) != 0};
        }
    };
    std::vector<std::future<void>> others;
    for (unsigned u = 1; u < m_uJobs && u < files.size(); ++u)
        others.push_back(std::async(std::launch::async, work));
    work();
    for (std::future<void>& other : others)
        other.get();
}
