// The native driver: each row is a benchmark of its own, of which each repetition is one of ours.
#include "tests/benchmarks/Rows.h"

#include <benchmark/benchmark.h>

namespace
{
// Says of a row what the medians of its repetitions are.
class CMedians : public benchmark::BenchmarkReporter
{
public:
    explicit CMedians(const bench::Row& row) : m_row(row)
    {
    }
    bool ReportContext(const Context&) override
    {
        return true;
    }
    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const auto& run : runs)
            if (run.aggregate_name == "median")
                bench::Report(m_row, run.counters.at("module"), run.counters.at("bare"), run.counters.at("ratio"));
    }

private:
    const bench::Row& m_row;
};

void Repeat(benchmark::State& state, const bench::Sides& sides)
{
    bench::CTurns turns(sides);
    for ([[maybe_unused]] auto turn : state)
        state.SetIterationTime(turns.Take());
    state.counters["module"] = turns.Module();
    state.counters["bare"] = turns.Bare();
    state.counters["ratio"] = turns.Module() / turns.Bare();
}

void Measure(const bench::Row& row, const bench::Sides& sides)
{
    benchmark::RegisterBenchmark(row.strName.c_str(), Repeat, std::cref(sides))
        ->UseManualTime()
        ->MinTime(bench::leastTime.count())
        ->Repetitions(bench::nRepetitions);
    CMedians medians(row);
    benchmark::RunSpecifiedBenchmarks(&medians);
    benchmark::ClearRegisteredBenchmarks();
}
} // namespace

int main(int nArguments, char** pszArguments)
{
    return bench::RunRows(nArguments, pszArguments, bench::Which::All, Measure);
}
