// Files that are replaced as a whole: what killed writers left goes, what others put beside them stays.
#include "host/HostError.h"
#include "host/SafeFile.h"
#include "tests/support/TestFolder.h"

#include <gtest/gtest.h>

#include <set>
#include <thread>

namespace
{
using namespace tests;

std::set<std::string> FilesIn(const CTestFolder& folder)
{
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder.Path()))
        names.insert(entry.path().filename().string());
    return names;
}

TEST(SafeFileTest, TakesAwayWhatKilledWritersLeft)
{
    for (const bool bExists : {false, true})
    {
        const CTestFolder folder;
        const auto target = folder.Path() / "office.xml";
        if (bExists)
            WriteBytes(target, "old");
        for (const char* szLeftover : {"office.xml.korihost-1234", "office.xml.korihost-aB3xYz"})
            WriteBytes(folder.Path() / szLeftover, "half of the n");
        WriteSafely(target, "new");
        EXPECT_EQ("new", ReadBytes(target));
        EXPECT_EQ(std::set<std::string>{"office.xml"}, FilesIn(folder));
    }
}

TEST(SafeFileTest, LeavesTheFilesOfOthers)
{
    const CTestFolder folder;
    const std::set<std::string> others = {"office.xml.backup", "office.xml.tmp", "office.xml.korihos",
                                          "other.xml.korihost-aB3xYz", "x.office.xml.korihost-aB3xYz"};
    for (const std::string& strName : others)
        WriteBytes(folder.Path() / strName, "other");
    // A folder of such a name cannot be taken away, and is no obstacle.
    const auto obstacle = folder.Path() / "office.xml.korihost-folder";
    std::filesystem::create_directories(obstacle / "full");
    WriteSafely(folder.Path() / "office.xml", "new");
    std::set<std::string> expected = others;
    expected.insert({"office.xml", "office.xml.korihost-folder"});
    EXPECT_EQ(expected, FilesIn(folder));
    EXPECT_EQ("other", ReadBytes(folder.Path() / "office.xml.backup"));
}

// One that tidies up must not take the other's file for a leftover.
TEST(SafeFileTest, WritersOfOneFileLeaveEachOtherAlone)
{
    const CTestFolder folder;
    const auto target = folder.Path() / "office.xml";
    const std::string texts[] = {std::string(20000, 'a'), std::string(30000, 'b')};
    {
        std::vector<std::jthread> threads;
        for (const std::string& strText : texts)
            threads.emplace_back(
                [&]
                {
                    for (int i = 0; i < 50; ++i)
                        try
                        {
                            WriteSafely(target, strText);
                        }
                        catch (const CHostError& error)
                        {
                            // Windows replaces no file that the other one has not closed yet.
                            EXPECT_NE(std::string::npos, std::string_view(error.what()).find("denied")) << error.what();
                        }
                });
    }
    const std::string strLast = ReadBytes(target);
    EXPECT_TRUE(strLast == texts[0] || strLast == texts[1]) << strLast.size() << " bytes";
    EXPECT_EQ(std::set<std::string>{"office.xml"}, FilesIn(folder));
}

TEST(SafeFileTest, KeepsThePermissions)
{
    const CTestFolder folder;
    const auto target = folder.Path() / "office.xml";
    WriteBytes(target, "old");
    std::filesystem::permissions(target, std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
    const auto before = std::filesystem::status(target).permissions();
    WriteSafely(target, "new");
    EXPECT_EQ("new", ReadBytes(target));
    EXPECT_EQ(before, std::filesystem::status(target).permissions());
}
} // namespace
