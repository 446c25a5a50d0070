// Registration, activation and language search when the platform fails them.
#include "platform/testing/Faults.h"
#include "tests/server/RegistrationTest.h"
#include "tests/support/LiveObjects.h"

namespace
{
using namespace tests::registration;
using platform::testing::CFailNth;
using tests::CModuleUnderTest;

using RegistrationFaults = RegistrationTest;

// What of the registration is there, in the order in which it is written.
std::string Left()
{
    std::string left;
    const auto add = [&](bool bThere, const char* szWord) { left += bThere ? szWord : ""; };
    add(Exists(szClassKey), "class");
    add(Read(szClassKey, nullptr).has_value(), " description");
    add(Exists(szServerKey), " server");
    add(Read(szServerKey, nullptr).has_value(), " path");
    add(Read(szServerKey, OLESTR("ThreadingModel")).has_value(), " model");
    return left;
}

TEST_F(RegistrationFaults, EachStepEndsTheWorkAndStays)
{
    const struct
    {
        const char* name;
        bool bUnregister; // what was registered before
        const char* szFunction;
        unsigned uNth;
        std::size_t nLines; // of the five that a full run writes
        const char* left;
    } rows[] = {
        {"no_right_to_open_the_classes", false, "RegOpenKeyExW", 1, 2, ""},
        {"class_key_not_created", false, "RegCreateKeyExW", 1, 3, ""},
        {"description_not_set", false, "RegSetValueExW", 1, 5, "class"},
        {"server_key_not_created", false, "RegCreateKeyExW", 2, 5, "class description"},
        {"path_unknown", false, "GetModuleFileNameW", 1, 5, "class description server"},
        {"path_not_set", false, "RegSetValueExW", 2, 5, "class description server"},
        {"model_not_set", false, "RegSetValueExW", 3, 5, "class description server path"},
        {"no_right_to_open_them_again", true, "RegOpenKeyExW", 1, 2, "class description server path model"},
        {"class_key_not_opened", true, "RegCreateKeyExW", 1, 3, "class description server path model"},
        {"server_key_not_deleted", true, "RegDeleteKeyW", 1, 5, "class description server path model"},
        {"class_key_not_deleted", true, "RegDeleteKeyW", 2, 5, "class description"},
    };
    for (const auto& row : rows)
    {
        SCOPED_TRACE(row.name);
        RemoveKeys();
        if (row.bUnregister)
        {
            EXPECT_EQ(S_OK, Register());
        }
        Lines();
        const auto live = tests::LiveObjects();
        {
            const CFailNth fault(row.szFunction, row.uNth, ERROR_ACCESS_DENIED);
            EXPECT_EQ(S_FALSE, row.bUnregister ? Unregister() : Register());
            EXPECT_TRUE(fault.HasFired());
        }
        EXPECT_EQ(live, tests::LiveObjects());
        auto expected = Expected(row.bUnregister);
        expected.resize(row.nLines);
        EXPECT_EQ(expected, Lines());
        EXPECT_EQ(row.left, Left());
    }
}

TEST(RootObjectFaults, NothingIsLeftBehind)
{
    const CModuleUnderTest module;
    const auto root = module.Create<IDot11ExtUI>(IID_IDot11ExtUI);
    module.Property(propertyKindConnection); // what the platform keeps of an activation is there from now on
    const struct
    {
        const char* szFunction;
        HRESULT hrPlanned;
        HRESULT hr;
    } rows[] = {
        {"CoTaskMemAlloc", S_OK, E_OUTOFMEMORY},
        {"CoCreateInstance", E_FAIL, E_FAIL},
        {"CoCreateInstance", E_NOINTERFACE, E_NOINTERFACE},
    };
    for (const auto& row : rows)
        for (const ULONG uKind : {propertyKindConnection, propertyKindSecurity})
        {
            SCOPED_TRACE(row.szFunction + std::to_string(uKind));
            ULONG cProperties = 77;
            auto ppProperties = reinterpret_cast<IDot11ExtUIProperty**>(&cProperties);
            const auto live = tests::LiveObjects();
            const CFailNth fault(row.szFunction, 1, static_cast<DWORD>(row.hrPlanned));
            EXPECT_EQ(row.hr, root->Dot11ExtUIGetProperties(uKind, &cProperties, &ppProperties));
            EXPECT_TRUE(fault.HasFired());
            EXPECT_EQ(0u, cProperties);
            EXPECT_EQ(nullptr, ppProperties);
            EXPECT_EQ(live, tests::LiveObjects());
        }
}

TEST(RootObjectFaults, NameWithoutMemoryIsNull)
{
    const CModuleUnderTest module(CModuleUnderTest::Registration::None);
    const auto root = module.Create<IDot11ExtUI>(IID_IDot11ExtUI);
    WCHAR chSomewhere = 0;
    BSTR bstrName = &chSomewhere;
    const CFailNth fault("SysAllocString", 1);
    EXPECT_EQ(S_OK, root->Dot11ExtUIGetFriendlyName(&bstrName));
    EXPECT_TRUE(fault.HasFired());
    EXPECT_EQ(nullptr, bstrName);
}
} // namespace
