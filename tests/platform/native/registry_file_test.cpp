// The stand-in's registry beyond what the platform can be asked for: other processes, planned failures. Native build only.
#include <windows.h>

#include "platform/testing/Accounts.h"
#include "platform/testing/Faults.h"

#include <gtest/gtest.h>

#include <string>

#include <sys/wait.h>
#include <unistd.h>

namespace
{
using namespace platform::testing;

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
