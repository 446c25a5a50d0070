// The order of the operations in each interface: hosts call them by their place.
#include "extui/SecurityPropertyInfo.h"
#include "tests/support/ModuleUnderTest.h"
#include "tests/support/TraceLog.h"

#include <functional>

namespace
{
using tests::CModuleUnderTest;
using Lines = std::vector<std::string>;

template <class Result = HRESULT, class... Arguments>
Result Call(void* pObject, std::size_t uSlot, Arguments... arguments)
{
    using Operation = Result(STDMETHODCALLTYPE*)(void*, Arguments...);
    void** const ppTable = *static_cast<void***>(pObject);
    return reinterpret_cast<Operation>(ppTable[uSlot])(pObject, arguments...);
}

struct SlotCase
{
    const char* name;
    std::function<HRESULT()> call;
    HRESULT hr;
    Lines lines;
};

class SlotOrder : public testing::Test
{
protected:
    template <class Interface>
    CComRef<Interface> Create(REFIID riid)
    {
        auto object = m_module.Create<Interface>(riid);
        m_log.Take();
        // The first three slots are the same everywhere.
        void* pv = nullptr;
        EXPECT_EQ(S_OK, (Call<HRESULT, const IID*, void**>(object.Get(), 0, &riid, &pv)));
        EXPECT_EQ(object.Get(), pv);
        EXPECT_EQ(3u, Call<ULONG>(object.Get(), 1));
        EXPECT_EQ(2u, Call<ULONG>(object.Get(), 2));
        EXPECT_EQ(1u, Call<ULONG>(object.Get(), 2));
        return object;
    }
    void Run(const std::vector<SlotCase>& rows)
    {
        for (const auto& row : rows)
        {
            EXPECT_EQ(row.hr, row.call()) << row.name;
            EXPECT_EQ(row.lines, m_log.Take()) << row.name;
        }
    }

    tests::CTraceLog m_log;
    const CModuleUnderTest m_module{CModuleUnderTest::Registration::None};
    CBstr m_name;
    BOOL m_bFlag = -1;
    ULONG m_uFirst = 99;
    ULONG m_uSecond = 99;
    Dot11ExtUIPropertyEntry* m_pEntry = nullptr;
};

constexpr BSTR noText = nullptr;
constexpr BSTR* noTextOut = nullptr;
constexpr BOOL* noFlagOut = nullptr;
constexpr void* noContext = nullptr;
const Lines invalid = {"***Error: returning E_INVALIDARG\n"};

Lines Header(const char* szHeader, const char* szCode)
{
    return {szHeader, std::string("***Error: returning ") + szCode + "\n"};
}

TEST_F(SlotOrder, ClassFactory)
{
    CComRef<IClassFactory> factory;
    CComRef<IUnknown> key;
    ASSERT_EQ(S_OK, m_module.GetClassObject(CLSID_ExtUI, IID_IClassFactory, factory.PutVoid()));
    m_log.Take();
    IUnknown* const pNoOuter = nullptr;
    EXPECT_EQ(2u, Call<ULONG>(factory.Get(), 1));
    EXPECT_EQ(1u, Call<ULONG>(factory.Get(), 2));
    Run({{"CreateInstance",
          [&] { return Call(factory.Get(), 3, pNoOuter, &IID_ICCXExtUIKey, key.PutVoid()); },
          S_OK,
          {"CFactory::CreateInstance\n", "-- IID_ICCXExtUIKey\n"}},
         {"LockServer", [&] { return Call(factory.Get(), 4, BOOL{1}); }, S_OK, {}}});
    key = {};
    EXPECT_EQ(S_FALSE, m_module.CanUnloadNow());
    EXPECT_EQ(S_OK, Call(factory.Get(), 4, BOOL{0}));
}

TEST_F(SlotOrder, RootObject)
{
    const auto root = Create<IDot11ExtUI>(IID_IDot11ExtUI);
    IDot11ExtUIProperty** ppProperties = reinterpret_cast<IDot11ExtUIProperty**>(this);
    Run({{"GetFriendlyName", [&] { return Call(root.Get(), 3, m_name.Put()); }, S_OK, {}},
         {"GetProperties", [&] { return Call(root.Get(), 4, ULONG{1}, &m_uFirst, &ppProperties); }, E_NOTIMPL, {}},
         {"Reserved", [&] { return Call(root.Get(), 5, noContext, noContext); }, E_NOTIMPL, {}}});
    EXPECT_EQ("Korvane", tests::TextOf(m_name));
    EXPECT_EQ(0u, m_uFirst);
    EXPECT_EQ(nullptr, ppProperties);
}

TEST_F(SlotOrder, SecurityProperty)
{
    CCXSecurityPropertyInfo info = {0x80000001, 0, 0, 0, 2, 3, {5, 2, 4}};
    const auto key = Create<ICCXExtUIKey>(IID_ICCXExtUIKey);
    void* const p = key.Get();
    BSTR bstrProfile = nullptr;
    const char* const szGet = "\nCExtUIKey::Dot11ExtUIPropertyGetDisplayInfo\n";
    const char* const szSet = "\nCExtUIKey::Dot11ExtUIPropertySetDisplayInfo\n";
    const char* const szGetSelected = "\nCExtUIKey::Dot11ExtUIPropertyGetSelected\n";
    const char* const szSetSelected = "\nCExtUIKey::Dot11ExtUIPropertySetSelected\n";
    Run({{"GetName_unbound", [&] { return Call(p, 3, m_name.Put()); }, E_FAIL, {}},
         {"Initialize", [&] { return Call(p, 11, &info); }, S_OK, {}},
         {"GetName", [&] { return Call(p, 3, m_name.Put()); }, S_OK, {}},
         {"ShowDialog", [&] { return Call(p, 4, HWND{}, noText, noContext, &bstrProfile, &m_bFlag); }, E_NOTIMPL, {}},
         {"GetSelected", [&] { return Call(p, 5, noText, noContext, noFlagOut); }, E_INVALIDARG,
          Header(szGetSelected, "E_INVALIDARG")},
         {"SetSelected", [&] { return Call(p, 6, noText, noContext, noTextOut, noFlagOut); }, E_INVALIDARG,
          Header(szSetSelected, "E_INVALIDARG")},
         {"HasDialog", [&] { return Call(p, 7, &m_bFlag); }, S_OK, {}},
         {"GetDisplayInfo", [&] { return Call(p, 8, ULONG{1}, noText, noContext, &m_uFirst, &m_uFirst, &m_pEntry); }, E_NOTIMPL,
          Header(szGet, "E_NOTIMPL")},
         {"SetDisplayInfo", [&] { return Call(p, 9, ULONG{1}, noText, noContext, m_pEntry, noTextOut, noFlagOut); }, E_NOTIMPL,
          Header(szSet, "E_NOTIMPL")},
         {"GetFlags", [&] { return Call(p, 10, &m_uFirst, &m_uSecond); }, S_OK, {}}});
    EXPECT_EQ("CCKM", tests::TextOf(m_name));
    EXPECT_EQ(nullptr, bstrProfile);
    EXPECT_EQ(FALSE, m_bFlag);
    EXPECT_EQ(0u, m_uFirst);
    EXPECT_EQ(2u, m_uSecond);
}

TEST_F(SlotOrder, ConnectionProperty)
{
    const auto connection = Create<ICCXExtUICon>(IID_ICCXExtUICon);
    void* const p = connection.Get();
    // The dialog's header line bears the other operation's name.
    const char* const szDialog = "\nCExtUICon::Dot11ExtUIPropertySetSelected\n";
    Run({{"GetName", [&] { return Call(p, 3, m_name.Put()); }, S_OK, {}},
         {"ShowDialog", [&] { return Call(p, 4, HWND{}, noText, noContext, noTextOut, noFlagOut); }, E_INVALIDARG,
          Header(szDialog, "E_INVALIDARG")},
         {"GetSelected", [&] { return Call(p, 5, noText, noContext, &m_bFlag); }, E_NOTIMPL, {}},
         {"SetSelected", [&] { return Call(p, 6, noText, noContext, noTextOut, noFlagOut); }, E_INVALIDARG, invalid}});
    EXPECT_EQ(-1, m_bFlag);
    Run({{"HasDialog", [&] { return Call(p, 7, &m_bFlag); }, S_OK, {}},
         {"GetDisplayInfo",
          [&] { return Call(p, 8, ULONG{0}, noText, noContext, &m_uFirst, &m_uSecond, &m_pEntry); },
          E_NOTIMPL,
          {}},
         {"SetDisplayInfo",
          [&] { return Call(p, 9, ULONG{0}, noText, noContext, m_pEntry, noTextOut, noFlagOut); },
          E_NOTIMPL,
          {}},
         {"GetFlags", [&] { return Call(p, 10, &m_uFirst, &m_uSecond); }, E_NOTIMPL, {}}});
    EXPECT_EQ(TRUE, m_bFlag);
    EXPECT_EQ(99u, m_uFirst);
    EXPECT_EQ(99u, m_uSecond);
}
} // namespace
