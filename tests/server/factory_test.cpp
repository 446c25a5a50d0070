// What DllGetClassObject and the class factory hand out, and what keeps the module loaded.
#include "tests/support/ModuleUnderTest.h"
#include "tests/support/TraceLog.h"

#include <functional>

namespace
{
using Lines = std::vector<std::string>;

// As hosts know them, and one that nobody serves.
constexpr CLSID classId = {0x6C0E5D21, 0x3B7A, 0x4F19, {0x9D, 0x42, 0x7E, 0x1A, 0x8C, 0x3F, 0x5B, 0x60}};
constexpr IID rootId = {0xF2B676C7, 0xDA6A, 0x4167, {0xA6, 0x96, 0xF5, 0x5F, 0x5D, 0xFC, 0xBC, 0x8F}};
constexpr IID securityId = {0xB8D14F3A, 0x27C6, 0x4E5B, {0xA1, 0xF0, 0x93, 0xC5, 0xD7, 0xE2, 0x48, 0x6B}};
constexpr IID connectionId = {0x3E9A7C52, 0xD1B4, 0x4A86, {0x8F, 0x27, 0xC0, 0x4B, 0x61, 0xE9, 0xD3, 0x5A}};
constexpr IID otherId = {0x3E9A7C52, 0xD1B4, 0x4A86, {0x8F, 0x27, 0xC0, 0x4B, 0x61, 0xE9, 0xD3, 0x5B}};

// What an out pointer holds afterwards.
enum class Out
{
    Object,
    Null,
    Kept,
};

class ClassFactory : public testing::Test
{
protected:
    ClassFactory()
    {
        EXPECT_EQ(S_OK, m_module.GetClassObject(classId, IID_IClassFactory, m_factory.PutVoid()));
        m_log.Take();
    }
    ~ClassFactory() override
    {
        m_factory = {};
    }

    // The object has one reference and answers its own identifier and IUnknown's alone, each with one more.
    static void ExpectOwnInterfaceOnly(IUnknown* pObject, REFIID own)
    {
        for (const IID& iid : {IID_IUnknown, IID_IClassFactory, rootId, connectionId, securityId, otherId})
        {
            const bool bAnswered = IsEqualGUID(iid, IID_IUnknown) || IsEqualGUID(iid, own);
            void* pv = &pv;
            EXPECT_EQ(bAnswered ? S_OK : E_NOINTERFACE, pObject->QueryInterface(iid, &pv)) << std::hex << iid.Data1;
            EXPECT_EQ(bAnswered ? pObject : nullptr, pv) << std::hex << iid.Data1;
            const ULONG uReferences = pObject->AddRef();
            EXPECT_EQ(bAnswered ? 3u : 2u, uReferences);
            for (ULONG uLeft = uReferences; --uLeft != 0;)
                EXPECT_EQ(uLeft, pObject->Release());
        }
        EXPECT_EQ(E_POINTER, pObject->QueryInterface(own, nullptr));
    }

    tests::CTraceLog m_log;
    const tests::CModuleUnderTest m_module{tests::CModuleUnderTest::Registration::None};
    CComRef<IClassFactory> m_factory;
};

TEST_F(ClassFactory, IdentifiersDecide)
{
    const auto classObject = [&](const CLSID& clsid, const IID& iid)
    { return [&, clsid, iid](void** ppv) { return m_module.GetClassObject(clsid, iid, ppv); }; };
    const auto instance = [&](const IID& iid, IUnknown* pOuter = nullptr)
    { return [&, iid, pOuter](void** ppv) { return m_factory->CreateInstance(pOuter, iid, ppv); }; };
    IUnknown* const pOuter = m_factory.Get();
    const Lines asked = {"GetClassObject\n"};
    const Lines noClass = {"GetClassObject\n", "***Error: returning CLASS_E_CLASSNOTAVAILABLE\n"};
    const Lines made = {"CFactory::CreateInstance\n"};
    const Lines noOuter = {"CFactory::CreateInstance\n", "***Error: returning CLASS_E_NOAGGREGATION\n"};
    const struct
    {
        const char* name;
        std::function<HRESULT(void**)> ask;
        HRESULT hr;
        Out out;
        Lines lines;
        IID own = {}; // of an object that is handed out
    } rows[] = {
        {"factory", classObject(classId, IID_IClassFactory), S_OK, Out::Object, asked, IID_IClassFactory},
        {"root_is_no_class_object", classObject(classId, rootId), E_NOINTERFACE, Out::Null, asked},
        {"other_class", classObject(otherId, IID_IClassFactory), CLASS_E_CLASSNOTAVAILABLE, Out::Kept, noClass},
        {"root", instance(rootId), S_OK, Out::Object, {made[0], "-- IID_IDot11ExtUI\n"}, rootId},
        {"connection", instance(connectionId), S_OK, Out::Object, {made[0], "-- IID_ICCXExtUICon\n"}, connectionId},
        {"security", instance(securityId), S_OK, Out::Object, {made[0], "-- IID_ICCXExtUIKey\n"}, securityId},
        {"unknown", instance(IID_IUnknown), E_NOINTERFACE, Out::Kept, made},
        {"other_in_outer", instance(otherId, pOuter), CLASS_E_NOAGGREGATION, Out::Kept, noOuter},
    };
    for (const auto& row : rows)
    {
        SCOPED_TRACE(row.name);
        void* pv = &pv;
        EXPECT_EQ(row.hr, row.ask(&pv));
        ASSERT_EQ(row.out, pv == &pv ? Out::Kept : pv ? Out::Object : Out::Null);
        EXPECT_EQ(row.lines, m_log.Take());
        const bool bKeepsModule = row.out == Out::Object && !IsEqualGUID(row.own, IID_IClassFactory);
        EXPECT_EQ(bKeepsModule ? S_FALSE : S_OK, m_module.CanUnloadNow());
        if (row.out == Out::Object)
        {
            ExpectOwnInterfaceOnly(static_cast<IUnknown*>(pv), row.own);
            EXPECT_EQ(0u, static_cast<IUnknown*>(pv)->Release());
        }
        EXPECT_EQ(S_OK, m_module.CanUnloadNow());
        EXPECT_EQ(Lines{}, m_log.Take()) << "none of this is traced";
    }
}

TEST_F(ClassFactory, LocksKeepTheModule)
{
    for (const auto& [bLock, hr] : {std::pair(TRUE, S_FALSE), {-5, S_FALSE}, {FALSE, S_FALSE}, {FALSE, S_OK}})
    {
        EXPECT_EQ(S_OK, m_factory->LockServer(bLock));
        EXPECT_EQ(hr, m_module.CanUnloadNow());
    }
}
} // namespace
