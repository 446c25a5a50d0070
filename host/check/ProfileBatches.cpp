#include "host/check/ProfileBatches.h"

#include "host/Module.h"
#include "host/check/ProfileCheck.h"

#include <algorithm>
#include <atomic>
#include <future>

namespace
{
// Enough for starting the threads to cost nothing beside the work.
constexpr std::size_t nFilesForEach = 256;
// With this many bytes of the report at hand, no further file is begun.
constexpr std::size_t cbEnough = std::size_t{4} * 1024 * 1024;
} // namespace

CProfileBatches::CProfileBatches(CProfileFiles files, unsigned uJobs, const CheckReport& report, const ReportOptions& options)
    : m_files(std::move(files)), m_uJobs(uJobs), m_report(report), m_options(options)
{
}

std::vector<ProfileResult> CProfileBatches::Next()
{
    while (m_waiting.size() < nFilesForEach * m_uJobs)
    {
        auto file = m_files.Next();
        if (!file)
            break;
        m_waiting.push_back(std::move(*file));
    }
    std::vector<ProfileResult> results(m_waiting.size());
    results.resize(Work(results));
    m_waiting.erase(m_waiting.begin(), m_waiting.begin() + static_cast<std::ptrdiff_t>(results.size()));
    return results;
}

std::size_t CProfileBatches::Work(std::vector<ProfileResult>& results) const
{
    std::atomic<std::size_t> nNext = 0;
    std::atomic<std::size_t> cbReady = 0;
    const auto work = [&]
    {
        const CComApartment apartment;
        for (std::size_t n = 0; cbReady < cbEnough && (n = nNext++) < results.size();)
        {
            const ProfileVerdict verdict = CheckProfile(m_waiting[n]);
            results[n] = {m_report.entry(verdict, m_options), verdict.State(), verdict.Count(Severity::Warning) != 0};
            cbReady += results[n].strEntry.size();
        }
    };
    std::vector<std::future<void>> others;
    for (unsigned u = 1; u < m_uJobs && u < results.size(); ++u)
        others.push_back(std::async(std::launch::async, work));
    work();
    for (std::future<void>& other : others)
        other.get();
    return std::min<std::size_t>(nNext, results.size());
}
