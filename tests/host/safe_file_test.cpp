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

TEST(SafeFileTest, TakesAwayWhatKilledWritersLeftAndNothingOfOthers)
{
    const CTestFolder folder;
    const auto target = folder.Path() / "office.xml";
    // A folder of such a name cannot be taken away, and is no obstacle.
    std::set<std::string> expected = {
        "office.xml.backup",        "office.xml.unfinished-notes",      "office.xml.unfinished-1-2-3",
        "other.xml.unfinished-1-2", "office.xml.backup.unfinished-1-2", "office.xml.unfinished-1-2"};
    std::filesystem::create_directories(folder.Path() / "office.xml.unfinished-1-2/full");
    for (const std::string& strName : expected)
        WriteBytes(folder.Path() / strName, "other");
    expected.insert("office.xml");
    for (const char* szText : {"new", "newer"})
    {
        WriteBytes(folder.Path() / "office.xml.unfinished-1234-1", "half of the n");
        WriteSafely(target, szText);
        EXPECT_EQ(szText, ReadBytes(target));
        EXPECT_EQ(expected, FilesIn(folder));
    }
}

// One that tidies up must not take the other's file for a leftover.
TEST(SafeFileTest, WritersOfOneFileLeaveEachOtherAlone)
{
    const CTestFolder folder;
    const auto target = folder.Path() / "office.xml";
    const std::string texts[] = {std::string(20000, 'a'), std::string(30000, 'b')};
    WriteSafely(target, texts[0]);
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
                            const std::string_view reason = error.what();
                            EXPECT_TRUE(reason.find("denied") != reason.npos || reason.find("another program") != reason.npos)
                                << reason;
                        }
                });
    }
    const std::string strLast = ReadBytes(target);
    EXPECT_TRUE(strLast == texts[0] || strLast == texts[1]) << strLast.size() << " bytes";
    EXPECT_EQ(std::set<std::string>{"office.xml"}, FilesIn(folder));
}

TEST(SafeFileTest, RefusesToWriteOverWhatItHasNotRead)
{
    const CTestFolder folder;
    const auto target = folder.Path() / "office.xml";
    for (const char* szNow : {"new", "another's, which is longer", ""})
    {
        WriteBytes(target, szNow);
        EXPECT_THROW(WriteSafely(target, "mine", "old"), CHostError);
        EXPECT_EQ(szNow, ReadBytes(target));
    }
    WriteSafely(target, "mine", "");
    EXPECT_EQ("mine", ReadBytes(target));
}

TEST(SafeFileTest, KeepsThePermissionsAlsoThroughALink)
{
    const CTestFolder folder;
    const auto target = folder.Path() / "office.xml";
    const auto link = folder.Path() / "link.xml";
    WriteBytes(target, "old");
    std::filesystem::permissions(target, std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
    const auto before = std::filesystem::status(target).permissions();
    std::error_code error;
    std::filesystem::create_symlink(target, link, error); // not every system lets everybody make one
    WriteSafely(error ? target : link, "new");
    EXPECT_EQ("new", ReadBytes(target));
    EXPECT_EQ(before, std::filesystem::status(target).permissions());
    EXPECT_TRUE(error || std::filesystem::is_symlink(link));
}
} // namespace
