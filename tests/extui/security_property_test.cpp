// The security property as a host uses it: checks and their order, outputs, trace lines, profiles handed back.
#include "extui/SecurityPropertyInfo.h"
#include "tests/support/ModuleUnderTest.h"
#include "tests/support/TraceLog.h"
#include "tests/support/XmlVerbs.h"

namespace
{
using tests::xml::CaseName;
using Lines = std::vector<std::string>;

constexpr BOOL untouchedBool = 77;
constexpr ULONG untouchedNumber = 78;

CBstr Profile(const WCHAR* szText)
{
    return CBstr(szText);
}

std::string NetworkTree(const std::string& token, const std::string& cipher)
{
    const std::string encryption = cipher.empty() ? "<encryption/>" : "<encryption>" + cipher + "</encryption>";
    return "<CCX><authenticatingNetwork><" + token + ">" + encryption + "</" + token + "></authenticatingNetwork></CCX>";
}

#define NETWORK(token, cipher)                                                                                                   \
    OLESTR("<CCX><Rapido>true</Rapido><authenticatingNetwork><" token "><encryption>" cipher "</encryption></" token ">"         \
           "</authenticatingNetwork></CCX>")
constexpr const WCHAR* szCckmTkip = NETWORK("cckm", "TKIP");
constexpr const WCHAR* szOpen = OLESTR("<CCX><openNetwork/></CCX>");

std::string PointerText(const void* p)
{
    char szText[32];
    std::snprintf(szText, sizeof(szText), "%016llX", static_cast<unsigned long long>(reinterpret_cast<std::uintptr_t>(p)));
    return szText;
}

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

class SecurityProperty : public testing::Test
{
protected:
    CComRef<ICCXExtUIKey> Unbound() const
    {
        return m_module.Create<ICCXExtUIKey>(IID_ICCXExtUIKey);
    }
    Lines TakeLines()
    {
        return m_log.Take();
    }
    IDot11ExtUIProperty& Bound() const
    {
        return *m_property.Get();
    }
    const tests::CModuleUnderTest& Module() const
    {
        return m_module;
    }

private:
    tests::CTraceLog m_log;
    tests::CModuleUnderTest m_module;
    CComRef<IDot11ExtUIProperty> m_property = m_module.Property(propertyKindSecurity);
};

template <class Case>
class SecurityPropertyCase : public SecurityProperty, public testing::WithParamInterface<Case>
{
};

// What is refused, before anything is read or written.
struct RefusalCase
{
    const char* name;
    bool bBound;
    HRESULT (*run)(IDot11ExtUIProperty&, Outputs&);
    HRESULT hr;
    const char* szOperation; // of the header line; null where no line is written
    const char* szCode;
};

class SecurityPropertyRefusal : public SecurityPropertyCase<RefusalCase>
{
};

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
                    "***Error: returning " + std::string(param.szCode) + "\n"};
    EXPECT_EQ(expected, TakeLines());
}

#define RUN(call) [](IDot11ExtUIProperty& p, [[maybe_unused]] Outputs& o) -> HRESULT { return p.Dot11ExtUIProperty##call; }
constexpr bool bound = true;
constexpr bool unbound = false;
const RefusalCase refusalCases[] = {
    {"name_null", bound, RUN(GetName(nullptr)), E_POINTER, nullptr, nullptr},
    {"name_unbound_before_null", unbound, RUN(GetName(nullptr)), E_FAIL, nullptr, nullptr},
    {"name_unbound", unbound, RUN(GetName(&o.bstrModified)), E_FAIL, nullptr, nullptr},
    {"dialog", bound, RUN(ShowDialog(nullptr, nullptr, nullptr, &o.bstrModified, &o.bFlag)), E_NOTIMPL, nullptr, nullptr},
    {"dialog_null", unbound, RUN(ShowDialog(nullptr, nullptr, nullptr, nullptr, nullptr)), E_NOTIMPL, nullptr, nullptr},
    {"get_selected_null_before_unbound", unbound, RUN(GetSelected(nullptr, nullptr, nullptr)), E_INVALIDARG, "GetSelected",
     "E_INVALIDARG"},
    {"get_selected_unbound", unbound, RUN(GetSelected(nullptr, nullptr, &o.bFlag)), E_FAIL, "GetSelected", "E_FAIL"},
    {"set_selected_null_text", bound, RUN(SetSelected(nullptr, nullptr, nullptr, &o.bFlag)), E_INVALIDARG, "SetSelected",
     "E_INVALIDARG"},
    {"set_selected_null_flag", unbound, RUN(SetSelected(nullptr, nullptr, &o.bstrModified, nullptr)), E_INVALIDARG, "SetSelected",
     "E_INVALIDARG"},
    {"set_selected_unbound", unbound, RUN(SetSelected(nullptr, nullptr, &o.bstrModified, &o.bFlag)), E_FAIL, "SetSelected",
     "E_FAIL"},
    {"has_dialog_unbound_before_null", unbound, RUN(HasDialog(nullptr)), E_FAIL, nullptr, nullptr},
    {"has_dialog_null", bound, RUN(HasDialog(nullptr)), E_INVALIDARG, nullptr, nullptr},
    {"entries_of_index_1_before_unbound", unbound, RUN(GetDisplayInfo(1, nullptr, nullptr, &o.uFirst, &o.uSecond, &o.pEntries)),
     E_NOTIMPL, "GetDisplayInfo", "E_NOTIMPL"},
    {"entries_unbound", unbound, RUN(GetDisplayInfo(0, nullptr, nullptr, &o.uFirst, &o.uSecond, &o.pEntries)), E_FAIL,
     "GetDisplayInfo", "E_FAIL"},
    {"pick_index_1_before_null", bound, RUN(SetDisplayInfo(1, nullptr, nullptr, nullptr, nullptr, nullptr)), E_NOTIMPL,
     "SetDisplayInfo", "E_NOTIMPL"},
    {"pick_null_entry", bound, RUN(SetDisplayInfo(0, nullptr, nullptr, nullptr, &o.bstrModified, &o.bFlag)), E_INVALIDARG,
     "SetDisplayInfo", "E_INVALIDARG"},
    {"pick_null_text", bound, RUN(SetDisplayInfo(0, nullptr, nullptr, &o.entry, nullptr, &o.bFlag)), E_INVALIDARG,
     "SetDisplayInfo", "E_INVALIDARG"},
    {"pick_null_flag_before_unbound", unbound, RUN(SetDisplayInfo(0, nullptr, nullptr, &o.entry, &o.bstrModified, nullptr)),
     E_INVALIDARG, "SetDisplayInfo", "E_INVALIDARG"},
    {"pick_unbound", unbound, RUN(SetDisplayInfo(0, nullptr, nullptr, &o.entry, &o.bstrModified, &o.bFlag)), E_FAIL,
     "SetDisplayInfo", "E_FAIL"},
    {"flags_unbound_before_null", unbound, RUN(GetFlags(nullptr, nullptr)), E_FAIL, nullptr, nullptr},
    {"flags_null_first", bound, RUN(GetFlags(nullptr, &o.uSecond)), E_INVALIDARG, nullptr, nullptr},
    {"flags_null_second", bound, RUN(GetFlags(&o.uFirst, nullptr)), E_INVALIDARG, nullptr, nullptr},
};
INSTANTIATE_TEST_SUITE_P(Calls, SecurityPropertyRefusal, testing::ValuesIn(refusalCases), CaseName<RefusalCase>);

// What each operation makes of a profile.
struct ProfileCase
{
    const char* name;
    const WCHAR* szProfile;
    const char* szCipherLine; // as GetDisplayInfo traces it
    bool bIsValid;
    BOOL bIsSelected;
    ULONG uDefault;
    const char* szSelectedCipher; // after SetSelected
    BOOL bAesModifies;            // whether picking AES changes the profile
};

class SecurityPropertyProfile : public SecurityPropertyCase<ProfileCase>
{
protected:
    // The lines that open an operation on the row's profile.
    Lines Opening(const std::string& operation) const
    {
        return {"\nCExtUIKey::Dot11ExtUIProperty" + operation + "\n", "auth element: (80000001h) CCKM\n",
                "bstrIHVProfile: " + tests::TextOf(Profile(GetParam().szProfile)) + "\n"};
    }
};

TEST_P(SecurityPropertyProfile, GetSelected)
{
    const auto bstrProfile = Profile(GetParam().szProfile);
    BOOL bIsSelected = untouchedBool;
    TakeLines();
    EXPECT_EQ(S_OK, Bound().Dot11ExtUIPropertyGetSelected(bstrProfile.Get(), nullptr, &bIsSelected));
    EXPECT_EQ(GetParam().bIsSelected, bIsSelected);
    Lines expected = Opening("GetSelected");
    if (!GetParam().bIsValid)
        expected.push_back("***invalid profile, setting defaults\n");
    expected.push_back(bIsSelected ? "*pfIsSelected: TRUE\n" : "*pfIsSelected: FALSE\n");
    EXPECT_EQ(expected, TakeLines());
}

TEST_P(SecurityPropertyProfile, SetSelected)
{
    const auto bstrProfile = Profile(GetParam().szProfile);
    // A caller that passes in TRUE gets TRUE and a profile whatever is in it.
    for (const BOOL bPassedIn : {FALSE, TRUE})
    {
        BOOL bIsModified = bPassedIn;
        CBstr bstrModified;
        TakeLines();
        EXPECT_EQ(S_OK, Bound().Dot11ExtUIPropertySetSelected(bstrProfile.Get(), nullptr, bstrModified.Put(), &bIsModified));
        const bool bWrites = bPassedIn || !GetParam().bIsValid || !GetParam().bIsSelected;
        EXPECT_EQ(bWrites ? TRUE : FALSE, bIsModified);
        Lines expected = Opening("SetSelected");
        expected.push_back(bWrites ? "*pbIsModified: TRUE\n" : "*pbIsModified: FALSE\n");
        if (bWrites)
        {
            EXPECT_EQ(NetworkTree("cckm", GetParam().szSelectedCipher), tests::ProfileTree(bstrModified));
            expected.push_back("*bstrModifiedIHVProfile: " + tests::TextOf(bstrModified) + "\n");
        }
        else
            EXPECT_FALSE(bstrModified);
        EXPECT_EQ(expected, TakeLines());
    }
}

TEST_P(SecurityPropertyProfile, GetDisplayInfo)
{
    const auto bstrProfile = Profile(GetParam().szProfile);
    Outputs out;
    TakeLines();
    EXPECT_EQ(S_OK,
              Bound().Dot11ExtUIPropertyGetDisplayInfo(0, bstrProfile.Get(), nullptr, &out.uFirst, &out.uSecond, &out.pEntries));
    EXPECT_EQ(3u, out.uFirst);
    EXPECT_EQ(GetParam().uDefault, out.uSecond);
    Lines expected = Opening("GetDisplayInfo");
    expected.push_back("profile cipher: " + std::string(GetParam().szCipherLine) + "\n");
    if (!GetParam().bIsValid)
        expected.push_back("***invalid profile, setting defaults\n");
    expected.push_back("Set *ppDot11ExtUIProperty to " + PointerText(out.pEntries) + "\n");
    expected.push_back("Set *pcEntries to 3\n");
    expected.push_back("*puDefaultSelection: " + std::to_string(GetParam().uDefault) + "\n");
    EXPECT_EQ(expected, TakeLines());

    // Any of the outputs may be left out, with its line.
    EXPECT_EQ(S_OK, Bound().Dot11ExtUIPropertyGetDisplayInfo(0, bstrProfile.Get(), nullptr, nullptr, nullptr, nullptr));
    expected.resize(expected.size() - 3);
    EXPECT_EQ(expected, TakeLines());
}

TEST_P(SecurityPropertyProfile, SetDisplayInfo)
{
    const auto bstrProfile = Profile(GetParam().szProfile);
    const CBstr bstrText(OLESTR("any text"));
    Dot11ExtUIPropertyEntry entry = {4, 0x1F, bstrText.Get()};
    BOOL bIsModified = untouchedBool;
    CBstr bstrModified;
    TakeLines();
    EXPECT_EQ(S_OK,
              Bound().Dot11ExtUIPropertySetDisplayInfo(0, bstrProfile.Get(), nullptr, &entry, bstrModified.Put(), &bIsModified));
    EXPECT_EQ(GetParam().bAesModifies, bIsModified);
    Lines expected = Opening("SetDisplayInfo");
    expected.insert(expected.end(), {"pDot11ExtUIProperty: " + PointerText(&entry) + "\n",
                                     "pDot11ExtUIProperty->dwDataKey                : (4h), AES\n",
                                     "pDot11ExtUIProperty->bstrDisplayText          : any text\n",
                                     "pDot11ExtUIProperty->dot11ExtUIDisplayInfoType: 1Fh\n",
                                     bIsModified ? "*pbIsModified: TRUE\n" : "*pbIsModified: FALSE\n"});
    if (bIsModified)
    {
        EXPECT_EQ(NetworkTree("cckm", "AES"), tests::ProfileTree(bstrModified));
        expected.push_back("*bstrModifiedIHVProfile: " + tests::TextOf(bstrModified) + "\n");
    }
    else
        EXPECT_FALSE(bstrModified);
    EXPECT_EQ(expected, TakeLines());
}

constexpr const char* szNoCipher = "(FFFFFFFFh) ";
const ProfileCase profileCases[] = {
    {"none", nullptr, szNoCipher, false, TRUE, 2, "AES", TRUE},
    {"empty", OLESTR(""), szNoCipher, false, TRUE, 2, "AES", TRUE},
    {"not_xml", OLESTR("<CCX>"), szNoCipher, false, TRUE, 2, "AES", TRUE},
    {"without_security", OLESTR("<CCX><Rapido>true</Rapido></CCX>"), szNoCipher, false, TRUE, 2, "AES", TRUE},
    {"cckm_without_cipher", NETWORK("cckm", "WEP104"), szNoCipher, false, TRUE, 2, "AES", TRUE},
    {"wpa2_without_cipher", NETWORK("wpa2", ""), szNoCipher, false, TRUE, 2, "AES", TRUE},
    {"cckm_wep", NETWORK("cckm", "WEP"), "(5h) WEP", true, TRUE, 0, "WEP", TRUE},
    {"cckm_tkip", szCckmTkip, "(2h) TKIP", true, TRUE, 1, "TKIP", TRUE},
    {"cckm_aes", NETWORK("cckm", "AES"), "(4h) AES", true, TRUE, 2, "AES", FALSE},
    {"cckm_none", NETWORK("cckm", "None"), "(0h) None", true, TRUE, 2, "None", TRUE},
    {"wpa2_aes", NETWORK("wpa2", "AES"), "(4h) AES", true, FALSE, 2, "AES", TRUE},
    {"wpa_tkip", NETWORK("wpa", "TKIP"), "(2h) TKIP", true, FALSE, 1, "TKIP", TRUE},
    {"open", szOpen, "(0h) None", true, FALSE, 2, "None", TRUE},
};
INSTANTIATE_TEST_SUITE_P(Profiles, SecurityPropertyProfile, testing::ValuesIn(profileCases), CaseName<ProfileCase>);

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
    const auto bstrProfile = Profile(szCckmTkip);
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
