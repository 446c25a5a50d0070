// The driver that measures time. Both sides take turns, and of each repetition the medians of the turns count, which no turn
// moves in which the processor was somebody else's.
#include "tests/benchmarks/Rows.h"

#include <algorithm>
#include <cstdio>

namespace
{
using namespace bench;
constexpr int nRepetitions = 9;
constexpr double leastTime = 0.05; // of the module's side, in seconds, in each repetition

double Median(std::vector<double> values)
{
    std::ranges::sort(values);
    return values[values.size() / 2];
}

void Measure(const Row& row, const Sides& sides)
{
    const auto turn = [&] { return std::pair(sides.module().count(), sides.bare().count()); };
    turn(); // what only the first does
    const int nTurns = static_cast<int>(leastTime / turn().first) + 1;
    std::vector<double> modules, bares, ratios;
    for (int i = 0; i < nRepetitions; ++i)
    {
        std::vector<double> moduleTurns, bareTurns;
        for (int nTurn = 0; nTurn < nTurns; ++nTurn)
        {
            const auto [module, bare] = turn();
            moduleTurns.push_back(module);
            bareTurns.push_back(bare);
        }
        modules.push_back(Median(moduleTurns));
        bares.push_back(Median(bareTurns));
        ratios.push_back(modules.back() / bares.back());
    }
    // Standard output takes the echo.
    std::fprintf(stderr, "%s\t%.2f\t%.9f\t%.9f\t%.3f\n", row.strName.c_str(), row.dGoal, Median(modules), Median(bares),
                 Median(ratios));
}
} // namespace

int main(int nArguments, char** pszArguments)
{
    return RunRows(nArguments, pszArguments, Which::All, Measure);
}
