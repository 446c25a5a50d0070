// One fault of a walk: the nth call of one function, wherever that function's faults are planned.
#pragma once

#include "tests/support/FailingAllocation.h"
#include "tests/support/PlatformFunctions.h"
#include "tests/support/SimulatedService.h"

#include <optional>
#include <string>

namespace tests::walk
{
// The language's own allocation, as a row like those of the platform.
inline constexpr PlatformFunction operatorNew = {"operator new", FaultEffect::Memory};

// Counts calls, and fails them, only between Arm and Disarm.
class CFault
{
public:
    CFault(const CSimulatedService& service, const PlatformFunction& function, unsigned uNth);

    void Arm();
    void Disarm();
    // Of the last time between the two.
    unsigned Calls() const
    {
        return m_uCalls;
    }
    bool HasFired() const
    {
        return m_uCalls >= m_uNth;
    }
    FaultEffect Effect() const
    {
        return m_effect;
    }
    std::string Name() const
    {
        return m_name + " " + std::to_string(m_uNth);
    }

private:
    const CSimulatedService& m_service;
    std::string m_name;
    FaultEffect m_effect;
    unsigned m_uNth;
    unsigned m_uCalls = 0;
    unsigned m_uCallsBefore = 0;
    std::optional<CFailingAllocation> m_allocation;
};
} // namespace tests::walk
