#include "tests/support/windows/Diversion.h"

#include "platform/testing/FaultPoint.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tests::faults
{
namespace
{
// Every argument of these functions takes one register or one place on the stack, which the caller clears, and the result
// comes in a register: whoever hands on as many as any of them has serves them all.
using Word = INT_PTR;
using Function = Word WINAPI(Word, Word, Word, Word, Word, Word, Word, Word, Word);

struct Diversion
{
    const PlatformFunction* pFunction;
    Function* pTarget;
};
std::array<Diversion, 160> g_diversions{};

template <std::size_t n>
Word WINAPI Call(Word a, Word b, Word c, Word d, Word e, Word f, Word g, Word h, Word i)
{
    const auto [pFunction, pTarget] = g_diversions[n];
    const bool bFails = platform::testing::FaultFires(pFunction->szName);
    const Word result = !bFails || (pFunction->uTraits & givesBack) ? pTarget(a, b, c, d, e, f, g, h, i) : 0;
    if (!bFails)
        return result;
    const DWORD dwCode = platform::testing::FaultCode(pFunction->szName, pFunction->dwCode);
    if (pFunction->how == Fails::WithCode)
        return static_cast<Word>(dwCode);
    SetLastError(dwCode);
    // A planned time-out is an outcome of its own, not an error.
    return dwCode == WAIT_TIMEOUT ? WAIT_TIMEOUT : pFunction->how == Fails::WithMinusOne ? -1 : 0;
}

constexpr auto calls = []<std::size_t... n>(std::index_sequence<n...>)
{
    return std::array{&Call<n>...};
}
(std::make_index_sequence<std::tuple_size_v<decltype(g_diversions)>>());
} // namespace

void Divert(void** ppSlot, const PlatformFunction& function, void* pTarget)
{
    const auto pGoesTo = reinterpret_cast<Function*>(pTarget ? pTarget : *ppSlot);
    const auto isFreeOrSame = [&](const auto& diversion)
    { return !diversion.pFunction || (diversion.pFunction == &function && diversion.pTarget == pGoesTo); };
    const auto n = static_cast<std::size_t>(std::ranges::find_if(g_diversions, isFreeOrSame) - g_diversions.begin());
    g_diversions.at(n) = {&function, pGoesTo};
    DWORD dwProtection = 0;
    VirtualProtect(ppSlot, sizeof(*ppSlot), PAGE_READWRITE, &dwProtection);
    *ppSlot = reinterpret_cast<void*>(calls[n]);
    VirtualProtect(ppSlot, sizeof(*ppSlot), dwProtection, &dwProtection);
}
} // namespace tests::faults
