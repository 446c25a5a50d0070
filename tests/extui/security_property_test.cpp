// The security property as a host uses it: what it answers for a profile, what it makes of it, the lines that it writes on
// the way, and its entries.
#include "extui/SecurityPropertyInfo.h"
#include "tests/support/ModuleUnderTest.h"
#include "tests/support/TraceLog.h"

namespace
{
using Lines = std::vector<std::string>;
using tests::TextOf;

std::string NetworkTree(const std::string& token, const std::string& cipher)
{
    const std::string encryption = cipher.empty() ? "<encryption/>" : "<encryption>" + cipher + "</encryption>";
    return "<CCX><authenticatingNetwork><" + token + ">" + encryption + "</" + token + "></authenticatingNetwork></CCX>";
}
#define NETWORK(token, cipher)                                                                                                   \
    OLESTR("<CCX><Rapido>true</Rapido><authenticatingNetwork><" token "><encryption>" cipher "</encryption></" token ">"         \
           "</authenticatingNetwork></CCX>")

std::string PointerText(const void* p)
{
    char szText[32];
    std::snprintf(szText, sizeof(szText), "%016llX", static_cast<unsigned long long>(reinterpret_cast<std::uintptr_t>(p)));
    return szText;
}

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
constexpr const char* szNoCipher = "(FFFFFFFFh) ";
constexpr ProfileCase profileCases[] = {
    {"none", nullptr, szNoCipher, false, TRUE, 2, "AES", TRUE},
    {"cckm_without_cipher", NETWORK("cckm", "WEP104"), szNoCipher, false, TRUE, 2, "AES", TRUE},
    {"wpa2_without_cipher", NETWORK("wpa2", ""), szNoCipher, false, TRUE, 2, "AES", TRUE},
    {"cckm_wep", NETWORK("cckm", "WEP"), "(5h) WEP", true, TRUE, 0, "WEP", TRUE},
    {"cckm_tkip", NETWORK("cckm", "TKIP"), "(2h) TKIP", true, TRUE, 1, "TKIP", TRUE},
    {"cckm_aes", NETWORK("cckm", "AES"), "(4h) AES", true, TRUE, 2, "AES", FALSE},
    {"cckm_none", NETWORK("cckm", "None"), "(0h) None", true, TRUE, 2, "None", TRUE},
    {"wpa2_aes", NETWORK("wpa2", "AES"), "(4h) AES", true, FALSE, 2, "AES", TRUE},
    {"open", OLESTR("<CCX><openNetwork/></CCX>"), "(0h) None", true, FALSE, 2, "None", TRUE},
};

class SecurityProperty : public testing::Test
{
protected:
    // The lines that an operation opens with, and those that it ends with when it hands out a profile or none.
    static Lines Opening(const std::string& operation, const CBstr& bstrProfile)
    {
        return {"\nCExtUIKey::Dot11ExtUIProperty" + operation + "\n", "auth element: (80000001h) CCKM\n",
                "bstrIHVProfile: " + TextOf(bstrProfile) + "\n"};
    }
    static void AddOutcome(Lines& lines, BOOL bIsModified, const CBstr& bstrModified)
    {
        lines.push_back(bIsModified ? "*pbIsModified: TRUE\n" : "*pbIsModified: FALSE\n");
        if (bIsModified)
            lines.push_back("*bstrModifiedIHVProfile: " + TextOf(bstrModified) + "\n");
    }

    void GetSelected(const ProfileCase& row)
    {
        const CBstr bstrProfile(row.szProfile);
        BOOL bIsSelected = 77;
        m_log.Take();
        EXPECT_EQ(S_OK, m_property->Dot11ExtUIPropertyGetSelected(bstrProfile.Get(), nullptr, &bIsSelected));
        EXPECT_EQ(row.bIsSelected, bIsSelected);
        Lines expected = Opening("GetSelected", bstrProfile);
        if (!row.bIsValid)
            expected.push_back("***invalid profile, setting defaults\n");
        expected.push_back(bIsSelected ? "*pfIsSelected: TRUE\n" : "*pfIsSelected: FALSE\n");
        EXPECT_EQ(expected, m_log.Take());
    }
    // A caller that passes in TRUE gets TRUE and a profile whatever is in it.
    void SetSelected(const ProfileCase& row, BOOL bPassedIn)
    {
        const CBstr bstrProfile(row.szProfile);
        BOOL bIsModified = bPassedIn;
        CBstr bstrModified;
        m_log.Take();
        EXPECT_EQ(S_OK, m_property->Dot11ExtUIPropertySetSelected(bstrProfile.Get(), nullptr, bstrModified.Put(), &bIsModified));
        EXPECT_EQ(bPassedIn || !row.bIsValid || !row.bIsSelected ? TRUE : FALSE, bIsModified);
        EXPECT_EQ(bIsModified ? NetworkTree("cckm", row.szSelectedCipher) : "(null)", tests::ProfileTree(bstrModified));
        Lines expected = Opening("SetSelected", bstrProfile);
        AddOutcome(expected, bIsModified, bstrModified);
        EXPECT_EQ(expected, m_log.Take());
    }
    void GetDisplayInfo(const ProfileCase& row)
    {
        const CBstr bstrProfile(row.szProfile);
        ULONG cEntries = 77;
        ULONG uDefault = 77;
        Dot11ExtUIPropertyEntry* pEntries = nullptr;
        m_log.Take();
        EXPECT_EQ(S_OK,
                  m_property->Dot11ExtUIPropertyGetDisplayInfo(0, bstrProfile.Get(), nullptr, &cEntries, &uDefault, &pEntries));
        EXPECT_EQ(3u, cEntries);
        EXPECT_EQ(row.uDefault, uDefault);
        Lines expected = Opening("GetDisplayInfo", bstrProfile);
        expected.push_back("profile cipher: " + std::string(row.szCipherLine) + "\n");
        if (!row.bIsValid)
            expected.push_back("***invalid profile, setting defaults\n");
        expected.push_back("Set *ppDot11ExtUIProperty to " + PointerText(pEntries) + "\n");
        expected.push_back("Set *pcEntries to 3\n");
        expected.push_back("*puDefaultSelection: " + std::to_string(row.uDefault) + "\n");
        EXPECT_EQ(expected, m_log.Take());

        // Any of the outputs may be left out, with its line.
        EXPECT_EQ(S_OK, m_property->Dot11ExtUIPropertyGetDisplayInfo(0, bstrProfile.Get(), nullptr, nullptr, nullptr, nullptr));
        expected.resize(expected.size() - 3);
        EXPECT_EQ(expected, m_log.Take());
    }
    // Of an entry with this key and text; the new profile as a tree, "(null)" for none.
    std::string SetDisplayInfo(const CBstr& bstrProfile, DWORD dwKey, const std::string& keyLine, const CBstr& bstrText)
    {
        Dot11ExtUIPropertyEntry entry = {dwKey, 0x1F, bstrText.Get()};
        BOOL bIsModified = 77;
        CBstr bstrModified;
        m_log.Take();
        EXPECT_EQ(S_OK, m_property->Dot11ExtUIPropertySetDisplayInfo(0, bstrProfile.Get(), nullptr, &entry, bstrModified.Put(),
                                                                     &bIsModified));
        EXPECT_EQ(bstrModified ? TRUE : FALSE, bIsModified);
        Lines expected = Opening("SetDisplayInfo", bstrProfile);
        expected.push_back("pDot11ExtUIProperty: " + PointerText(&entry) + "\n");
        expected.push_back("pDot11ExtUIProperty->dwDataKey                : " + keyLine + "\n");
        expected.push_back("pDot11ExtUIProperty->bstrDisplayText          : " + TextOf(bstrText) + "\n");
        expected.push_back("pDot11ExtUIProperty->dot11ExtUIDisplayInfoType: 1Fh\n");
        AddOutcome(expected, bIsModified, bstrModified);
        EXPECT_EQ(expected, m_log.Take());
        return tests::ProfileTree(bstrModified);
    }

    tests::CTraceLog m_log;
    const tests::CModuleUnderTest m_module;
    const CComRef<IDot11ExtUIProperty> m_property = m_module.Property(propertyKindSecurity);
};

TEST_F(SecurityProperty, Profiles)
{
    const CBstr bstrText(OLESTR("any text"));
    for (const auto& row : profileCases)
    {
        SCOPED_TRACE(row.name);
        GetSelected(row);
        SetSelected(row, FALSE);
        SetSelected(row, TRUE);
        GetDisplayInfo(row);
        EXPECT_EQ(row.bAesModifies ? NetworkTree("cckm", "AES") : "(null)",
                  SetDisplayInfo(CBstr(row.szProfile), 4, "(4h), AES", bstrText));
    }
    // A key is taken as it comes.
    EXPECT_EQ(NetworkTree("cckm", ""), SetDisplayInfo(CBstr(NETWORK("cckm", "TKIP")), 0xABCD, "(ABCDh), ", CBstr()));
}

// The entries that a property hands out, and which of them is the default.
std::string EntriesOf(IDot11ExtUIProperty& property)
{
    ULONG cEntries = 77;
    ULONG uDefault = 77;
    Dot11ExtUIPropertyEntry* pEntries = nullptr;
    EXPECT_EQ(S_OK, property.Dot11ExtUIPropertyGetDisplayInfo(0, nullptr, nullptr, &cEntries, &uDefault, &pEntries));
    std::string text = std::to_string(cEntries) + ":" + (pEntries ? "" : " null");
    for (ULONG i = 0; pEntries && i < cEntries; ++i)
        text += " " + std::to_string(pEntries[i].dwDataKey) + " " + tests::Narrow(pEntries[i].bstrDisplayText) + " " +
                std::to_string(pEntries[i].dot11ExtUIDisplayInfoType) + (i == uDefault ? " (default)" : "");
    return text;
}

TEST_F(SecurityProperty, ContextOfAnotherKindTurnsQualifiedNamesOn)
{
    const auto isQualified = [&]
    {
        ULONG uQualified = 78;
        ULONG uKind = 78;
        EXPECT_EQ(S_OK, m_property->Dot11ExtUIPropertyGetFlags(&uQualified, &uKind));
        return uQualified;
    };
    const auto ask = [&](ULONG uIndex, void* pContext)
    { return m_property->Dot11ExtUIPropertyGetDisplayInfo(uIndex, nullptr, pContext, nullptr, nullptr, nullptr); };
    tests::CConnectionContext plain(OLESTR("p"), GUID{}, 0, 1);
    tests::CConnectionContext qualified(OLESTR("p"), GUID{}, 0, 2);
    BOOL bIsSelected = FALSE;
    EXPECT_EQ(S_OK, ask(0, plain.Get()));
    EXPECT_EQ(E_NOTIMPL, ask(1, qualified.Get()));
    EXPECT_EQ(S_OK, m_property->Dot11ExtUIPropertyGetSelected(nullptr, qualified.Get(), &bIsSelected));
    EXPECT_EQ(0u, isQualified()) << "the other operations do not look at the context";
    EXPECT_EQ(S_OK, ask(0, qualified.Get()));
    EXPECT_EQ(1u, isQualified());
    EXPECT_EQ(S_OK, ask(0, plain.Get()));
    EXPECT_EQ(1u, isQualified());
    SetDisplayInfo(CBstr(), 4, "(4h), AES (MFP)", CBstr(OLESTR("AES")));
    // The root object takes it back, for every property of the description.
    const auto later = m_module.Property(propertyKindSecurity);
    EXPECT_EQ(0u, isQualified());
    for (const auto& property : {m_property, later})
        EXPECT_EQ("3: 5 WEP 0 2 TKIP 0 4 AES 0 (default)", EntriesOf(*property.Get()));
}

TEST_F(SecurityProperty, IsWhatItsDescriptionSays)
{
    CCXSecurityPropertyInfo info = {6, TRUE, TRUE, FALSE, 9, 2, {0, 4}};
    const auto property = m_module.Create<ICCXExtUIKey>(IID_ICCXExtUIKey);
    EXPECT_EQ(S_OK, property->Initialize(&info));
    BOOL bFlag = FALSE;
    ULONG uQualified = 0;
    ULONG uKind = 0;
    EXPECT_EQ(S_OK, property->Dot11ExtUIPropertyHasDialog(&bFlag));
    EXPECT_EQ(TRUE, bFlag);
    EXPECT_EQ(S_OK, property->Dot11ExtUIPropertyGetFlags(&uQualified, &uKind));
    EXPECT_EQ(1u, uQualified);
    EXPECT_EQ(9u, uKind);
    EXPECT_EQ("2: 0 None (CCX) 0 4 AES (MFP) 0 (default)", EntriesOf(*property.Get()));
    Dot11ExtUIPropertyEntry* pFirst = nullptr;
    EXPECT_EQ(S_OK, property->Dot11ExtUIPropertyGetDisplayInfo(0, nullptr, nullptr, nullptr, nullptr, &pFirst));
    info.ciphers[1] = 2;
    EXPECT_EQ("2: 0 None (CCX) 0 4 AES (MFP) 0 (default)", EntriesOf(*property.Get())) << "texts stay";

    // Described anew, a property shows its new entries, and its first ones are there as long as itself. However many the
    // description says, there are ten at most, and the fallback is one of the names.
    const std::tuple<LONG, std::string, const char*> counts[] = {
        {-1, "0:", "WEP"}, {1, "1: 0 None (CCX) 0 (default)", "WEP"}, {2, "2: 0 None", "TKIP"}, {11, "10: 0 None", "None"}};
    for (const auto& [cCiphers, entries, szFallback] : counts)
    {
        info.cipherCount = cCiphers;
        EXPECT_EQ(S_OK, property->Initialize(&info));
        EXPECT_EQ(entries, EntriesOf(*property.Get()).substr(0, entries.size()));
        CBstr bstrModified;
        bFlag = FALSE;
        EXPECT_EQ(S_OK, property->Dot11ExtUIPropertySetSelected(nullptr, nullptr, bstrModified.Put(), &bFlag));
        EXPECT_EQ(NetworkTree("wpa2", szFallback), tests::ProfileTree(bstrModified)) << cCiphers;
    }
    EXPECT_EQ("AES (MFP)", tests::Narrow(pFirst[1].bstrDisplayText));
    EXPECT_EQ(S_OK, property->Dot11ExtUIPropertyGetSelected(nullptr, nullptr, &bFlag));
    EXPECT_EQ(FALSE, bFlag) << "the defaults are CCKM";
    for (const auto& [auth, szName] : {std::pair(6, "(WPA2)"), {3, "(WPA)"}, {1, "Open (CCX)"}, {7, "(null)"}})
    {
        info.auth = static_cast<DWORD>(auth);
        CBstr bstrName;
        EXPECT_EQ(auth == 7 ? E_FAIL : S_OK, property->Dot11ExtUIPropertyGetName(bstrName.Put()));
        EXPECT_EQ(szName, TextOf(bstrName));
    }
}
} // namespace
