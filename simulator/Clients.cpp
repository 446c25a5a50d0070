#include "simulator/Clients.h"

#include "simulator/ServiceError.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <mutex>
#include <new>
#include <set>

namespace simulator
{
namespace
{
constexpr std::size_t mostClients = 8192;

struct Holdings
{
    std::mutex mutex;
    std::set<HANDLE> clients;
    std::uintptr_t lastClient = 0x10000;
    std::set<void*> blocks;
};

// Emptied when the module goes, but never destroyed: other modules may call once more while the process is taken down,
// and then find that nothing is open.
union CLastingHoldings
{
    CLastingHoldings() : holdings()
    {
    }
    ~CLastingHoldings()
    {
        holdings.clients.clear();
        holdings.blocks.clear();
    }
    Holdings holdings;
};
CLastingHoldings lasting;

Holdings& Held()
{
    return lasting.holdings;
}
} // namespace

HANDLE OpenClient()
{
    Holdings& held = Held();
    const std::lock_guard lock(held.mutex);
    Require(held.clients.size() < mostClients, ERROR_REMOTE_SESSION_LIMIT_EXCEEDED);
    const auto hClient = reinterpret_cast<HANDLE>(held.lastClient + 4);
    held.clients.insert(hClient);
    held.lastClient += 4;
    return hClient;
}

void RequireClient(HANDLE hClient)
{
    Holdings& held = Held();
    const std::lock_guard lock(held.mutex);
    Require(held.clients.contains(hClient), ERROR_INVALID_HANDLE);
}

void CloseClient(HANDLE hClient)
{
    Holdings& held = Held();
    const std::lock_guard lock(held.mutex);
    Require(held.clients.erase(hClient) != 0, ERROR_INVALID_HANDLE);
}

LONG LiveClients()
{
    Holdings& held = Held();
    const std::lock_guard lock(held.mutex);
    return static_cast<LONG>(held.clients.size());
}

void* AllocateBlock(std::size_t cb)
{
    std::unique_ptr<void, decltype(&std::free)> block(std::calloc(1, cb), &std::free);
    if (!block)
        throw std::bad_alloc();
    Holdings& held = Held();
    const std::lock_guard lock(held.mutex);
    held.blocks.insert(block.get());
    return block.release();
}

void FreeBlock(void* pBlock) noexcept
{
    Holdings& held = Held();
    const std::lock_guard lock(held.mutex);
    if (held.blocks.erase(pBlock) != 0)
        std::free(pBlock);
}

LONG LiveBlocks()
{
    Holdings& held = Held();
    const std::lock_guard lock(held.mutex);
    return static_cast<LONG>(held.blocks.size());
}
} // namespace simulator
