// The properties when the platform fails them: results, outputs, nothing left behind, usable afterwards.
#include "tests/profile/EachCallFails.h"
#include "tests/support/ModuleUnderTest.h"
#include "tests/support/TraceLog.h"

namespace
{
using platform::testing::CFailNth;
using Lines = std::vector<std::string>;

constexpr BOOL untouchedBool = 77;
const CWideString cckmTkip =
    OLESTR("<CCX><authenticatingNetwork><cckm><encryption>TKIP</encryption></cckm></authenticatingNetwork></CCX>");

struct Outcome
{
    HRESULT hr = E_UNEXPECTED;
    BOOL bFlag = untouchedBool;
    CBstr bstrModified;
    bool bHandedOut = false;
};

// An operation with outputs that show whether they were written.
using Call = HRESULT (*)(IDot11ExtUIProperty&, BSTR bstrProfile, BSTR* pbstrModified, BOOL* pbFlag);

Outcome Perform(IDot11ExtUIProperty& property, Call call, BOOL bPassedIn)
{
    const BSTR bstrProfile = CBstr(CWideView(cckmTkip)).Detach();
    WCHAR chMark = 0;
    BSTR bstrModified = &chMark;
    Outcome outcome;
    outcome.bFlag = bPassedIn;
    outcome.hr = call(property, bstrProfile, &bstrModified, &outcome.bFlag);
    outcome.bHandedOut = bstrModified != &chMark;
    if (outcome.bHandedOut)
        *outcome.bstrModified.Put() = bstrModified;
    SysFreeString(bstrProfile);
    return outcome;
}

const struct
{
    const char* name;
    ULONG uKind;
    BOOL bPassedIn;
    Call call;
} operations[] = {
    {"get_selected", propertyKindSecurity, untouchedBool,
     [](auto& property, BSTR bstr, BSTR*, BOOL* pbFlag)
     { return property.Dot11ExtUIPropertyGetSelected(bstr, nullptr, pbFlag); }},
    {"set_selected", propertyKindSecurity, TRUE,
     [](auto& property, BSTR bstr, BSTR* pbstr, BOOL* pbFlag)
     { return property.Dot11ExtUIPropertySetSelected(bstr, nullptr, pbstr, pbFlag); }},
    {"pick_aes", propertyKindSecurity, untouchedBool,
     [](auto& property, BSTR bstr, BSTR* pbstr, BOOL* pbFlag)
     {
         Dot11ExtUIPropertyEntry entry = {4, 0, nullptr};
         return property.Dot11ExtUIPropertySetDisplayInfo(0, bstr, nullptr, &entry, pbstr, pbFlag);
     }},
    {"connection_selected", propertyKindConnection, untouchedBool,
     [](auto& property, BSTR bstr, BSTR* pbstr, BOOL* pbFlag)
     { return property.Dot11ExtUIPropertySetSelected(bstr, nullptr, pbstr, pbFlag); }},
};
constexpr const char* functions[] = {"CoCreateInstance", "loadXML",       "get_documentElement", "selectSingleNode",
                                     "get_nodeValue",    "createElement", "appendChild",         "put_text",
                                     "setAttribute",     "get_xml",       "SysAllocString"};

TEST(PropertyFaults, EveryOperationEndsWellWhicheverCallFails)
{
    const tests::CModuleUnderTest module;
    for (const auto& operation : operations)
    {
        SCOPED_TRACE(operation.name);
        const auto property = module.Property(operation.uKind);
        const auto run = [&] { return Perform(*property.Get(), operation.call, operation.bPassedIn); };
        const auto undisturbed = run();
        EXPECT_EQ(S_OK, undisturbed.hr);
        const auto expectUndisturbed = [&](const Outcome& outcome)
        {
            EXPECT_EQ(S_OK, outcome.hr);
            EXPECT_EQ(undisturbed.bFlag, outcome.bFlag);
            EXPECT_EQ(tests::TextOf(undisturbed.bstrModified), tests::TextOf(outcome.bstrModified));
        };
        for (const char* szFunction : functions)
        {
            tests::EachCallFails(szFunction, run,
                                 [&](unsigned, const Outcome& outcome, bool bFired)
                                 {
                                     if (!bFired)
                                         return expectUndisturbed(outcome);
                                     EXPECT_EQ(S_OK, outcome.hr);
                                     EXPECT_EQ(undisturbed.bHandedOut, outcome.bHandedOut);
                                     EXPECT_EQ(TRUE, outcome.bFlag);
                                 });
            expectUndisturbed(run());
        }
    }
}

// A text of a given length that cannot be made ends the operation, which then has touched nothing.
TEST(PropertyFaults, OutOfMemoryTouchesNothing)
{
    const tests::CModuleUnderTest module;
    for (const auto& operation : operations)
    {
        SCOPED_TRACE(operation.name);
        const auto property = module.Property(operation.uKind);
        unsigned uEnded = 0;
        bool bFired = true;
        // The first call is the caller's own profile.
        for (unsigned uCall = 2; bFired && uCall < 100; ++uCall)
        {
            const auto live = tests::LiveObjects();
            {
                const CFailNth fault("SysAllocStringLen", uCall);
                const auto outcome = Perform(*property.Get(), operation.call, operation.bPassedIn);
                bFired = fault.HasFired();
                if (outcome.hr != S_OK)
                {
                    EXPECT_EQ(E_OUTOFMEMORY, outcome.hr);
                    EXPECT_FALSE(outcome.bHandedOut);
                    EXPECT_EQ(operation.bPassedIn, outcome.bFlag);
                    ++uEnded;
                }
            }
            EXPECT_EQ(live, tests::LiveObjects());
        }
        EXPECT_LE(1u, uEnded);
    }
}

TEST(PropertyFaults, NamesWithoutMemory)
{
    const tests::CModuleUnderTest module;
    for (const ULONG uKind : {propertyKindSecurity, propertyKindConnection})
    {
        const auto property = module.Property(uKind);
        CBstr bstrName;
        {
            const CFailNth fault("SysAllocString", 1);
            EXPECT_EQ(E_OUTOFMEMORY, property->Dot11ExtUIPropertyGetName(bstrName.Put()));
            EXPECT_TRUE(fault.HasFired());
        }
        EXPECT_FALSE(bstrName);
        EXPECT_EQ(S_OK, property->Dot11ExtUIPropertyGetName(bstrName.Put()));
    }
}

TEST(PropertyFaults, AnEntryWithoutMemoryHasNoText)
{
    const tests::CModuleUnderTest module;
    module.Property(propertyKindSecurity);
    tests::EachCallFails(
        "SysAllocString", [&] { return module.Property(propertyKindSecurity); },
        [](unsigned uCall, const CComRef<IDot11ExtUIProperty>& property, bool bFired)
        {
            ULONG cEntries = 0;
            Dot11ExtUIPropertyEntry* pEntries = nullptr;
            ASSERT_TRUE(property);
            EXPECT_EQ(S_OK, property->Dot11ExtUIPropertyGetDisplayInfo(0, nullptr, nullptr, &cEntries, nullptr, &pEntries));
            ASSERT_EQ(3u, cEntries);
            for (ULONG i = 0; i < cEntries; ++i)
                EXPECT_EQ(bFired && uCall == i + 1, pEntries[i].bstrDisplayText == nullptr);
        });
}

TEST(PropertyFaults, WithoutADocumentTheModifiedProfileIsNull)
{
    tests::CTraceLog log;
    const tests::CModuleUnderTest module;
    const Lines last[] = {
        {"***invalid profile, setting defaults\n", "*pfIsSelected: TRUE\n"},
        {"*pbIsModified: TRUE\n", "*bstrModifiedIHVProfile: (null)\n"},
        {"*pbIsModified: TRUE\n", "*bstrModifiedIHVProfile: (null)\n"},
        {"bstrIHVProfile (IN): " + tests::Narrow(cckmTkip) + "\n", "bstrModifiedIHVProfile (OUT): (null)\n"},
    };
    for (std::size_t i = 0; i < std::size(operations); ++i)
    {
        SCOPED_TRACE(operations[i].name);
        const auto property = module.Property(operations[i].uKind);
        log.Take();
        platform::testing::PlanFault("CoCreateInstance", 1, 1000);
        const auto outcome = Perform(*property.Get(), operations[i].call, operations[i].bPassedIn);
        platform::testing::ClearFaults();
        EXPECT_EQ(S_OK, outcome.hr);
        EXPECT_EQ(TRUE, outcome.bFlag);
        EXPECT_FALSE(outcome.bstrModified);
        auto lines = log.Take();
        ASSERT_LE(last[i].size(), lines.size());
        EXPECT_EQ(last[i], Lines(lines.end() - 2, lines.end()));
    }
}
} // namespace
