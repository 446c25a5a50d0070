// Fails every call of a platform function in turn, until the operation gets through.
#pragma once

#include "platform/testing/Faults.h"
#include "tests/support/LiveObjects.h"

#include <gtest/gtest.h>

#include <string>

namespace tests
{
// Runs the operation with call 1, 2, ... of the function failing; check(uCall, outcome, bFired) judges each outcome, the
// last of which had no failure. Nothing may be left behind by any run, the outcome itself apart.
template <class Run, class Check>
void EachCallFails(const char* szFunction, const Run& run, const Check& check)
{
    constexpr unsigned tooManyCalls = 1000;
    for (unsigned uCall = 1; uCall < tooManyCalls; ++uCall)
    {
        SCOPED_TRACE(std::string(szFunction) + " call " + std::to_string(uCall));
        const auto live = LiveObjects();
        bool bFired = false;
        {
            const auto outcome = [&]
            {
                const platform::testing::CFailNth fault(szFunction, uCall);
                auto result = run();
                bFired = fault.HasFired();
                return result;
            }();
            check(uCall, outcome, bFired);
        }
        EXPECT_EQ(live, LiveObjects());
        if (!bFired)
            return;
    }
    ADD_FAILURE() << szFunction << " is called without end";
}
} // namespace tests
