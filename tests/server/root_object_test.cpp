// The root object: its name and the properties that it hands out.
#include "platform/testing/Faults.h"
#include "tests/support/ModuleUnderTest.h"
#include "tests/support/TraceLog.h"

namespace
{
using tests::CModuleUnderTest;
using Lines = std::vector<std::string>;

TEST(RootObject, KindDecidesWhatIsHandedOut)
{
    tests::CTraceLog log;
    const CModuleUnderTest module;
    const auto root = module.Create<IDot11ExtUI>(IID_IDot11ExtUI);
    const struct
    {
        ULONG uKind;
        HRESULT hr;
        const char* title = nullptr; // of the property
        IID iid = {};
        std::string line = {};
        const char* szFails = nullptr; // the function, with the result
    } rows[] = {
        {0, S_OK, "Korvane Connection Settings", IID_ICCXExtUICon, "-- IID_ICCXExtUICon\n"},
        {2, S_OK, "CCKM", IID_ICCXExtUIKey, "-- IID_ICCXExtUIKey\n"},
        {3, E_NOTIMPL},
        {.uKind = 0, .hr = S_FALSE, .szFails = "CoCreateInstance"},
        {.uKind = 2, .hr = S_FALSE, .szFails = "CoCreateInstance"},
    };
    for (const auto& row : rows)
    {
        SCOPED_TRACE(row.uKind);
        ULONG cProperties = 77;
        auto ppProperties = reinterpret_cast<IDot11ExtUIProperty**>(&cProperties);
        log.Take();
        if (row.szFails)
            platform::testing::PlanFault(row.szFails, 1, 1, static_cast<DWORD>(row.hr));
        EXPECT_EQ(row.hr, root->Dot11ExtUIGetProperties(row.uKind, &cProperties, &ppProperties));
        platform::testing::ClearFaults();
        EXPECT_EQ(row.title ? Lines({"GetClassObject\n", "CFactory::CreateInstance\n", row.line}) : Lines(), log.Take());
        ASSERT_EQ(row.title ? 1u : 0u, cProperties);
        ASSERT_EQ(row.title != nullptr, ppProperties != nullptr);
        if (!ppProperties)
            continue;
        CBstr name;
        EXPECT_EQ(S_OK, ppProperties[0]->Dot11ExtUIPropertyGetName(name.Put()));
        EXPECT_EQ(row.title, tests::TextOf(name));
        void* pvOwn = nullptr;
        EXPECT_EQ(S_OK, ppProperties[0]->QueryInterface(row.iid, &pvOwn));
        EXPECT_EQ(ppProperties[0], pvOwn) << "handed out as its own interface";
        EXPECT_EQ(1u, ppProperties[0]->Release());
        EXPECT_EQ(0u, ppProperties[0]->Release()) << "with one reference";
        CoTaskMemFree(ppProperties);
    }
}
} // namespace
