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

template <class... Words>
struct Functions
{
    using Function = Word WINAPI(Words...);
    struct Diversion
    {
        const PlatformFunction* pFunction;
        Function* pTarget;
    };
    static constexpr std::size_t nMost = 160;
    static inline std::array<Diversion, nMost> diversions{};

    template <std::size_t n>
    static Word WINAPI Call(Words... words)
    {
        const auto [pFunction, pTarget] = diversions[n];
        if (!platform::testing::FaultFires(pFunction->szName))
            return pTarget(words...);
        if (pFunction->uTraits & givesBack)
            pTarget(words...);
        const DWORD dwCode = platform::testing::FaultCode(pFunction->szName, pFunction->dwCode);
        if (pFunction->how == Fails::WithCode)
            return static_cast<Word>(dwCode);
        SetLastError(dwCode);
        // A planned time-out is an outcome of its own, not an error.
        return dwCode == WAIT_TIMEOUT ? WAIT_TIMEOUT : pFunction->how == Fails::WithMinusOne ? -1 : 0;
    }
    template <std::size_t... n>
    static constexpr std::array<Function*, nMost> Calls(std::index_sequence<n...>)
    {
        return {&Call<n>...};
    }
};
using NineWords = Functions<Word, Word, Word, Word, Word, Word, Word, Word, Word>;
constexpr auto calls = NineWords::Calls(std::make_index_sequence<NineWords::nMost>());
} // namespace

void Divert(void** ppSlot, const PlatformFunction& function, void* pTarget)
{
    const auto pGoesTo = reinterpret_cast<NineWords::Function*>(pTarget ? pTarget : *ppSlot);
    const auto isFreeOrSame = [&](const auto& diversion)
    { return !diversion.pFunction || (diversion.pFunction == &function && diversion.pTarget == pGoesTo); };
    const auto diversion = std::ranges::find_if(NineWords::diversions, isFreeOrSame);
    *diversion = {&function, pGoesTo};
    DWORD dwProtection = 0;
    VirtualProtect(ppSlot, sizeof(*ppSlot), PAGE_READWRITE, &dwProtection);
    *ppSlot = reinterpret_cast<void*>(calls.at(static_cast<std::size_t>(diversion - NineWords::diversions.begin())));
    VirtualProtect(ppSlot, sizeof(*ppSlot), dwProtection, &dwProtection);
}
} // namespace tests::faults
