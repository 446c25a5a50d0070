// One fault of a walk: the nth call of one function, wherever that function's faults are planned.
#pragma once

#include "platform/testing/Faults.h"
#include "tests/support/PlatformFunctions.h"
#include "tests/support/SimulatedService.h"

#include <limits>
#include <map>
#include <span>
#include <string>

namespace tests::walk
{
// Counts calls, and fails them, only between Arm and Disarm.
class CFault
{
public:
    // Of a call that is never reached: only counts.
    static constexpr unsigned never = std::numeric_limits<unsigned>::max();

    explicit CFault(const PlatformFunction& function, unsigned uNth = never) : m_function(function), m_uNth(uNth)
    {
    }

    virtual ~CFault() = default;

    virtual void Arm() const
    {
        SimulatedWlanClearFaults();
        platform::testing::LimitFaultsToThisThread(true);
        if (m_function.how == Fails::AtTheService)
            CSimulatedService::FailNext(m_function.szName, m_uNth, 1, ERROR_GEN_FAILURE);
        else
            platform::testing::PlanFault(m_function.szName, m_uNth, 1);
    }
    virtual void Disarm()
    {
        m_uCalls = CallsOf(m_function);
        SimulatedWlanClearFaults();
        platform::testing::ClearFaults();
        platform::testing::LimitFaultsToThisThread(false);
    }
    bool HasFired() const
    {
        return m_uCalls >= m_uNth;
    }

protected:
    static unsigned CallsOf(const PlatformFunction& function)
    {
        return function.how == Fails::AtTheService ? SimulatedWlanCalls(function.szName)
                                                   : platform::testing::CountCalls(function.szName);
    }

private:
    const PlatformFunction& m_function;
    unsigned m_uNth;
    unsigned m_uCalls = 0;
};

// Counts the calls of all the functions at once, and fails none.
class CCallCounter final : public CFault
{
public:
    explicit CCallCounter(std::span<const PlatformFunction> functions) : CFault(functions.front()), m_functions(functions)
    {
    }

    void Arm() const override
    {
        CFault::Arm();
        for (const auto& function : m_functions)
            platform::testing::PlanFault(function.szName, never, 1);
    }
    void Disarm() override
    {
        for (const auto& function : m_functions)
            calls[function.szName] = CallsOf(function);
        CFault::Disarm();
    }

    std::map<std::string, unsigned> calls; // of the last time between the two

private:
    std::span<const PlatformFunction> m_functions;
};
} // namespace tests::walk
