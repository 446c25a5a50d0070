// What DllGetClassObject and the class factory hand out, and what keeps the module loaded.
#include "tests/support/ModuleUnderTest.h"
#include "tests/support/TraceLog.h"

#include <functional>
#include <thread>

namespace
{
using tests::CModuleUnderTest;
using Lines = std::vector<std::string>;

constexpr IID otherId = {0x5A1D0C77, 0x0B11, 0x4E0C, {0x9A, 0x11, 0x6B, 0x30, 0x52, 0x1E, 0x77, 0x03}};

// What became of an out pointer.
enum class Out
{
    Stored,
    Null,
    Untouched,
};

// An out pointer that remembers whether it was written.
class COutPointer
{
public:
    ~COutPointer()
    {
        if (State() == Out::Stored)
            Object()->Release();
    }
    void** Put()
    {
        return &m_pv;
    }
    Out State() const
    {
        return m_pv == this ? Out::Untouched : m_pv ? Out::Stored : Out::Null;
    }
    IUnknown* Object() const
    {
        return static_cast<IUnknown*>(m_pv);
    }

private:
    void* m_pv = this;
};

ULONG CountReferences(IUnknown* pObject)
{
    pObject->AddRef();
    return pObject->Release();
}

// The object answers its own identifier and IUnknown's, each with a reference of its own, and no other.
void ExpectOwnInterfaceOnly(IUnknown* pObject, REFIID own)
{
    for (const IID& iid : {IID_IUnknown, IID_IClassFactory, IID_IDot11ExtUI, IID_ICCXExtUICon, IID_ICCXExtUIKey, otherId})
    {
        const bool bAnswered = IsEqualGUID(iid, IID_IUnknown) || IsEqualGUID(iid, own);
        COutPointer out;
        EXPECT_EQ(bAnswered ? S_OK : E_NOINTERFACE, pObject->QueryInterface(iid, out.Put())) << std::hex << iid.Data1;
        ASSERT_EQ(bAnswered ? Out::Stored : Out::Null, out.State()) << std::hex << iid.Data1;
        EXPECT_EQ(bAnswered ? 2u : 1u, CountReferences(pObject)) << std::hex << iid.Data1;
    }
}

TEST(ClassObject, IdentifiersDecide)
{
    tests::CTraceLog log;
    const CModuleUnderTest module(CModuleUnderTest::Registration::None);
    const Lines asked = {"GetClassObject\n"};
    const Lines refused = {"GetClassObject\n", "***Error: returning CLASS_E_CLASSNOTAVAILABLE\n"};
    const struct
    {
        const char* name;
        CLSID clsid;
        IID iid;
        HRESULT hr;
        Out out;
        Lines lines;
    } rows[] = {
        {"factory", CLSID_ExtUI, IID_IClassFactory, S_OK, Out::Stored, asked},
        {"unknown", CLSID_ExtUI, IID_IUnknown, S_OK, Out::Stored, asked},
        {"root_is_no_class_object", CLSID_ExtUI, IID_IDot11ExtUI, E_NOINTERFACE, Out::Null, asked},
        {"security_is_no_class_object", CLSID_ExtUI, IID_ICCXExtUIKey, E_NOINTERFACE, Out::Null, asked},
        {"other_interface", CLSID_ExtUI, otherId, E_NOINTERFACE, Out::Null, asked},
        {"other_class", otherId, IID_IClassFactory, CLASS_E_CLASSNOTAVAILABLE, Out::Untouched, refused},
        {"other_class_and_interface", otherId, otherId, CLASS_E_CLASSNOTAVAILABLE, Out::Untouched, refused},
        {"root_identifier_as_class", IID_IDot11ExtUI, IID_IUnknown, CLASS_E_CLASSNOTAVAILABLE, Out::Untouched, refused},
    };
    for (const auto& row : rows)
    {
        SCOPED_TRACE(row.name);
        COutPointer out;
        EXPECT_EQ(row.hr, module.GetClassObject(row.clsid, row.iid, out.Put()));
        ASSERT_EQ(row.out, out.State());
        EXPECT_EQ(row.lines, log.Take());
        if (row.out == Out::Stored)
        {
            EXPECT_EQ(1u, CountReferences(out.Object()));
            ExpectOwnInterfaceOnly(out.Object(), IID_IClassFactory);
        }
        EXPECT_EQ(S_OK, module.CanUnloadNow()) << "a factory does not keep the module";
        EXPECT_EQ(Lines{}, log.Take()) << "none of this is traced";
    }
}

TEST(ClassObject, EveryByteOfAnIdentifierCounts)
{
    const CModuleUnderTest module(CModuleUnderTest::Registration::None);
    CComRef<IClassFactory> factory;
    ASSERT_EQ(S_OK, module.GetClassObject(CLSID_ExtUI, IID_IClassFactory, factory.PutVoid()));
    for (std::size_t i = 0; i < sizeof(GUID); ++i)
    {
        const auto changed = [i](GUID guid)
        {
            reinterpret_cast<BYTE*>(&guid)[i] ^= 1;
            return guid;
        };
        COutPointer out;
        EXPECT_EQ(CLASS_E_CLASSNOTAVAILABLE, module.GetClassObject(changed(CLSID_ExtUI), IID_IUnknown, out.Put())) << i;
        for (const IID& iid : {IID_IDot11ExtUI, IID_ICCXExtUICon, IID_ICCXExtUIKey})
            EXPECT_EQ(E_NOINTERFACE, factory->CreateInstance(nullptr, changed(iid), out.Put())) << i;
    }
}

TEST(ClassFactory, InterfaceChoosesTheClass)
{
    tests::CTraceLog log;
    const CModuleUnderTest module(CModuleUnderTest::Registration::None);
    CComRef<IClassFactory> factory;
    ASSERT_EQ(S_OK, module.GetClassObject(CLSID_ExtUI, IID_IClassFactory, factory.PutVoid()));
    log.Take();
    const struct
    {
        const char* name;
        bool bOuter;
        IID iid;
        HRESULT hr;
        const char* szLine; // behind the operation's own; null for none
    } rows[] = {
        {"root", false, IID_IDot11ExtUI, S_OK, "-- IID_IDot11ExtUI\n"},
        {"connection", false, IID_ICCXExtUICon, S_OK, "-- IID_ICCXExtUICon\n"},
        {"security", false, IID_ICCXExtUIKey, S_OK, "-- IID_ICCXExtUIKey\n"},
        {"unknown", false, IID_IUnknown, E_NOINTERFACE, nullptr},
        {"factory", false, IID_IClassFactory, E_NOINTERFACE, nullptr},
        {"other", false, otherId, E_NOINTERFACE, nullptr},
        {"root_in_outer", true, IID_IDot11ExtUI, CLASS_E_NOAGGREGATION, "***Error: returning CLASS_E_NOAGGREGATION\n"},
        {"unknown_in_outer", true, IID_IUnknown, CLASS_E_NOAGGREGATION, "***Error: returning CLASS_E_NOAGGREGATION\n"},
        {"other_in_outer", true, otherId, CLASS_E_NOAGGREGATION, "***Error: returning CLASS_E_NOAGGREGATION\n"},
    };
    for (const auto& row : rows)
    {
        SCOPED_TRACE(row.name);
        {
            COutPointer out;
            EXPECT_EQ(row.hr, factory->CreateInstance(row.bOuter ? factory.Get() : nullptr, row.iid, out.Put()));
            ASSERT_EQ(row.hr == S_OK ? Out::Stored : Out::Untouched, out.State());
            EXPECT_EQ(row.hr == S_OK ? S_FALSE : S_OK, module.CanUnloadNow());
            if (row.hr == S_OK)
            {
                EXPECT_EQ(1u, CountReferences(out.Object()));
                ExpectOwnInterfaceOnly(out.Object(), row.iid);
            }
        }
        EXPECT_EQ(S_OK, module.CanUnloadNow());
        Lines expected = {"CFactory::CreateInstance\n"};
        if (row.szLine)
            expected.emplace_back(row.szLine);
        EXPECT_EQ(expected, log.Take());
    }
}

TEST(ClassFactory, ObjectsAndLocksKeepTheModule)
{
    const CModuleUnderTest module(CModuleUnderTest::Registration::None);
    CComRef<IClassFactory> factory;
    ASSERT_EQ(S_OK, module.GetClassObject(CLSID_ExtUI, IID_IClassFactory, factory.PutVoid()));
    auto first = module.Create<ICCXExtUIKey>(IID_ICCXExtUIKey);
    auto second = module.Create<ICCXExtUIKey>(IID_ICCXExtUIKey);
    const struct
    {
        const char* step;
        std::function<void()> run;
        HRESULT hr;
    } steps[] = {
        {"lock", [&] { EXPECT_EQ(S_OK, factory->LockServer(TRUE)); }, S_FALSE},
        {"first_object_gone", [&] { first = {}; }, S_FALSE},
        {"second_object_gone", [&] { second = {}; }, S_FALSE},
        {"unlock", [&] { EXPECT_EQ(S_OK, factory->LockServer(FALSE)); }, S_OK},
        {"lock_by_any_true_value", [&] { EXPECT_EQ(S_OK, factory->LockServer(-5)); }, S_FALSE},
        {"second_lock", [&] { EXPECT_EQ(S_OK, factory->LockServer(TRUE)); }, S_FALSE},
        {"one_unlock", [&] { EXPECT_EQ(S_OK, factory->LockServer(FALSE)); }, S_FALSE},
        {"other_unlock", [&] { EXPECT_EQ(S_OK, factory->LockServer(FALSE)); }, S_OK},
    };
    EXPECT_EQ(S_FALSE, module.CanUnloadNow());
    for (const auto& step : steps)
    {
        step.run();
        EXPECT_EQ(step.hr, module.CanUnloadNow()) << step.step;
    }
}

TEST(ClassFactory, CountsHoldOnSeveralThreads)
{
    const CModuleUnderTest module(CModuleUnderTest::Registration::None);
    CComRef<IClassFactory> factory;
    ASSERT_EQ(S_OK, module.GetClassObject(CLSID_ExtUI, IID_IClassFactory, factory.PutVoid()));
    const auto shared = module.Create<ICCXExtUICon>(IID_ICCXExtUICon);
    {
        std::vector<std::jthread> threads;
        for (int i = 0; i < 4; ++i)
            threads.emplace_back(
                [&]
                {
                    for (int k = 0; k < 20000; ++k)
                    {
                        shared->AddRef();
                        factory->LockServer(TRUE);
                        factory->LockServer(FALSE);
                        shared->Release();
                    }
                    for (int k = 0; k < 50; ++k)
                        module.Create<ICCXExtUIKey>(IID_ICCXExtUIKey);
                });
    }
    EXPECT_EQ(1u, CountReferences(shared.Get()));
    EXPECT_EQ(S_FALSE, module.CanUnloadNow());
}
} // namespace
