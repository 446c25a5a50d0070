// What ./bench measures: one row for each operation, held against the calls of the platform that it cannot avoid. The rows are
// the same on both builds; how often their sides take turns, and what is counted, is the driver's.
#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <vector>

namespace bench
{
using Seconds = std::chrono::duration<double>;

// The two sides of a row, holding what both need. Each call does the work once and tells its time.
struct Sides
{
    std::function<Seconds()> module;
    std::function<Seconds()> bare;
    // Called after the last turn: throws when the work was not done.
    std::function<void()> check = [] {};
};

struct Row
{
    std::string strName;
    double dGoal;  // the most that the module may take, as a multiple of the bare calls
    bool bCounted; // whether its cost lies in instructions of this process, rather than in the system or in other processes
    std::function<Sides()> make;
};
std::vector<Row> ProfileRows();
std::vector<Row> LogRows();
std::vector<Row> ModuleRows();

// Throws std::runtime_error.
void Require(bool bHolds, const char* szWhat);

template <class Work>
std::function<Seconds()> Timed(Work work)
{
    return [work = std::move(work)]
    {
        const auto start = std::chrono::steady_clock::now();
        work();
        return std::chrono::steady_clock::now() - start;
    };
}

// The option that makes a driver one of several writers: --write LOG LINES.
inline constexpr const char* szWriterOption = "--write";
int WriteAsChild(char** pszArguments);

// What every driver does: prepares the process, makes the rows whose names hold the program's argument (all, or those that are
// counted), has each run and checked. The exit code.
enum class Which
{
    All,
    Counted,
};
int RunRows(int nArguments, char** pszArguments, Which which, const std::function<void(const Row&, const Sides&)>& run);
} // namespace bench
