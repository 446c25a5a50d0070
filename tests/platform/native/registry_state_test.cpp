// What a person relies on from the file that the stand-in keeps its registry in, whoever else uses it. Native build only.
#include "platform/advapi32/AccessRights.h"
#include "platform/kernel32/Descriptor.h"
#include "platform/kernel32/Paths.h"
#include "tests/support/TestFolder.h"
#include "values/Unique.h"

#include <gtest/gtest.h>

#include <csignal>

#include <fcntl.h>
#include <grp.h>
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

LSTATUS SetNumber(HKEY hKey, WCHAR chName, DWORD n)
{
    const WCHAR szName[] = {chName, 0};
    return RegSetValueExW(hKey, szName, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&n), sizeof n);
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

// What a member of the file's group may keep, and nobody else; the list is one that the folder has handed down.
TEST(RegistryState, IsKeptFromTheGroupsOfWhoeverWritesIt)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "takes somebody who may give files away";
    const tests::CTestFolder folder;
    constexpr gid_t own = 4000;
    constexpr gid_t joined = 3000;
    constexpr std::uint32_t list[] = {2, 0x60001, ~0U, 0x60002, 2600, 0x60004, ~0U, 0x60010, ~0U, 0x20, ~0U};
    for (const gid_t group : {joined, gid_t{3500}})
    {
        const platform::CDescriptor before(open((folder.Path() / "old").c_str(), O_RDWR | O_CREAT, 0600));
        const platform::CDescriptor after(open((folder.Path() / "new").c_str(), O_RDWR | O_CREAT | O_TRUNC, 0600));
        ASSERT_EQ(fchown(before.Get(), 2500, group) | fchmod(before.Get(), 0660), 0);
        fsetxattr(after.Get(), "system.posix_acl_access", list, sizeof list, 0);
        ASSERT_EQ(fchown(after.Get(), 2000, own) | fchmod(after.Get(), 0600), 0);
        if (fork() == 0)
        {
            const bool bOther = setgroups(1, &joined) == 0 && setgid(own) == 0 && setuid(2000) == 0;
            _exit(bOther ? platform::CopyRights(before.Get(), after.Get()) : 2);
        }
        int nExit = 0;
        struct stat status = {};
        ASSERT_TRUE(wait(&nExit) > 0 && fstat(after.Get(), &status) == 0);
        EXPECT_EQ(WEXITSTATUS(nExit), group == joined ? 1 : 0);
        EXPECT_EQ(status.st_gid, group == joined ? joined : own);
        EXPECT_EQ(status.st_mode & 0777, group == joined ? 0660U : 0600U);
        EXPECT_TRUE(group != joined || fgetxattr(after.Get(), "system.posix_acl_access", nullptr, 0) < 0);
    }
}

TEST(RegistryState, IsWholeWhateverAnotherProcessWritesUntilItIsKilled)
{
    CUniqueKey key;
    ASSERT_EQ(CreateKey(key), LSTATUS{});
    const pid_t victim = fork();
    if (victim == 0)
    {
        prctl(PR_SET_PDEATHSIG, SIGKILL); // also when this test ends early
        for (DWORD n = 0;; ++n)
            SetNumber(key.Get(), OLESTR('!'), n);
    }
    for (WCHAR chName = OLESTR('a'); chName <= OLESTR('y'); ++chName)
        EXPECT_EQ(SetNumber(key.Get(), chName, chName), LSTATUS{});
    kill(victim, SIGKILL);
    waitpid(victim, nullptr, 0);
    EXPECT_EQ(SetNumber(key.Get(), OLESTR('z'), OLESTR('z')), LSTATUS{}) << "something is locked";
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
