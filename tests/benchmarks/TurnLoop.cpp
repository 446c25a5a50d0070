// The driver where there is no benchmark library.
#include "tests/benchmarks/Rows.h"

namespace
{
void Measure(const bench::Row& row, const bench::Sides& sides)
{
    bench::CTurns(sides).Take(); // what only the first turn does
    const auto nTurns = static_cast<int>(bench::leastTime.count() / bench::CTurns(sides).Take()) + 1;
    std::vector<double> modules;
    std::vector<double> bares;
    std::vector<double> ratios;
    for (int i = 0; i < bench::nRepetitions; ++i)
    {
        bench::CTurns turns(sides);
        for (int nTurn = 0; nTurn < nTurns; ++nTurn)
            turns.Take();
        modules.push_back(turns.Module());
        bares.push_back(turns.Bare());
        ratios.push_back(turns.Module() / turns.Bare());
    }
    bench::Report(row, bench::Median(modules), bench::Median(bares), bench::Median(ratios));
}
} // namespace

int main(int nArguments, char** pszArguments)
{
    return bench::RunRows(nArguments, pszArguments, bench::Which::All, Measure);
}
