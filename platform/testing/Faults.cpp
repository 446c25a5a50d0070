#include "platform/testing/Faults.h"
#include "platform/testing/FaultPoint.h"

#include <atomic>
#include <map>
#include <mutex>
#include <string>
#include <string_view>

namespace platform::testing
{
namespace
{
struct Plan
{
    unsigned uFirst = 0;
    unsigned uCount = 0;
    DWORD dwError = 0;
    unsigned uCalls = 0;
    unsigned uFaults = 0;
};

using Plans = std::map<std::string, Plan, std::less<>>;

// Asked for on every platform call, so that a run without plans never takes the lock.
std::atomic<bool> g_bAnyPlan{false};

// The one thread whose calls count, known by the address of its own mark; null for all.
thread_local const char t_chMark = 0;
std::atomic<const char*> g_pOnlyThread{nullptr};

// Both outlive the process's static objects on purpose: their destructors still make platform calls.
std::mutex& PlansLock()
{
    static auto* const pLock = new std::mutex;
    return *pLock;
}

Plans& AllPlans()
{
    static auto* const pPlans = new Plans;
    return *pPlans;
}

// A copy of the named plan, an empty one when there is none.
Plan SnapshotOf(const char* szFunction)
{
    const std::lock_guard lock(PlansLock());
    const auto found = AllPlans().find(std::string_view(szFunction));
    return found == AllPlans().end() ? Plan{} : found->second;
}
} // namespace

void PlanFault(const char* szFunction, unsigned uFirst, unsigned uCount, DWORD dwError)
{
    const std::lock_guard lock(PlansLock());
    AllPlans()[szFunction] = Plan{.uFirst = uFirst, .uCount = uCount, .dwError = dwError};
    g_bAnyPlan.store(true, std::memory_order_relaxed);
}

void ClearFaults()
{
    const std::lock_guard lock(PlansLock());
    AllPlans().clear();
    g_bAnyPlan.store(false, std::memory_order_relaxed);
}

unsigned CountCalls(const char* szFunction)
{
    return SnapshotOf(szFunction).uCalls;
}

unsigned CountFaults(const char* szFunction)
{
    return SnapshotOf(szFunction).uFaults;
}

void LimitFaultsToThisThread(bool bLimit)
{
    g_pOnlyThread.store(bLimit ? &t_chMark : nullptr, std::memory_order_relaxed);
}

bool FaultFires(const char* szFunction) noexcept
{
    if (!g_bAnyPlan.load(std::memory_order_relaxed))
        return false;
    const char* const pOnlyThread = g_pOnlyThread.load(std::memory_order_relaxed);
    if (pOnlyThread && pOnlyThread != &t_chMark)
        return false;
    const std::lock_guard lock(PlansLock());
    const auto found = AllPlans().find(std::string_view(szFunction));
    if (found == AllPlans().end())
        return false;
    Plan& plan = found->second;
    ++plan.uCalls;
    // Written as a difference: first + count may not be representable ("from call K on, for ever").
    if (plan.uCalls < plan.uFirst || plan.uCalls - plan.uFirst >= plan.uCount)
        return false;
    ++plan.uFaults;
    return true;
}

DWORD FaultCode(const char* szFunction, DWORD dwDefault) noexcept
{
    const DWORD dwPlanned = SnapshotOf(szFunction).dwError;
    return dwPlanned != 0 ? dwPlanned : dwDefault;
}
} // namespace platform::testing
