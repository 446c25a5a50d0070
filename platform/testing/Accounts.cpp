#include "platform/testing/Accounts.h"

#include <array>
#include <atomic>
#include <cstddef>

namespace platform::testing
{
namespace
{
std::array<std::atomic<long>, static_cast<std::size_t>(Account::Count_)> g_live{};
} // namespace

void ChangeAccount(Account account, long nChange) noexcept
{
    g_live[static_cast<std::size_t>(account)].fetch_add(nChange, std::memory_order_relaxed);
}

long LiveObjects(Account account) noexcept
{
    return g_live[static_cast<std::size_t>(account)].load(std::memory_order_relaxed);
}
} // namespace platform::testing
