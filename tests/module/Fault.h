// One fault of a walk: the nth call of one function, wherever that function's faults are planned.
#pragma once

#include "platform/testing/Faults.h"
#include "tests/support/FailingAllocation.h"
#include "tests/support/SimulatedService.h"

#include <optional>
#include <string>

namespace tests::walk
{
// The language's own allocation, under a name like those of the platform's functions.
inline constexpr std::string_view operatorNew = "operator new";

// Counts calls, and fails them, only between Arm and Disarm.
class CFault
{
public:
    CFault(const CSimulatedService& service, std::string_view function, unsigned uNth)
        : m_service(service), m_name(function), m_uNth(uNth)
    {
    }

    void Arm()
    {
        if (m_name == operatorNew)
            m_allocation.emplace(m_uNth);
        else if (IsOfTheService())
        {
            m_uCallsBefore = m_service.CountCalls(m_name.c_str());
            m_service.FailNext(m_name.c_str(), m_uNth, 1, ERROR_GEN_FAILURE);
        }
        else
        {
            platform::testing::LimitFaultsToThisThread(true);
            platform::testing::PlanFault(m_name.c_str(), m_uNth, 1);
        }
    }
    void Disarm()
    {
        if (m_allocation)
        {
            m_allocation.reset();
            m_uCalls = CountedAllocations();
        }
        else if (IsOfTheService())
        {
            m_uCalls = m_service.CountCalls(m_name.c_str()) - m_uCallsBefore;
            m_service.ClearFaults();
        }
        else
        {
            m_uCalls = platform::testing::CountCalls(m_name.c_str());
            platform::testing::ClearFaults();
            platform::testing::LimitFaultsToThisThread(false);
        }
    }
    // Of the last time between the two.
    unsigned Calls() const
    {
        return m_uCalls;
    }
    bool HasFired() const
    {
        return m_uCalls >= m_uNth;
    }

private:
    bool IsOfTheService() const
    {
        return m_name.starts_with("Wlan");
    }

    const CSimulatedService& m_service;
    std::string m_name;
    unsigned m_uNth;
    unsigned m_uCalls = 0;
    unsigned m_uCallsBefore = 0;
    std::optional<CFailingAllocation> m_allocation;
};
} // namespace tests::walk
