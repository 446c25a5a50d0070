#include "tests/support/LiveObjects.h"

#include "platform/testing/Accounts.h"

namespace tests
{
std::vector<long> LiveObjects()
{
    using platform::testing::Account;
    std::vector<long> counts;
    for (int i = 0; i < static_cast<int>(Account::Count_); ++i)
        counts.push_back(platform::testing::LiveObjects(static_cast<Account>(i)));
    return counts;
}
} // namespace tests
