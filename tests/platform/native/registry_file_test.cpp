// The stand-in's registry beyond what the platform can be asked for: its file, rights, other processes, planned
// failures. Native build only.
#include <windows.h>

#include "platform/advapi32/HiveText.h"
#include "platform/testing/Accounts.h"
#include "platform/testing/Faults.h"

#include <gtest/gtest.h>

#include <string>

#include <sys/wait.h>
#include <unistd.h>

namespace
{
using namespace platform::registry;
using namespace platform::testing;

constexpr char ownFile[] = R"({"HKEY_LOCAL_MACHINE": {"keys": {"Software": {
    "access": "read",
    "values": {"": "Größe", "Count": 4294967295, "Blob": {"type": "REG_BINARY", "hex": "00fF"}, "Odd": {"type": 77, "hex": ""}},
    "keys": {"Classes": {}, "Open": {"access": "full"}, "Shut": {"access": "none", "keys": {"Inner": {}}}}}}}})";

struct RightsCase
{
    Path path;
    REGSAM expected;
};

TEST(RegistryFile, RightsHoldForSubKeysUntilOneHasItsOwn)
{
    const auto root = ParseHive(ownFile);
    const RightsCase rows[] = {
        {{u"HKEY_LOCAL_MACHINE"}, KEY_ALL_ACCESS},
        {{u"HKEY_LOCAL_MACHINE", u"SOFTWARE", u"CLASSES"}, KEY_READ},
        {{u"HKEY_LOCAL_MACHINE", u"SOFTWARE", u"OPEN"}, KEY_ALL_ACCESS},
        {{u"HKEY_LOCAL_MACHINE", u"SOFTWARE", u"SHUT", u"INNER"}, 0},
    };
    for (const auto& row : rows)
    {
        const Place place = Locate(*root, row.path);
        ASSERT_NE(place.pKey, nullptr);
        EXPECT_EQ(place.samGranted, row.expected) << row.path.size();
    }
}

TEST(RegistryFile, WhatAPersonWroteIsUnderstoodAndWrittenAgain)
{
    const auto root = ParseHive(WriteHive(*ParseHive(ownFile)));
    const auto& values = Locate(*root, {u"HKEY_LOCAL_MACHINE", u"SOFTWARE"}).pKey->values;
    ASSERT_EQ(values.size(), 4u);
    EXPECT_EQ(values.at(u"").dwType, REG_SZ);
    EXPECT_EQ(values.at(u"").data, (std::vector<BYTE>{'G', 0, 'r', 0, 0xF6, 0, 0xDF, 0, 'e', 0, 0, 0}));
    EXPECT_EQ(values.at(u"COUNT").dwType, REG_DWORD);
    EXPECT_EQ(values.at(u"COUNT").data, std::vector<BYTE>(4, BYTE{0xFF}));
    EXPECT_EQ(values.at(u"BLOB").data, (std::vector<BYTE>{0, 0xFF}));
    EXPECT_EQ(values.at(u"ODD").dwType, 77u);
    EXPECT_EQ(WriteHive(*root), WriteHive(*ParseHive(ownFile)));
}

TEST(RegistryFile, WhatIsNoRegistryIsRefused)
{
    const char* const rows[] = {
        "",
        "[]",
        R"({"HKEY_CURRENT_USER": 1})",
        R"({"HKEY_CURRENT_USER": {"acess": "none"}})",
        R"({"HKEY_CURRENT_USER": {"access": "write"}})",
        R"({"HKEY_CURRENT_USER": {"values": {"n": -1}}})",
        R"({"HKEY_CURRENT_USER": {"values": {"n": 4294967296}}})",
        R"({"HKEY_CURRENT_USER": {"values": {"n": 1.5}}})",
        R"({"HKEY_CURRENT_USER": {"values": {"n": {"type": "REG_WORD", "hex": ""}}}})",
        R"({"HKEY_CURRENT_USER": {"values": {"n": {"type": 3, "hex": "0"}}}})",
        R"({"HKEY_CURRENT_USER": {"values": {"n": {"type": 3, "hex": "0g"}}}})",
        R"({"HKEY_CURRENT_USER": {"values": {"n": 1, "N": 2}}})",
        R"({"HKEY_CURRENT_USER": {"keys": {"k": {}, "K": {}}}})",
    };
    for (const char* const szText : rows)
        EXPECT_THROW(ParseHive(szText), CMalformedHive) << szText;
}

HKEY CreateKey(const std::u16string& path)
{
    HKEY hKey = nullptr;
    EXPECT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &hKey, nullptr), 0);
    return hKey;
}

TEST(RegistryFile, ProcessesSeeEachOthersWritesAndLoseNone)
{
    constexpr WCHAR processes[] = {u'1', u'2', u'3'};
    constexpr DWORD cWrites = 20;
    const std::u16string path = u"Software\\korihvui-test-shared";
    const HKEY hKey = CreateKey(path);
    for (const WCHAR process : processes)
    {
        if (fork() != 0)
            continue;
        LSTATUS lStatus = 0;
        for (DWORD n = 0; n < cWrites; ++n)
        {
            const WCHAR szName[] = {process, static_cast<WCHAR>(u'a' + n), 0};
            lStatus |= RegSetValueExW(hKey, szName, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&n), sizeof n);
        }
        _exit(lStatus == 0 ? 0 : 1);
    }
    for (int nExit = 0; wait(&nExit) > 0;)
        EXPECT_EQ(nExit, 0);
    for (const WCHAR process : processes)
    {
        for (DWORD n = 0; n < cWrites; ++n)
        {
            const WCHAR szName[] = {process, static_cast<WCHAR>(u'a' + n), 0};
            DWORD dwRead = cWrites;
            DWORD cb = sizeof dwRead;
            EXPECT_EQ(RegQueryValueExW(hKey, szName, nullptr, nullptr, reinterpret_cast<BYTE*>(&dwRead), &cb), 0);
            EXPECT_EQ(dwRead, n);
        }
    }
    EXPECT_EQ(RegDeleteKeyW(HKEY_CURRENT_USER, path.c_str()), 0);
    EXPECT_EQ(RegCloseKey(hKey), 0);
}

TEST(RegistryFile, PlannedFailuresHaveTheirCodeAndLeaveNoKeyOpen)
{
    const long lOpen = LiveObjects(Account::RegistryKey);
    HKEY hKey = nullptr;
    {
        const CFailNth fault("RegOpenKeyExW", 1);
        EXPECT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, nullptr, 0, KEY_READ, &hKey), LSTATUS{ERROR_ACCESS_DENIED});
    }
    {
        const CFailNth fault("RegOpenKeyExW", 2, ERROR_NOT_ENOUGH_MEMORY);
        EXPECT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, nullptr, 0, KEY_READ, &hKey), 0);
        EXPECT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, nullptr, 0, KEY_READ, &hKey), LSTATUS{ERROR_NOT_ENOUGH_MEMORY});
    }
    EXPECT_EQ(LiveObjects(Account::RegistryKey), lOpen + 1);
    {
        const CFailNth fault("RegCloseKey", 1);
        EXPECT_EQ(RegCloseKey(hKey), LSTATUS{ERROR_ACCESS_DENIED});
    }
    EXPECT_EQ(LiveObjects(Account::RegistryKey), lOpen);
    EXPECT_EQ(RegCloseKey(hKey), LSTATUS{ERROR_INVALID_HANDLE});
}
} // namespace
