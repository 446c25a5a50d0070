// What the security property answers for a profile, what it makes of it, and the lines that it writes on the way.
#include "tests/extui/SecurityPropertyTest.h"

namespace
{
using namespace tests::security;

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

class SecurityPropertyProfile : public SecurityPropertyCase<ProfileCase>
{
protected:
    // The lines that open an operation on the row's profile.
    Lines Opening(const std::string& operation) const
    {
        return {"\nCExtUIKey::Dot11ExtUIProperty" + operation + "\n", "auth element: (80000001h) CCKM\n",
                "bstrIHVProfile: " + tests::TextOf(CBstr(GetParam().szProfile)) + "\n"};
    }
};

TEST_P(SecurityPropertyProfile, GetSelected)
{
    const CBstr bstrProfile(GetParam().szProfile);
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
    const CBstr bstrProfile(GetParam().szProfile);
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
    const CBstr bstrProfile(GetParam().szProfile);
    ULONG cEntries = untouchedNumber;
    ULONG uDefault = untouchedNumber;
    Dot11ExtUIPropertyEntry* pEntries = nullptr;
    TakeLines();
    EXPECT_EQ(S_OK, Bound().Dot11ExtUIPropertyGetDisplayInfo(0, bstrProfile.Get(), nullptr, &cEntries, &uDefault, &pEntries));
    EXPECT_EQ(3u, cEntries);
    EXPECT_EQ(GetParam().uDefault, uDefault);
    Lines expected = Opening("GetDisplayInfo");
    expected.push_back("profile cipher: " + std::string(GetParam().szCipherLine) + "\n");
    if (!GetParam().bIsValid)
        expected.push_back("***invalid profile, setting defaults\n");
    expected.push_back("Set *ppDot11ExtUIProperty to " + PointerText(pEntries) + "\n");
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
    const CBstr bstrProfile(GetParam().szProfile);
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
    {"cckm_tkip", NETWORK("cckm", "TKIP"), "(2h) TKIP", true, TRUE, 1, "TKIP", TRUE},
    {"cckm_aes", NETWORK("cckm", "AES"), "(4h) AES", true, TRUE, 2, "AES", FALSE},
    {"cckm_none", NETWORK("cckm", "None"), "(0h) None", true, TRUE, 2, "None", TRUE},
    {"wpa2_aes", NETWORK("wpa2", "AES"), "(4h) AES", true, FALSE, 2, "AES", TRUE},
    {"wpa_tkip", NETWORK("wpa", "TKIP"), "(2h) TKIP", true, FALSE, 1, "TKIP", TRUE},
    {"open", OLESTR("<CCX><openNetwork/></CCX>"), "(0h) None", true, FALSE, 2, "None", TRUE},
};
INSTANTIATE_TEST_SUITE_P(Profiles, SecurityPropertyProfile, testing::ValuesIn(profileCases), CaseName<ProfileCase>);
} // namespace
