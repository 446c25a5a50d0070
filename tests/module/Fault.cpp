#include "tests/module/Fault.h"

#include "platform/testing/Faults.h"

namespace tests::walk
{
namespace
{
// An error that no function takes for an answer of its own.
constexpr DWORD serviceError = ERROR_GEN_FAILURE;
} // namespace

CFault::CFault(const CSimulatedService& service, const PlatformFunction& function, unsigned uNth)
    : m_service(service), m_name(function.name), m_effect(function.effect), m_uNth(uNth)
{
}

void CFault::Arm()
{
    if (m_name == operatorNew.name)
    {
        m_allocation.emplace(m_uNth);
        return;
    }
    if (m_name.starts_with("Wlan"))
    {
        m_uCallsBefore = m_service.CountCalls(m_name.c_str());
        m_service.FailNext(m_name.c_str(), m_uNth, 1, serviceError);
        return;
    }
    platform::testing::LimitFaultsToThisThread(true);
    platform::testing::PlanFault(m_name.c_str(), m_uNth, 1);
}

void CFault::Disarm()
{
    if (m_allocation)
    {
        m_allocation.reset();
        m_uCalls = CountedAllocations();
        return;
    }
    if (m_name.starts_with("Wlan"))
    {
        m_uCalls = m_service.CountCalls(m_name.c_str()) - m_uCallsBefore;
        m_service.ClearFaults();
        return;
    }
    m_uCalls = platform::testing::CountCalls(m_name.c_str());
    platform::testing::ClearFaults();
    platform::testing::LimitFaultsToThisThread(false);
}
} // namespace tests::walk
