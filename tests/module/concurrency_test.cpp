// Many threads at the module at once: objects of all classes, factories and locks, while every operation is traced.
#include "extui/SecurityPropertyInfo.h"
#include "tests/support/Machine.h"
#include "tests/support/ModuleUnderTest.h"
#include "tests/support/TraceLog.h"

#include <barrier>
#include <regex>
#include <thread>

namespace
{
using tests::CModuleUnderTest;

constexpr int nThreads = 16;
constexpr int nRounds = 20;

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

void Round(const CModuleUnderTest& module, IUnknown* pShared)
{
    pShared->AddRef();
    {
        const auto root = module.Create<IDot11ExtUI>(IID_IDot11ExtUI);
        CBstr name;
        EXPECT_EQ(S_OK, root->Dot11ExtUIGetFriendlyName(name.Put()));
        EXPECT_EQ("Korvane", tests::TextOf(name));
        EXPECT_EQ(S_FALSE, module.CanUnloadNow());
    }
    {
        const auto security = module.Create<ICCXExtUIKey>(IID_ICCXExtUIKey);
        EXPECT_EQ(S_OK, security->Initialize(&SecurityPropertyInfos()[0]));
        BOOL bSelected = FALSE;
        EXPECT_EQ(S_OK, security->Dot11ExtUIPropertyGetSelected(nullptr, nullptr, &bSelected));
        EXPECT_TRUE(bSelected);
        CBstr profile;
        BOOL bModified = FALSE;
        EXPECT_EQ(S_OK, security->Dot11ExtUIPropertySetSelected(nullptr, nullptr, profile.Put(), &bModified));
        EXPECT_EQ("<CCX><authenticatingNetwork><cckm><encryption>AES</encryption></cckm></authenticatingNetwork></CCX>",
                  tests::ProfileTree(profile));
    }
    {
        const auto connection = module.Create<ICCXExtUICon>(IID_ICCXExtUICon);
        CBstr profile;
        BOOL bModified = FALSE;
        const CBstr given(OLESTR("<CCX/>"));
        EXPECT_EQ(S_OK, connection->Dot11ExtUIPropertySetSelected(given.Get(), nullptr, profile.Put(), &bModified));
        EXPECT_TRUE(bModified);
        EXPECT_TRUE(profile);
    }
    CComRef<IClassFactory> factory;
    EXPECT_EQ(S_OK, module.GetClassObject(CLSID_ExtUI, IID_IClassFactory, factory.PutVoid()));
    EXPECT_EQ(S_OK, factory->LockServer(TRUE));
    EXPECT_EQ(S_FALSE, module.CanUnloadNow());
    EXPECT_EQ(S_OK, factory->LockServer(FALSE));
    pShared->Release();
}

TEST(Concurrency, SixteenThreadsOfObjectsAndLocks)
{
    const tests::CTraceLog log;
    const CModuleUnderTest module(CModuleUnderTest::Registration::None);
    testing::internal::CaptureStdout();
    auto shared = module.Create<ICCXExtUICon>(IID_ICCXExtUICon);
    const auto nLinesBefore = WholeLines(log.Bytes());
    Round(module, shared.Get()); // what is kept from a first time on, and how many lines there are to a round
    const auto nLines = WholeLines(log.Bytes()) - nLinesBefore;
    const auto live = tests::LiveObjects();

    std::barrier start(nThreads);
    std::vector<std::thread> threads;
    for (int i = 0; i < nThreads; ++i)
        threads.emplace_back(
            [&]
            {
                CoInitializeEx(nullptr, COINIT_MULTITHREADED);
                start.arrive_and_wait();
                for (int n = 0; n < nRounds; ++n)
                    Round(module, shared.Get());
                CoUninitialize();
            });
    for (auto& thread : threads)
        thread.join();
    testing::internal::GetCapturedStdout();

    EXPECT_EQ(2u, shared->AddRef());
    EXPECT_EQ(1u, shared->Release());
    shared = {};
    EXPECT_EQ(S_OK, module.CanUnloadNow());
    EXPECT_EQ(live, tests::LiveObjects());
    EXPECT_NE(0u, nLines);
    EXPECT_EQ(nLinesBefore + nLines * (1 + nThreads * nRounds), WholeLines(log.Bytes()));
}
} // namespace
