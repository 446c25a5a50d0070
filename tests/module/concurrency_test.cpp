// Many threads at the module at once: objects of all classes, factories and locks, while every operation is traced.
#include "tests/module/Operation.h"

#include <barrier>
#include <map>
#include <regex>
#include <thread>

namespace
{
using namespace tests::walk;

constexpr int nThreads = 16;
constexpr int nRounds = 5;

// How many lines the log holds; none when anything in it is no line of the log, from its time to its end. A message may
// begin with a line feed, which stands in it as it was traced.
std::size_t WholeLines(const std::string& log)
{
    static const std::regex line(R"(\d\d:\d\d:\d\d\.\d\d\d \[[ 0-9A-F]{8}\]   Ihvui: \n?[^\r\n]+\r\n)");
    std::size_t nLines = 0;
    std::size_t cb = 0;
    for (std::sregex_iterator it(log.begin(), log.end(), line, std::regex_constants::match_continuous), end; it != end; ++it)
    {
        ++nLines;
        cb += static_cast<std::size_t>(it->length());
    }
    return cb == log.size() ? nLines : 0;
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
    const auto nLinesBefore = WholeLines(world.Log().Bytes());
    const auto usual = Round(world, *shared.Get()); // and how many lines there are to a round
    const auto nLines = WholeLines(world.Log().Bytes()) - nLinesBefore;
    const auto alive = world.CountAlive();

    std::barrier start(nThreads);
    std::vector<std::thread> threads;
    for (int i = 0; i < nThreads; ++i)
        threads.emplace_back(
            [&]
            {
                CoInitializeEx(nullptr, COINIT_MULTITHREADED);
                start.arrive_and_wait();
                for (int n = 0; n < nRounds; ++n)
                    EXPECT_EQ(usual, Round(world, *shared.Get()));
                CoUninitialize();
            });
    for (auto& thread : threads)
        thread.join();
    testing::internal::GetCapturedStdout();

    EXPECT_EQ(2u, shared->AddRef());
    EXPECT_EQ(1u, shared->Release());
    EXPECT_EQ(alive, world.CountAlive());
    shared = {};
    EXPECT_EQ(S_OK, world.Module().CanUnloadNow());
    EXPECT_NE(0u, nLines);
    EXPECT_EQ(nLinesBefore + nLines * (1 + nThreads * nRounds), WholeLines(world.Log().Bytes()));
}
} // namespace
