// What a person relies on from the file that the stand-in keeps its registry in, whoever else uses it. Native build only.
#include "platform/kernel32/Paths.h"
#include "tests/support/TestFolder.h"
#include "values/Unique.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>

#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace
{
constexpr WCHAR szKey[] = OLESTR("Software\\korihvui-test-shared");

LSTATUS CreateKey(CUniqueKey& key)
{
    return RegCreateKeyExW(HKEY_CURRENT_USER, szKey, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, key.Put(), nullptr);
}

LSTATUS SetNumber(HKEY hKey, WCHAR first, DWORD n)
{
    const WCHAR szName[] = {first, static_cast<WCHAR>(OLESTR('a') + n), 0};
    return RegSetValueExW(hKey, szName, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&n), sizeof n);
}

bool IsSet(HKEY hKey, WCHAR first, DWORD n)
{
    const WCHAR szName[] = {first, static_cast<WCHAR>(OLESTR('a') + n), 0};
    DWORD dwRead = n + 1;
    DWORD cb = sizeof dwRead;
    return RegQueryValueExW(hKey, szName, nullptr, nullptr, reinterpret_cast<BYTE*>(&dwRead), &cb) == ERROR_SUCCESS &&
           dwRead == n;
}

TEST(RegistryState, OfABrokenFileIsReportedAndTheFileLeftAlone)
{
    const auto file = platform::RootFolder() / "registry.json";
    for (const char* const szText :
         {"", "[]", "{\"HKEY_CURRENT_USER\": 1}", "{\"HKEY_CURRENT_USER\": {\"keyz\": {}}}",
          "{\"HKEY_CURRENT_USER\": {\"values\": {\"n\": -1}}}", "{\"HKEY_CURRENT_USER\": {\"keys\": {\"Software\": {}}}"})
    {
        tests::WriteBytes(file, szText);
        CUniqueKey key;
        EXPECT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, OLESTR("Software"), 0, KEY_READ, key.Put()), LSTATUS{ERROR_BADDB}) << szText;
        EXPECT_EQ(CreateKey(key), LSTATUS{ERROR_BADDB}) << szText;
        EXPECT_EQ(tests::ReadBytes(file), szText);
    }
    std::filesystem::remove(file);
}

TEST(RegistryState, IsWrittenIntoNothingThatSomebodyPutThere)
{
    const auto file = platform::RootFolder() / "registry.json";
    const auto lock = platform::RootFolder() / "registry.lock";
    const tests::CTestFolder folder;
    CUniqueKey key;
    ASSERT_EQ(CreateKey(key), LSTATUS{});
    const auto others = folder.Path() / "others";
    tests::WriteBytes(others, "others'");
    std::filesystem::create_symlink(others, file.native() + ".new");
    const bool bAttributes = setxattr(file.c_str(), "user.note", "x", 1, 0) == 0; // not every file system has them
    std::filesystem::permissions(file, std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
    EXPECT_EQ(SetNumber(key.Get(), OLESTR('l'), 1), LSTATUS{});
    EXPECT_EQ(tests::ReadBytes(others), "others'");
    EXPECT_EQ(getxattr(file.c_str(), "user.note", nullptr, 0), bAttributes ? 1 : -1);
    EXPECT_EQ(std::filesystem::status(file).permissions(), std::filesystem::perms{0600});

    for (const auto& pipe : {lock, file})
    {
        std::filesystem::remove(pipe);
        ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
        EXPECT_EQ(CreateKey(key), LSTATUS{ERROR_REGISTRY_IO_FAILED}) << pipe;
        std::filesystem::remove(pipe);
    }
}

// Three processes write as many values each while a fourth writes without end until it is killed.
TEST(RegistryState, IsWholeWhateverOtherProcessesWriteAndThoughOneIsKilled)
{
    constexpr WCHAR writers[] = {OLESTR('1'), OLESTR('2'), OLESTR('3')};
    constexpr DWORD cWrites = 20;
    CUniqueKey key;
    ASSERT_EQ(CreateKey(key), LSTATUS{});
    const pid_t victim = fork();
    if (victim == 0)
    {
        prctl(PR_SET_PDEATHSIG, SIGKILL); // also when this test ends early
        for (DWORD n = 0;; ++n)
            SetNumber(key.Get(), OLESTR('v'), n % cWrites);
    }
    for (const WCHAR writer : writers)
    {
        if (fork() != 0)
            continue;
        LSTATUS lStatus = 0;
        for (DWORD n = 0; n < cWrites; ++n)
            lStatus |= SetNumber(key.Get(), writer, n);
        _exit(lStatus == 0 ? 0 : 1);
    }
    const auto latest = std::chrono::steady_clock::now() + std::chrono::minutes(2);
    while (!IsSet(key.Get(), OLESTR('v'), 0) || !IsSet(key.Get(), writers[0], 0))
        ASSERT_LT(std::chrono::steady_clock::now(), latest) << "until the writers have begun";
    kill(victim, SIGKILL);
    for (int nExit = 0; const pid_t ended = wait(&nExit);)
    {
        if (ended < 0)
            break;
        EXPECT_EQ(nExit, ended == victim ? SIGKILL : 0);
    }
    for (const WCHAR writer : writers)
    {
        for (DWORD n = 0; n < cWrites; ++n)
            EXPECT_TRUE(IsSet(key.Get(), writer, n)) << static_cast<char>(writer) << n;
    }
    EXPECT_EQ(SetNumber(key.Get(), OLESTR('p'), 1), LSTATUS{}); // nothing is locked
    EXPECT_TRUE(IsSet(key.Get(), OLESTR('p'), 1));
}
} // namespace
