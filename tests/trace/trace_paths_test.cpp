// Operations on the paths of the log.
#include "tests/support/TestFolder.h"
#include "trace/TracePaths.h"

#include <gtest/gtest.h>

namespace
{
using tests::CTestFolder;
using tests::Narrow;

TEST(TracePaths, LastSeparator)
{
    const struct
    {
        const char* name;
        const WCHAR* szPath;
        int nBound;
        int nIndex;
    } rows[] = {
        {"log", OLESTR("c:\\WlanLogs\\KorIHVui.txt"), 261, 11},
        {"slash", OLESTR("c:\\logs/log.txt"), 261, 7},
        {"backslash_behind_a_slash", OLESTR("c:/logs\\log.txt"), 261, 7},
        {"none", OLESTR("log.txt"), 261, 0},
        {"at_the_beginning", OLESTR("\\log.txt"), 261, 0},
        {"at_the_end", OLESTR("a\\b\\"), 261, 3},
        {"beyond_the_bound", OLESTR("a\\b\\c"), 3, 1},
        {"empty", OLESTR(""), 261, 0},
    };
    for (const auto& row : rows)
        EXPECT_EQ(row.nIndex, FindLastPathSeparator(row.szPath, row.nBound)) << row.name;
}

TEST(TracePaths, LastCharacter)
{
    EXPECT_EQ(11, ReverseFind(OLESTR("c:\\WlanLogs\\KorIHVui.txt"), '\\'));
    EXPECT_EQ(-1, ReverseFind(OLESTR("c:/WlanLogs/KorIHVui.txt"), '\\')) << "a slash is no backslash";
    EXPECT_EQ(0, ReverseFind(OLESTR("\\x"), '\\'));
    EXPECT_EQ(-1, ReverseFind(OLESTR(""), '\\'));
}

TEST(TracePaths, InsertedText)
{
    const struct
    {
        const char* name;
        const WCHAR* szText;
        int nPosition;
        const char* result;
    } rows[] = {
        {"before_the_file_name", OLESTR("d:\\trace\\ihv.txt"), 9, "d:\\trace\\lastihv.txt"},
        {"at_the_beginning", OLESTR("ihv.txt"), 0, "lastihv.txt"},
        {"negative_counts_as_the_beginning", OLESTR("ihv.txt"), -1, "lastihv.txt"},
        {"at_the_end", OLESTR("ihv"), 3, "ihvlast"},
        {"into_nothing", OLESTR(""), 0, "last"},
    };
    for (const auto& row : rows)
    {
        WCHAR* szResult = nullptr;
        const int cchResult = InsertText(row.szText, row.nPosition, OLESTR("last"), &szResult);
        const std::unique_ptr<WCHAR[]> owner(szResult);
        ASSERT_NE(nullptr, szResult) << row.name;
        EXPECT_EQ(row.result, Narrow(szResult)) << row.name;
        EXPECT_EQ(std::string(row.result).size(), static_cast<std::size_t>(cchResult)) << row.name;
    }
}

TEST(TracePaths, FoldersAreCreatedUpToTheLastSeparator)
{
    const struct
    {
        const char* name;
        const WCHAR* szPath;
        bool bCreated;
        std::vector<const char*> folders;
        std::vector<const char*> missing;
    } rows[] = {
        {"folder", OLESTR("one\\"), true, {"one"}, {}},
        {"file_in_a_folder", OLESTR("one\\log.txt"), true, {"one"}, {"one/log.txt"}},
        {"several_levels", OLESTR("one/two\\three/"), true, {"one/two/three"}, {}},
        {"some_exist", OLESTR("there\\two\\"), true, {"there/two"}, {}},
        {"below_a_file", OLESTR("one\\file\\two\\"), true, {"one/file/two"}, {}},
        {"blocked_by_a_file", OLESTR("new\\..\\file\\two\\three\\"), false, {"new"}, {"file/two"}},
    };
    for (const auto& row : rows)
    {
        SCOPED_TRACE(row.name);
        const CTestFolder folder;
        std::filesystem::create_directory(folder.Path() / "there");
        tests::WriteBytes(folder.Path() / "file", "a file");
        EXPECT_EQ(row.bCreated, CreateDirectoryPath(folder.PlatformName(row.szPath).c_str()));
        for (const char* szFolder : row.folders)
            EXPECT_TRUE(std::filesystem::is_directory(folder.Path() / szFolder)) << szFolder;
        for (const char* szMissing : row.missing)
            EXPECT_FALSE(std::filesystem::exists(folder.Path() / szMissing)) << szMissing;
    }
}
} // namespace
