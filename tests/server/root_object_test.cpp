// The root object: its name and the properties that it hands out.
#include "tests/support/ModuleUnderTest.h"
#include "tests/support/TraceLog.h"

namespace
{
using tests::CModuleUnderTest;
using tests::TextOf;
using Lines = std::vector<std::string>;

TEST(RootObject, KindDecidesWhatIsHandedOut)
{
    tests::CTraceLog log;
    const CModuleUnderTest module;
    const auto root = module.Create<IDot11ExtUI>(IID_IDot11ExtUI);
    log.Take();
    const struct
    {
        const char* name;
        ULONG uKind;
        HRESULT hr;
        const char* title;
        IID iid;
        Lines lines;
    } rows[] = {
        {"connection",
         0,
         S_OK,
         "Korvane Connection Settings",
         IID_ICCXExtUICon,
         {"GetClassObject\n", "CFactory::CreateInstance\n", "-- IID_ICCXExtUICon\n"}},
        {"kind_1", 1, E_NOTIMPL, "", {}, {}},
        {"security",
         2,
         S_OK,
         "CCKM",
         IID_ICCXExtUIKey,
         {"GetClassObject\n", "CFactory::CreateInstance\n", "-- IID_ICCXExtUIKey\n"}},
        {"kind_3", 3, E_NOTIMPL, "", {}, {}},
        {"highest_kind", 0xFFFFFFFF, E_NOTIMPL, "", {}, {}},
    };
    for (const auto& row : rows)
    {
        SCOPED_TRACE(row.name);
        ULONG cProperties = 77;
        auto ppProperties = reinterpret_cast<IDot11ExtUIProperty**>(&cProperties);
        EXPECT_EQ(row.hr, root->Dot11ExtUIGetProperties(row.uKind, &cProperties, &ppProperties));
        EXPECT_EQ(row.lines, log.Take());
        ASSERT_EQ(row.hr == S_OK ? 1u : 0u, cProperties);
        ASSERT_EQ(row.hr == S_OK, ppProperties != nullptr);
        if (!ppProperties)
            continue;
        CBstr name;
        EXPECT_EQ(S_OK, ppProperties[0]->Dot11ExtUIPropertyGetName(name.Put()));
        EXPECT_EQ(row.title, TextOf(name));
        CComRef<IUnknown> own;
        EXPECT_EQ(S_OK, ppProperties[0]->QueryInterface(row.iid, own.PutVoid()));
        EXPECT_EQ(ppProperties[0], static_cast<void*>(own.Get())) << "handed out as its own interface";
        own = {};
        EXPECT_EQ(0u, ppProperties[0]->Release()) << "with one reference";
        CoTaskMemFree(ppProperties);
    }
}

TEST(RootObject, NameAndReserved)
{
    tests::CTraceLog log;
    const CModuleUnderTest module(CModuleUnderTest::Registration::None);
    const auto root = module.Create<IDot11ExtUI>(IID_IDot11ExtUI);
    log.Take();
    for (int i = 0; i < 2; ++i)
    {
        CBstr name;
        EXPECT_EQ(S_OK, root->Dot11ExtUIGetFriendlyName(name.Put()));
        EXPECT_EQ("Korvane", TextOf(name));
    }
    int nAnything = 5;
    EXPECT_EQ(E_NOTIMPL, root->Dot11ExtUIReserved(nullptr, nullptr));
    EXPECT_EQ(E_NOTIMPL, root->Dot11ExtUIReserved(&nAnything, &nAnything));
    EXPECT_EQ(5, nAnything);
    EXPECT_EQ(Lines{}, log.Take());
}

TEST(RootObject, NewSecurityPropertyStartsWithPlainNames)
{
    const CModuleUnderTest module;
    const auto earlier = module.Property(propertyKindSecurity);
    tests::CConnectionContext qualified(OLESTR("Office"), {}, 0, 2);
    ULONG uQualified = 99;
    ULONG uKind = 99;
    EXPECT_EQ(S_OK, earlier->Dot11ExtUIPropertyGetDisplayInfo(0, nullptr, qualified.Get(), nullptr, nullptr, nullptr));
    EXPECT_EQ(S_OK, earlier->Dot11ExtUIPropertyGetFlags(&uQualified, &uKind));
    EXPECT_EQ(1u, uQualified);

    const auto later = module.Property(propertyKindSecurity);
    for (const auto& property : {earlier, later}) // one description for both
    {
        EXPECT_EQ(S_OK, property->Dot11ExtUIPropertyGetFlags(&uQualified, &uKind));
        EXPECT_EQ(0u, uQualified);
        EXPECT_EQ(2u, uKind);
    }
    ULONG cEntries = 0;
    Dot11ExtUIPropertyEntry* pEntries = nullptr;
    EXPECT_EQ(S_OK, later->Dot11ExtUIPropertyGetDisplayInfo(0, nullptr, nullptr, &cEntries, nullptr, &pEntries));
    ASSERT_EQ(3u, cEntries);
    for (const auto* szExpected : {"WEP", "TKIP", "AES"})
        EXPECT_EQ(szExpected, tests::Narrow((pEntries++)->bstrDisplayText));
}

TEST(RootObject, FailingActivationLeavesNothing)
{
    tests::CTraceLog log;
    const CModuleUnderTest module(CModuleUnderTest::Registration::None);
    {
        const auto root = module.Create<IDot11ExtUI>(IID_IDot11ExtUI);
        log.Take();
        for (const ULONG uKind : {propertyKindConnection, propertyKindSecurity})
        {
            ULONG cProperties = 77;
            auto ppProperties = reinterpret_cast<IDot11ExtUIProperty**>(&cProperties);
            EXPECT_EQ(REGDB_E_CLASSNOTREG, root->Dot11ExtUIGetProperties(uKind, &cProperties, &ppProperties)) << uKind;
            EXPECT_EQ(0u, cProperties) << uKind;
            EXPECT_EQ(nullptr, ppProperties) << uKind;
        }
    }
    EXPECT_EQ(S_OK, module.CanUnloadNow());
    EXPECT_EQ(Lines{}, log.Take());
}
} // namespace
