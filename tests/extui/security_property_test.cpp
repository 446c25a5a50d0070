// The security property as a host uses it: refusals and their order, what it describes itself as, its entries.
#include "extui/SecurityPropertyInfo.h"
#include "tests/extui/SecurityPropertyTest.h"

namespace
{
using namespace tests::security;

// Everything that an operation may write to, set to be recognised.
struct Outputs
{
    Dot11ExtUIPropertyEntry entry = {4, 0, nullptr};
    BSTR bstrModified = reinterpret_cast<BSTR>(&entry);
    BOOL bFlag = untouchedBool;
    ULONG uFirst = untouchedNumber;
    ULONG uSecond = untouchedNumber;
    Dot11ExtUIPropertyEntry* pEntries = &entry;

    bool AreUntouched() const
    {
        return bstrModified == reinterpret_cast<BSTR>(const_cast<Dot11ExtUIPropertyEntry*>(&entry)) && bFlag == untouchedBool &&
               uFirst == untouchedNumber && uSecond == untouchedNumber && pEntries == &entry;
    }
};

// What is refused, before anything is read or written.
struct RefusalCase
{
    const char* name;
    bool bBound;
    HRESULT (*run)(IDot11ExtUIProperty&, Outputs&);
    HRESULT hr;
    const char* szOperation = nullptr; // of the header line; null where no line is written
};

class SecurityPropertyRefusal : public SecurityPropertyCase<RefusalCase>
{
};

std::string CodeName(HRESULT hr)
{
    return hr == E_INVALIDARG ? "E_INVALIDARG" : hr == E_FAIL ? "E_FAIL" : "E_NOTIMPL";
}

TEST_P(SecurityPropertyRefusal, TouchesNothing)
{
    const auto& param = GetParam();
    const auto unbound = Unbound();
    IDot11ExtUIProperty& property = param.bBound ? Bound() : *unbound.Get();
    Outputs out;
    TakeLines();
    EXPECT_EQ(param.hr, param.run(property, out));
    EXPECT_TRUE(out.AreUntouched());
    Lines expected;
    if (param.szOperation)
        expected = {"\nCExtUIKey::Dot11ExtUIProperty" + std::string(param.szOperation) + "\n",
                    "***Error: returning " + CodeName(param.hr) + "\n"};
    EXPECT_EQ(expected, TakeLines());
}

#define RUN(call) [](IDot11ExtUIProperty& p, [[maybe_unused]] Outputs& o) -> HRESULT { return p.Dot11ExtUIProperty##call; }
constexpr bool bound = true;
constexpr bool unbound = false;
const RefusalCase refusalCases[] = {
    {"name_null", bound, RUN(GetName(nullptr)), E_POINTER},
    {"name_unbound_before_null", unbound, RUN(GetName(nullptr)), E_FAIL},
    {"name_unbound", unbound, RUN(GetName(&o.bstrModified)), E_FAIL},
    {"dialog", bound, RUN(ShowDialog(nullptr, nullptr, nullptr, &o.bstrModified, &o.bFlag)), E_NOTIMPL},
    {"dialog_null", unbound, RUN(ShowDialog(nullptr, nullptr, nullptr, nullptr, nullptr)), E_NOTIMPL},
    {"get_selected_null_before_unbound", unbound, RUN(GetSelected(nullptr, nullptr, nullptr)), E_INVALIDARG, "GetSelected"},
    {"get_selected_unbound", unbound, RUN(GetSelected(nullptr, nullptr, &o.bFlag)), E_FAIL, "GetSelected"},
    {"set_selected_null_text", bound, RUN(SetSelected(nullptr, nullptr, nullptr, &o.bFlag)), E_INVALIDARG, "SetSelected"},
    {"set_selected_null_flag", unbound, RUN(SetSelected(nullptr, nullptr, &o.bstrModified, nullptr)), E_INVALIDARG,
     "SetSelected"},
    {"set_selected_unbound", unbound, RUN(SetSelected(nullptr, nullptr, &o.bstrModified, &o.bFlag)), E_FAIL, "SetSelected"},
    {"has_dialog_unbound_before_null", unbound, RUN(HasDialog(nullptr)), E_FAIL},
    {"has_dialog_null", bound, RUN(HasDialog(nullptr)), E_INVALIDARG},
    {"entries_of_index_1_before_unbound", unbound, RUN(GetDisplayInfo(1, nullptr, nullptr, &o.uFirst, &o.uSecond, &o.pEntries)),
     E_NOTIMPL, "GetDisplayInfo"},
    {"entries_unbound", unbound, RUN(GetDisplayInfo(0, nullptr, nullptr, &o.uFirst, &o.uSecond, &o.pEntries)), E_FAIL,
     "GetDisplayInfo"},
    {"pick_index_1_before_null", bound, RUN(SetDisplayInfo(1, nullptr, nullptr, nullptr, nullptr, nullptr)), E_NOTIMPL,
     "SetDisplayInfo"},
    {"pick_null_entry", bound, RUN(SetDisplayInfo(0, nullptr, nullptr, nullptr, &o.bstrModified, &o.bFlag)), E_INVALIDARG,
     "SetDisplayInfo"},
    {"pick_null_text", bound, RUN(SetDisplayInfo(0, nullptr, nullptr, &o.entry, nullptr, &o.bFlag)), E_INVALIDARG,
     "SetDisplayInfo"},
    {"pick_null_flag_before_unbound", unbound, RUN(SetDisplayInfo(0, nullptr, nullptr, &o.entry, &o.bstrModified, nullptr)),
     E_INVALIDARG, "SetDisplayInfo"},
    {"pick_unbound", unbound, RUN(SetDisplayInfo(0, nullptr, nullptr, &o.entry, &o.bstrModified, &o.bFlag)), E_FAIL,
     "SetDisplayInfo"},
    {"flags_unbound_before_null", unbound, RUN(GetFlags(nullptr, nullptr)), E_FAIL},
    {"flags_null_first", bound, RUN(GetFlags(nullptr, &o.uSecond)), E_INVALIDARG},
    {"flags_null_second", bound, RUN(GetFlags(&o.uFirst, nullptr)), E_INVALIDARG},
};
INSTANTIATE_TEST_SUITE_P(Calls, SecurityPropertyRefusal, testing::ValuesIn(refusalCases), CaseName<RefusalCase>);

TEST_F(SecurityProperty, NameDialogAndFlags)
{
    CBstr bstrName;
    BOOL bHasDialog = untouchedBool;
    ULONG uQualified = untouchedNumber;
    ULONG uKind = untouchedNumber;
    TakeLines();
    EXPECT_EQ(S_OK, Bound().Dot11ExtUIPropertyGetName(bstrName.Put()));
    EXPECT_EQ("CCKM", tests::TextOf(bstrName));
    EXPECT_EQ(S_OK, Bound().Dot11ExtUIPropertyHasDialog(&bHasDialog));
    EXPECT_EQ(FALSE, bHasDialog);
    EXPECT_EQ(S_OK, Bound().Dot11ExtUIPropertyGetFlags(&uQualified, &uKind));
    EXPECT_EQ(0u, uQualified);
    EXPECT_EQ(2u, uKind);
    EXPECT_EQ(Lines(), TakeLines());
}

TEST_F(SecurityProperty, AnswersItsOwnInterfaceAndIUnknownOnly)
{
    auto& property = Bound();
    for (const IID* pIid : {&IID_IUnknown, &IID_ICCXExtUIKey})
    {
        void* pObject = nullptr;
        EXPECT_EQ(S_OK, property.QueryInterface(*pIid, &pObject));
        EXPECT_EQ(&property, pObject);
        EXPECT_EQ(1u, property.Release());
    }
    for (const IID* pIid : {&IID_ICCXExtUICon, &IID_IDot11ExtUI, &IID_IClassFactory})
    {
        void* pObject = &property;
        EXPECT_EQ(E_NOINTERFACE, property.QueryInterface(*pIid, &pObject));
        EXPECT_EQ(nullptr, pObject);
    }
    EXPECT_EQ(2u, property.AddRef());
    EXPECT_EQ(1u, property.Release());
}

std::vector<std::string> TextsOf(const Dot11ExtUIPropertyEntry* pEntries, std::size_t cEntries)
{
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < cEntries; ++i)
        texts.push_back(std::to_string(pEntries[i].dwDataKey) + " " + tests::Narrow(pEntries[i].bstrDisplayText) + " " +
                        std::to_string(pEntries[i].dot11ExtUIDisplayInfoType));
    return texts;
}

TEST_F(SecurityProperty, EntriesAreTheObjectsOwnAndLiveAsLongAsIt)
{
    Dot11ExtUIPropertyEntry* pFirst = nullptr;
    Dot11ExtUIPropertyEntry* pAgain = nullptr;
    Dot11ExtUIPropertyEntry* pOther = nullptr;
    EXPECT_EQ(S_OK, Bound().Dot11ExtUIPropertyGetDisplayInfo(0, nullptr, nullptr, nullptr, nullptr, &pFirst));
    EXPECT_EQ(S_OK, Bound().Dot11ExtUIPropertyGetDisplayInfo(0, nullptr, nullptr, nullptr, nullptr, &pAgain));
    {
        const auto other = Module().Property(propertyKindSecurity);
        EXPECT_EQ(S_OK, other->Dot11ExtUIPropertyGetDisplayInfo(0, nullptr, nullptr, nullptr, nullptr, &pOther));
        EXPECT_NE(pFirst, pOther);
    }
    EXPECT_EQ(pFirst, pAgain);
    EXPECT_EQ((Lines{"5 WEP 0", "2 TKIP 0", "4 AES 0"}), TextsOf(pFirst, 3));
}

TEST_F(SecurityProperty, ContextOfAnotherKindTurnsQualifiedNamesOn)
{
    const auto flags = [&]
    {
        ULONG uQualified = untouchedNumber;
        ULONG uKind = untouchedNumber;
        EXPECT_EQ(S_OK, Bound().Dot11ExtUIPropertyGetFlags(&uQualified, &uKind));
        return uQualified;
    };
    Dot11ExtUIPropertyEntry* pEntries = nullptr;
    tests::CConnectionContext plain(OLESTR("p"), GUID{}, 0, 1);
    tests::CConnectionContext qualified(OLESTR("p"), GUID{}, 0, 2);
    EXPECT_EQ(S_OK, Bound().Dot11ExtUIPropertyGetDisplayInfo(0, nullptr, plain.Get(), nullptr, nullptr, nullptr));
    EXPECT_EQ(0u, flags());
    EXPECT_EQ(E_NOTIMPL, Bound().Dot11ExtUIPropertyGetDisplayInfo(1, nullptr, qualified.Get(), nullptr, nullptr, nullptr));
    BOOL bIsSelected = FALSE;
    EXPECT_EQ(S_OK, Bound().Dot11ExtUIPropertyGetSelected(nullptr, qualified.Get(), &bIsSelected));
    EXPECT_EQ(0u, flags()) << "the other operations do not look at the context";
    EXPECT_EQ(S_OK, Bound().Dot11ExtUIPropertyGetDisplayInfo(0, nullptr, qualified.Get(), nullptr, nullptr, &pEntries));
    EXPECT_EQ(1u, flags());
    EXPECT_EQ(S_OK, Bound().Dot11ExtUIPropertyGetDisplayInfo(0, nullptr, plain.Get(), nullptr, nullptr, nullptr));
    EXPECT_EQ(1u, flags()) << "only the root object takes it back";

    EXPECT_EQ((Lines{"5 WEP 0", "2 TKIP 0", "4 AES 0"}), TextsOf(pEntries, 3));
    TakeLines();
    CBstr bstrModified;
    BOOL bIsModified = FALSE;
    EXPECT_EQ(S_OK,
              Bound().Dot11ExtUIPropertySetDisplayInfo(0, nullptr, nullptr, pEntries + 2, bstrModified.Put(), &bIsModified));
    const auto lines = TakeLines();
    ASSERT_LT(5u, lines.size());
    EXPECT_EQ("pDot11ExtUIProperty->dwDataKey                : (4h), AES (MFP)\n", lines[4]);
    EXPECT_EQ("pDot11ExtUIProperty->bstrDisplayText          : AES\n", lines[5]);
}

TEST_F(SecurityProperty, EntryWithAnotherKeyIsTakenAsItComes)
{
    const CBstr bstrProfile(NETWORK("cckm", "TKIP"));
    Dot11ExtUIPropertyEntry entry = {0xABCD, 0, nullptr};
    CBstr bstrModified;
    BOOL bIsModified = FALSE;
    TakeLines();
    EXPECT_EQ(S_OK,
              Bound().Dot11ExtUIPropertySetDisplayInfo(0, bstrProfile.Get(), nullptr, &entry, bstrModified.Put(), &bIsModified));
    EXPECT_EQ(TRUE, bIsModified);
    EXPECT_EQ(NetworkTree("cckm", ""), tests::ProfileTree(bstrModified));
    const auto lines = TakeLines();
    ASSERT_LT(5u, lines.size());
    EXPECT_EQ("pDot11ExtUIProperty->dwDataKey                : (ABCDh), \n", lines[4]);
    EXPECT_EQ("pDot11ExtUIProperty->bstrDisplayText          : (null)\n", lines[5]);
}

TEST_F(SecurityProperty, IsWhatItsDescriptionSays)
{
    // A list of two leaves TKIP, the second row of the names, as the fallback cipher.
    CCXSecurityPropertyInfo info = {6, TRUE, TRUE, FALSE, 9, 2, {0, 4}};
    const auto property = Unbound();
    EXPECT_EQ(S_OK, property->Initialize(&info));
    CBstr bstrName;
    BOOL bHasDialog = untouchedBool;
    ULONG uFirst = 0;
    ULONG uSecond = 0;
    Dot11ExtUIPropertyEntry* pEntries = nullptr;
    EXPECT_EQ(S_OK, property->Dot11ExtUIPropertyGetName(bstrName.Put()));
    EXPECT_EQ("(WPA2)", tests::TextOf(bstrName));
    EXPECT_EQ(S_OK, property->Dot11ExtUIPropertyHasDialog(&bHasDialog));
    EXPECT_EQ(TRUE, bHasDialog);
    EXPECT_EQ(S_OK, property->Dot11ExtUIPropertyGetFlags(&uFirst, &uSecond));
    EXPECT_EQ(1u, uFirst);
    EXPECT_EQ(9u, uSecond);
    EXPECT_EQ(S_OK, property->Dot11ExtUIPropertyGetDisplayInfo(0, nullptr, nullptr, &uFirst, &uSecond, &pEntries));
    EXPECT_EQ(2u, uFirst);
    EXPECT_EQ(1u, uSecond);
    EXPECT_EQ((Lines{"0 None (CCX) 0", "4 AES (MFP) 0"}), TextsOf(pEntries, uFirst));

    CBstr bstrModified;
    BOOL bFlag = FALSE;
    EXPECT_EQ(S_OK, property->Dot11ExtUIPropertySetSelected(nullptr, nullptr, bstrModified.Put(), &bFlag));
    EXPECT_EQ(NetworkTree("wpa2", "TKIP"), tests::ProfileTree(bstrModified));
    EXPECT_EQ(S_OK, property->Dot11ExtUIPropertyGetSelected(nullptr, nullptr, &bFlag));
    EXPECT_EQ(FALSE, bFlag) << "the defaults are CCKM";

    info.auth = 7;
    EXPECT_EQ(E_FAIL, property->Dot11ExtUIPropertyGetName(nullptr));
}
} // namespace
