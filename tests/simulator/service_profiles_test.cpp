#include "tests/simulator/ServiceUnderTest.h"

#include <objbase.h>

#include <atomic>
#include <iterator>
#include <thread>

namespace service_test
{
namespace
{
namespace fs = std::filesystem;

constexpr DWORD success = ERROR_SUCCESS;
constexpr DWORD badSchema = 0x80001;
constexpr DWORD badName = 0x80003;

class ServiceProfilesTest : public ServiceTest
{
};

TEST_F(ServiceProfilesTest, GivesBackExactlyTheStoredText)
{
    const WideText texts[] = {
        Profile(OLESTR("Office")),
        Profile(OLESTR("Office"), OLESTR("<!-- \u00e4\u20ac \xD83D\xDE00 --> \n\n<x a='1'/>\t")),
        OLESTR("<?xml version=\"1.0\" encoding=\"US-ASCII\"?><WLANProfile><name>Office</name>\u00e9</WLANProfile>"),
        OLESTR("\xFEFF") + Profile(OLESTR("Office")),
    };
    for (const WideText& text : texts)
    {
        ASSERT_EQ(Set(text), success);
        EXPECT_EQ(dwReason, 0u);
        WideText back;
        EXPECT_EQ(Get(OLESTR("Office"), back), success);
        EXPECT_EQ(back, text);
    }
}

struct RefusedProfile
{
    const char* szName;
    WideText text;
    DWORD dwReason;
};

TEST_F(ServiceProfilesTest, RefusesWhatIsNoProfileAndKeepsTheOldOne)
{
    const WideText old = Profile(OLESTR("Office"));
    ASSERT_EQ(Set(old), success);
    const RefusedProfile cases[] = {
        {"empty", {}, badSchema},
        {"not_xml", OLESTR("WLANProfile"), badSchema},
        {"not_closed", OLESTR("<WLANProfile><name>Office</name>"), badSchema},
        {"other_root", OLESTR("<Profile><name>Office</name></Profile>"), badSchema},
        {"root_in_other_case", OLESTR("<wlanprofile><name>Office</name></wlanprofile>"), badSchema},
        {"no_name", OLESTR("<WLANProfile><x><name>Office</name></x></WLANProfile>"), badSchema},
        {"empty_name", Profile({}), badName},
        {"long_name", Profile(WideText(256, OLESTR('n'))), badName},
        {"lone_surrogate", Profile(OLESTR("Office"), OLESTR("<!-- \xD800 -->")), badSchema},
        {"control_character", Profile(OLESTR("Office"), OLESTR("\x01")), badSchema},
    };
    for (const RefusedProfile& c : cases)
    {
        SCOPED_TRACE(c.szName);
        dwReason = 0xDEAD;
        EXPECT_EQ(Set(c.text), DWORD{ERROR_BAD_PROFILE});
        EXPECT_EQ(dwReason, c.dwReason);
    }
    WideText back;
    EXPECT_EQ(Get(OLESTR("Office"), back), success);
    EXPECT_EQ(back, old);
    EXPECT_EQ(Names(), std::vector<WideText>{OLESTR("Office")});
}

TEST_F(ServiceProfilesTest, KeepsNamesApart)
{
    const WideText longName(255, OLESTR('n'));
    const WideText names[] = {
        OLESTR("Office"),    OLESTR("OFFICE"),    OLESTR("con"), OLESTR("a/b\\c:d*e?"),
        OLESTR("..\\..\\x"), OLESTR("caf\u00e9"), longName,      longName.substr(1) + OLESTR("x"),
        OLESTR("50%"),
    };
    for (const WideText& name : names)
        ASSERT_EQ(Set(Profile(name), false), success);
    EXPECT_EQ(Names().size(), std::size(names));
    for (const WideText& name : names)
    {
        WideText back;
        EXPECT_EQ(Get(name.c_str(), back), success);
        EXPECT_EQ(back, Profile(name));
        EXPECT_EQ(Set(Profile(name), false), DWORD{ERROR_ALREADY_EXISTS});
    }
    for (const WideText& name : names)
    {
        WideText back;
        EXPECT_EQ(Delete(name.c_str()), success);
        EXPECT_EQ(Get(name.c_str(), back), DWORD{ERROR_NOT_FOUND});
    }
    EXPECT_TRUE(FilesOfProfiles().empty());
    EXPECT_EQ(std::distance(fs::directory_iterator(folder / "profiles"), {}), 1);
}

TEST_F(ServiceProfilesTest, ReadsFilesThatAPersonPutThere)
{
    const std::string ascii = R"(<?xml version="1.0"?><WLANProfile><name>Dropped</name></WLANProfile>)";
    const WideText wide(ascii.begin(), ascii.end());
    std::string little;
    std::string big;
    for (const char c : ascii)
    {
        little += {c, '\0'};
        big += {'\0', c};
    }
    for (const std::string& bytes : {ascii, "\xEF\xBB\xBF" + ascii, little, "\xFF\xFE" + little, big, "\xFE\xFF" + big})
    {
        Drop("some file.xml", bytes);
        WideText back;
        EXPECT_EQ(Get(OLESTR("Dropped"), back), success);
        EXPECT_EQ(back, wide);
    }
    for (const std::string& bytes : {std::string(), std::string("\xE9"), "\xFF\xFE" + ascii + "x", std::string("<WLANProfile/>")})
    {
        Drop("some file.xml", bytes);
        EXPECT_TRUE(Names().empty());
    }

    // The person's file name stays when the service stores the profile.
    Drop("some file.xml", ascii);
    Drop("not a profile.txt", ascii);
    ASSERT_EQ(Set(Profile(OLESTR("Dropped"))), success);
    EXPECT_EQ(FilesOfProfiles(), (std::vector<std::string>{"not a profile.txt", "some file.xml"}));
    EXPECT_EQ(Delete(OLESTR("Dropped")), success);
    EXPECT_EQ(FilesOfProfiles(), std::vector<std::string>{"not a profile.txt"});
}

TEST_F(ServiceProfilesTest, OfTwoFilesWithOneNameItsOwnCounts)
{
    ASSERT_EQ(Set(Profile(OLESTR("Office"))), success);
    Drop("A.xml", "<WLANProfile><name>Office</name></WLANProfile>");
    EXPECT_EQ(Names(), std::vector<WideText>{OLESTR("Office")});
    WideText back;
    EXPECT_EQ(Get(OLESTR("Office"), back), success);
    EXPECT_EQ(back, Profile(OLESTR("Office")));
    EXPECT_EQ(Delete(OLESTR("Office")), success);
    EXPECT_TRUE(FilesOfProfiles().empty());
}

TEST_F(ServiceProfilesTest, KeepsFlags)
{
    for (const DWORD dwFlags : {0u, 2u, 0xFFFFFFFFu, 0u})
    {
        ASSERT_EQ(Set(Profile(OLESTR("Office")), true, dwFlags), success);
        LPWSTR szXml = nullptr;
        DWORD dwBack = 77;
        DWORD dwAccess = 77;
        ASSERT_EQ(wlan->GetProfile(hClient, &firstGuid, OLESTR("Office"), nullptr, &szXml, &dwBack, &dwAccess), success);
        EXPECT_EQ(dwBack, dwFlags);
        EXPECT_EQ(dwAccess, 0x70023u);
        wlan->FreeMemory(szXml);
        PWLAN_PROFILE_INFO_LIST pList = nullptr;
        ASSERT_EQ(wlan->GetProfileList(hClient, &firstGuid, nullptr, &pList), success);
        EXPECT_EQ(pList->ProfileInfo[0].dwFlags, dwFlags);
        wlan->FreeMemory(pList);
    }
}

TEST_F(ServiceProfilesTest, PassesOverWhatAKilledWriterLeft)
{
    const WideText old = Profile(OLESTR("Office"));
    ASSERT_EQ(Set(old), success);
    Drop("Wi-Fi-Office.xml.tmp", "<WLANProfile><name>Half</na");
    Drop("Wi-Fi-Office.flags.tmp", "4");
    WideText back;
    EXPECT_EQ(Get(OLESTR("Office"), back), success);
    EXPECT_EQ(back, old);
    EXPECT_EQ(Names(), std::vector<WideText>{OLESTR("Office")});
    ASSERT_EQ(Set(Profile(OLESTR("Other"))), success);
    EXPECT_EQ(FilesOfProfiles(), (std::vector<std::string>{"Wi-Fi-Office.xml", "Wi-Fi-Other.xml"}));
}

TEST_F(ServiceProfilesTest, AFailureToStoreLeavesTheOldProfileWhole)
{
    const WideText old = Profile(OLESTR("Office"));
    ASSERT_EQ(Set(old), success);
    // A folder where the temporary file has to be: it can be neither written nor, being full, taken away.
    const fs::path obstacle = ProfileFolder() / "Wi-Fi-Office.xml.tmp";
    fs::create_directories(obstacle / "full");
    EXPECT_NE(Set(Profile(OLESTR("Office"), OLESTR("<new/>")), true, 4), success);
    WideText back;
    EXPECT_EQ(Get(OLESTR("Office"), back), success);
    EXPECT_EQ(back, old);
    fs::remove_all(obstacle);
    EXPECT_EQ(FilesOfProfiles(), std::vector<std::string>{"Wi-Fi-Office.xml"});
}

TEST_F(ServiceProfilesTest, ReadersNextToWritersSeeWholeProfiles)
{
    const WideText longer = Profile(OLESTR("Office"), WideText(40000, OLESTR(' ')));
    const WideText shorter = Profile(OLESTR("Office"));
    ASSERT_EQ(Set(shorter), success);
    std::atomic<int> odd{0};
    std::vector<std::thread> threads;
    for (int writer = 0; writer < 2; ++writer)
    {
        threads.emplace_back(
            [&, writer]
            {
                for (int i = 0; i < 20; ++i)
                {
                    DWORD dwOwnReason = 0;
                    const WideText& text = (i + writer) % 2 == 0 ? longer : shorter;
                    odd +=
                        wlan->SetProfile(hClient, &firstGuid, 0, text.c_str(), nullptr, TRUE, nullptr, &dwOwnReason) != success;
                }
            });
        threads.emplace_back(
            [&]
            {
                for (int i = 0; i < 20; ++i)
                {
                    LPWSTR szXml = nullptr;
                    const DWORD dwResult =
                        wlan->GetProfile(hClient, &firstGuid, OLESTR("Office"), nullptr, &szXml, nullptr, nullptr);
                    odd += dwResult != success || (szXml != longer && szXml != shorter);
                    wlan->FreeMemory(szXml);
                }
            });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(odd, 0);
}
} // namespace
} // namespace service_test
