// The driver under callgrind: one turn of each side, whose instructions are written down under its name.
#include "tests/benchmarks/Rows.h"

#include <valgrind/callgrind.h>

namespace
{
void Count(const bench::Row& row, const char* szSide, const std::function<bench::Seconds()>& side)
{
    side(); // what only the first turn does
    CALLGRIND_ZERO_STATS;
    CALLGRIND_TOGGLE_COLLECT;
    side();
    CALLGRIND_TOGGLE_COLLECT;
    const std::string strName = row.strName + '\t' + szSide + '\t' + std::to_string(row.dGoal);
    CALLGRIND_DUMP_STATS_AT(strName.c_str());
}
} // namespace

int main(int nArguments, char** pszArguments)
{
    return bench::RunRows(nArguments, pszArguments, bench::Which::Counted,
                          [](const bench::Row& row, const bench::Sides& sides)
                          {
                              Count(row, "module", sides.module);
                              Count(row, "bare", sides.bare);
                          });
}
