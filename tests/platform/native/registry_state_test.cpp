// What a person relies on from the file that the stand-in keeps its registry in, whoever else uses it. Native build only.
#include "platform/kernel32/Paths.h"
#include "tests/support/TestFolder.h"
#include "values/Unique.h"

#include <gtest/gtest.h>

#include <csignal>

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{
constexpr WCHAR szKey[] = OLESTR("Software\\korihvui-test-shared");

LSTATUS CreateKey(CUniqueKey& key)
{
    return RegCreateKeyExW(HKEY_CURRENT_USER, szKey, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, key.Put(), nullptr);
}

TEST(RegistryState, OfABrokenFileIsReportedAndTheFileLeftAlone)
{
    const auto file = platform::RootFolder() / "registry.json";
    std::string strDeep;
    for (int n = 0; n < 100'000; ++n)
        strDeep += "{\"keys\": {\"k\": ";
    strDeep += "{}" + std::string(200'000, '}');
    for (const char* const szText : {"", "[]", "{\"HKEY_CURRENT_USER\": 1}", "{\"HKEY_CURRENT_USER\": {\"keyz\": {}}}",
                                     "{\"HKEY_CURRENT_USER\": {\"values\": {\"n\": -1}}}",
                                     "{\"HKEY_CURRENT_USER\": {\"keys\": {\"Software\": {}}}", strDeep.c_str()})
    {
        tests::WriteBytes(file, szText);
        CUniqueKey key;
        EXPECT_EQ(CreateKey(key), LSTATUS{ERROR_BADDB}) << szText;
        EXPECT_EQ(tests::ReadBytes(file), szText);
    }
    std::filesystem::remove(file);
}

TEST(RegistryState, IsWholeWhateverAnotherProcessWritesUntilItIsKilled)
{
    CUniqueKey key;
    ASSERT_EQ(CreateKey(key), LSTATUS{});
    const auto set = [&](WCHAR chName, DWORD n)
    {
        const WCHAR szName[] = {chName, 0};
        return RegSetValueExW(key.Get(), szName, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&n), sizeof n);
    };
    const pid_t victim = fork();
    if (victim == 0)
    {
        prctl(PR_SET_PDEATHSIG, SIGKILL); // also when this test ends early
        for (DWORD n = 0;; ++n)
            set(OLESTR('!'), n);
    }
    for (WCHAR chName = OLESTR('a'); chName <= OLESTR('y'); ++chName)
        EXPECT_EQ(set(chName, chName), LSTATUS{});
    kill(victim, SIGKILL);
    waitpid(victim, nullptr, 0);
    EXPECT_EQ(set(OLESTR('z'), OLESTR('z')), LSTATUS{}) << "something is locked";
    for (WCHAR chName = OLESTR('a'); chName <= OLESTR('z'); ++chName)
    {
        const WCHAR szName[] = {chName, 0};
        DWORD n = 0;
        DWORD cb = sizeof n;
        EXPECT_EQ(RegQueryValueExW(key.Get(), szName, nullptr, nullptr, reinterpret_cast<BYTE*>(&n), &cb), LSTATUS{});
        EXPECT_EQ(n, DWORD{chName});
    }
}
} // namespace
