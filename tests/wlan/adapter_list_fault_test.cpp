// The list of adapters and the selection when the platform fails them.
#include "platform/testing/Faults.h"
#include "tests/support/SimulatedService.h"
#include "wlan/SelectedInterface.h"
#include "wlan/WlanAdapterList.h"

#include <gtest/gtest.h>

namespace tests
{
using platform::testing::CFailNth;

namespace
{
constexpr const char* twoAdapters =
    R"([{"guid": "5b7d2c10-8e46-4f3a-9d21-c07a64e1f3b8"}, {"guid": "91e4a6f2-30bc-4d58-a7e9-5c8f1b2d6073"}])";
}

TEST(AdapterListFault, AdapterWithoutATextIsLeftOut)
{
    const CSimulatedService service(twoAdapters);
    const CFailNth fault("UuidToStringW", 1);
    const CWlanAdapterList adapters;
    EXPECT_TRUE(fault.HasFired());
    ASSERT_EQ(1, adapters.GetCount());
    EXPECT_EQ("91e4a6f2-30bc-4d58-a7e9-5c8f1b2d6073", Narrow(adapters.GetGuidString(0)));
    EXPECT_EQ(0, service.LiveBlocks());
}

TEST(AdapterListFault, TextThatDoesNotConvertIsNotSelected)
{
    const CSimulatedService service(twoAdapters);
    bool bNotConverted = false;
    // The service converts texts as well, to read its adapters: without them nothing is found.
    for (unsigned k = 1;; ++k)
    {
        const CFailNth fault("UuidFromStringW", k);
        const LONG lResult = SelectIhvInterface(OLESTR("5b7d2c10-8e46-4f3a-9d21-c07a64e1f3b8"));
        if (!fault.HasFired())
            break;
        EXPECT_TRUE(lResult == -1 || lResult == -2) << k << ": " << lResult;
        bNotConverted |= lResult == -2;
    }
    EXPECT_TRUE(bNotConverted);
    EXPECT_EQ(0, service.LiveBlocks());
}
} // namespace tests
