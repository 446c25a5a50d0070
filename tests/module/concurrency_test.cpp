// Many threads at the module at once: objects of all classes, factories and locks, while every operation is traced.
#include "tests/module/Operation.h"
#include "tests/support/Pattern.h"

#include <barrier>
#include <map>
#include <thread>

namespace
{
using namespace tests::walk;

constexpr unsigned nThreads = 16;
constexpr unsigned nRounds = 5;

using Counts = std::map<std::string, unsigned>;

// How often each message was written since the last time; a line that is torn makes messages that no other has.
Counts Messages(tests::CTraceLog& log)
{
    Counts messages;
    for (const auto& message : log.Take())
        ++messages[tests::Replaced(message, "[0-9A-F]{16}", "(address)")];
    return messages;
}

// What each operation that takes no time of its own comes to.
std::map<std::string, std::string> Round(CWorld& world, IUnknown& shared)
{
    CComRef<IClassFactory> factory;
    EXPECT_EQ(S_OK, world.Module().GetClassObject(CLSID_ExtUI, IID_IClassFactory, factory.PutVoid()));
    EXPECT_EQ(S_OK, factory->LockServer(TRUE));
    std::map<std::string, std::string> outcomes;
    for (const auto& operation : AllOperations())
    {
        if (IsSlow(operation))
            continue;
        shared.AddRef();
        outcomes[operation.szName] = operation.Outcome(world);
        shared.Release();
    }
    EXPECT_EQ(S_FALSE, world.Module().CanUnloadNow());
    EXPECT_EQ(S_OK, factory->LockServer(FALSE));
    return outcomes;
}

TEST(Concurrency, SixteenThreadsOfObjectsAndLocks)
{
    testing::internal::CaptureStdout();
    CWorld world;
    world.Load();
    auto shared = world.Module().Create<ICCXExtUICon>(IID_ICCXExtUICon);
    Round(world, *shared.Get()); // what is kept from a first time on
    world.log.Take();
    const auto usual = Round(world, *shared.Get());
    auto messages = Messages(world.log);
    const auto alive = world.CountAlive();

    std::barrier start(nThreads);
    std::vector<std::thread> threads;
    for (unsigned i = 0; i < nThreads; ++i)
        threads.emplace_back(
            [&]
            {
                CoInitializeEx(nullptr, COINIT_MULTITHREADED);
                start.arrive_and_wait();
                for (unsigned n = 0; n < nRounds; ++n)
                    EXPECT_EQ(usual, Round(world, *shared.Get()));
                CoUninitialize();
            });
    for (auto& thread : threads)
        thread.join();
    testing::internal::GetCapturedStdout();
    const auto written = Messages(world.log);

    EXPECT_EQ(2u, shared->AddRef());
    EXPECT_EQ(1u, shared->Release());
    EXPECT_EQ(alive, world.CountAlive());
    shared = {};
    EXPECT_EQ(S_OK, world.Module().CanUnloadNow());
    for (auto& message : messages)
        message.second *= nThreads * nRounds;
    EXPECT_EQ(messages, written);
    EXPECT_FALSE(written.empty());
}
} // namespace
