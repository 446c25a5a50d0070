// How the trace log begins: its switches, its place, its backup.
#include "tests/support/ModuleUnderTest.h"
#include "tests/support/TraceLog.h"
#include "trace/KorCmnTracer.h"

#include <fstream>
#include <optional>

namespace
{
using tests::CModuleUnderTest;
using tests::CRegistryValue;
using tests::CTestFolder;
using tests::WriteBytes;
using Bytes = std::vector<BYTE>;

constexpr const WCHAR* szDefaultLog = OLESTR("c:\\WlanLogs\\KorIHVui.txt");
constexpr const WCHAR* szDefaultBackup = OLESTR("c:\\WlanLogs\\lastKorIHVui.txt");
constexpr const WCHAR* szDefaultFolder = OLESTR("c:\\WlanLogs");

bool Exists(const WCHAR* szPath)
{
    return GetFileAttributesW(szPath) != INVALID_FILE_ATTRIBUTES;
}

// Without the log that a module makes when nothing else is said, before and after.
class CNoDefaultLog
{
public:
    CNoDefaultLog()
    {
        Remove();
    }
    ~CNoDefaultLog()
    {
        Remove();
    }

private:
    static void Remove()
    {
        DeleteFileW(szDefaultLog);
        DeleteFileW(szDefaultBackup);
        RemoveDirectoryW(szDefaultFolder);
    }
};

CRegistryValue Enable(DWORD dwType = REG_DWORD, const Bytes& bytes = {1, 0, 0, 0})
{
    return {HKEY_LOCAL_MACHINE, tests::szTraceKey, OLESTR("EnableTraceLog"), dwType, bytes};
}

CRegistryValue LogPath(const CWideString& path, DWORD dwType = REG_SZ, std::size_t cchTerminator = 1)
{
    return {HKEY_LOCAL_MACHINE, tests::szTraceKey, OLESTR("LogPath"), dwType,
            CRegistryValue::BytesOf(path.c_str(), (path.size() + cchTerminator) * sizeof(WCHAR))};
}

// One message of the module: loads it, asks it for a class, unloads it. What it shows on standard output.
std::string TraceThroughModule()
{
    testing::internal::CaptureStdout();
    {
        const CModuleUnderTest module(CModuleUnderTest::Registration::None);
        CComRef<IUnknown> factory;
        EXPECT_EQ(S_OK, module.GetClassObject(CLSID_ExtUI, IID_IUnknown, factory.PutVoid()));
    }
    return testing::internal::GetCapturedStdout();
}

TEST(LogStart, SwitchIsWhateverNumberFitsFourBytes)
{
    const struct
    {
        const char* name;
        std::optional<DWORD> dwType;
        Bytes bytes;
        bool bOn;
    } rows[] = {
        {"absent", std::nullopt, {}, false},
        {"one", REG_DWORD, {1, 0, 0, 0}, true},
        {"zero", REG_DWORD, {0, 0, 0, 0}, false},
        {"highest_bit", REG_DWORD, {0, 0, 0, 0x80}, true},
        {"one_byte", REG_BINARY, {1}, true},
        {"text_of_one_character", REG_SZ, {'0', 0, 0, 0}, true},
        {"empty_text", REG_SZ, {0, 0}, false},
        {"text_of_two_characters", REG_SZ, {'1', 0, '1', 0, 0, 0}, false},
        {"five_bytes", REG_BINARY, {1, 0, 0, 0, 0}, false},
    };
    for (const auto& row : rows)
    {
        SCOPED_TRACE(row.name);
        const CTestFolder folder;
        const auto path = LogPath(folder.PlatformName(OLESTR("log.txt")));
        std::optional<CRegistryValue> enable;
        if (row.dwType)
            enable.emplace(Enable(*row.dwType, row.bytes));
        const auto shown = TraceThroughModule();
        EXPECT_TRUE(shown.ends_with("   Ihvui: GetClassObject\n\n")) << shown;
        EXPECT_EQ(row.bOn, std::filesystem::exists(folder.Path() / "log.txt"));
        EXPECT_EQ(row.bOn, tests::ReadBytes(folder.Path() / "log.txt").ends_with("   Ihvui: GetClassObject\r\n"));
    }
}

TEST(LogStart, LogPath)
{
    const CTestFolder folder;
    const CWideString inFolder = folder.PlatformName(OLESTR(""));
    const auto padded = [&](std::size_t cchPath)
    {
        auto path = folder.PlatformName(OLESTR("p"));
        return path.append(cchPath - path.size(), WCHAR{'p'});
    };
    const struct
    {
        const char* name;
        std::optional<CWideString> path;
        DWORD dwType;
        std::size_t cchTerminator;
        bool bDefault;
        const char* file; // "" where no file can be
    } rows[] = {
        {"absent", std::nullopt, REG_SZ, 1, true, ""},
        {"empty", OLESTR(""), REG_SZ, 1, true, ""},
        {"file", folder.PlatformName(OLESTR("plain.txt")), REG_SZ, 1, false, "plain.txt"},
        {"without_terminator", folder.PlatformName(OLESTR("raw.txt")), REG_SZ, 0, false, "raw.txt"},
        {"of_another_type", folder.PlatformName(OLESTR("binary.txt")), REG_BINARY, 1, false, "binary.txt"},
        {"missing_folders", folder.PlatformName(OLESTR("one\\two\\log.txt")), REG_SZ, 1, false, "one/two/log.txt"},
        {"missing_folder_with_slash", folder.PlatformName(OLESTR("three/log.txt")), REG_SZ, 1, false, "three/log.txt"},
        {"a_folder_disables_the_log", inFolder, REG_SZ, 1, false, ""},
        {"longest", padded(260), REG_SZ, 1, false, ""},
        {"one_character_too_long", padded(261), REG_SZ, 1, true, ""},
    };
    for (const auto& row : rows)
    {
        SCOPED_TRACE(row.name);
        const CNoDefaultLog clean;
        const auto enable = Enable();
        std::optional<CRegistryValue> path;
        if (row.path)
            path.emplace(LogPath(*row.path, row.dwType, row.cchTerminator));
        TraceThroughModule();
        EXPECT_EQ(row.bDefault, Exists(szDefaultLog));
        if (*row.file)
        {
            EXPECT_TRUE(tests::ReadBytes(folder.Path() / row.file).ends_with("GetClassObject\r\n"));
        }
    }
}

TEST(LogStart, MissingDefaultLogDropsItsBackupAndAnExistingOneIsContinued)
{
    const CNoDefaultLog clean;
    const auto enable = Enable();
    TraceThroughModule();
    ASSERT_TRUE(MoveFileW(szDefaultLog, szDefaultBackup));
    TraceThroughModule();
    EXPECT_TRUE(Exists(szDefaultLog));
    EXPECT_FALSE(Exists(szDefaultBackup));
}

// The folder's name with backslashes, whatever the machine's own separator is.
CWideString WithBackslashes(const CTestFolder& folder)
{
    WCHAR szBefore[MAX_PATH] = {};
    WCHAR szFolder[MAX_PATH] = {};
    GetCurrentDirectoryW(MAX_PATH, szBefore);
    EXPECT_TRUE(SetCurrentDirectoryW(folder.PlatformName().c_str()));
    GetCurrentDirectoryW(MAX_PATH, szFolder);
    SetCurrentDirectoryW(szBefore);
    return CWideString(szFolder) + OLESTR("\\");
}

TEST(LogStart, BackupOfTheLogBefore)
{
    using File = std::optional<std::string>;
    const struct
    {
        const char* name;
        bool bFresh;
        File log, last;                 // before
        File expectedLog, expectedLast; // after
    } rows[] = {
        {"existing_log_is_continued", false, "old", "older", "old", "older"},
        {"missing_log_drops_the_backup", false, {}, "older", "", {}},
        {"first_log", false, {}, {}, "", {}},
        {"fresh_replaces_the_backup", true, "old", "older", "", "old"},
        {"fresh_makes_the_backup", true, "old", {}, "", "old"},
        {"fresh_without_a_log", true, {}, "older", "", {}},
    };
    const auto enable = Enable();
    for (const auto& row : rows)
    {
        SCOPED_TRACE(row.name);
        const CTestFolder folder;
        const auto log = folder.Path() / "ihv.txt";
        const auto last = folder.Path() / "lastihv.txt";
        if (row.log)
            tests::WriteBytes(log, *row.log);
        if (row.last)
            tests::WriteBytes(last, *row.last);
        KorCmnTracer::Start((WithBackslashes(folder) + OLESTR("ihv.txt")).c_str(), false, row.bFresh);
        KorCmnTracer::Stop();
        const auto now = [](const auto& path) { return std::filesystem::exists(path) ? File(tests::ReadBytes(path)) : File(); };
        EXPECT_EQ(row.expectedLog, now(log));
        EXPECT_EQ(row.expectedLast, now(last));
    }
}

TEST(LogStart, BackupOfALogNamedWithoutFolder)
{
    const auto enable = Enable();
    const CTestFolder folder;
    tests::WriteBytes(folder.Path() / "ihv.txt", "old");
    WCHAR szBefore[MAX_PATH] = {};
    GetCurrentDirectoryW(MAX_PATH, szBefore);
    ASSERT_TRUE(SetCurrentDirectoryW(folder.PlatformName().c_str()));
    KorCmnTracer::Start(OLESTR("ihv.txt"), false, true);
    KorCmnTracer::Stop();
    SetCurrentDirectoryW(szBefore);
    EXPECT_EQ("old", tests::ReadBytes(folder.Path() / "lastihv.txt"));
    EXPECT_EQ("", tests::ReadBytes(folder.Path() / "ihv.txt"));
}

TEST(LogStart, UnloadingReleasesTheLogAndLoadingAgainContinuesIt)
{
    const CTestFolder folder;
    const auto enable = Enable();
    const auto path = LogPath(folder.PlatformName(OLESTR("log.txt")));
    const auto file = folder.Path() / "log.txt";
    TraceThroughModule();
    const auto once = tests::ReadBytes(file);
    TraceThroughModule();
    const auto twice = tests::ReadBytes(file);
    EXPECT_TRUE(twice.starts_with(once));
    EXPECT_EQ(2 * once.size(), twice.size());
    EXPECT_TRUE(DeleteFileW(folder.PlatformName(OLESTR("log.txt")).c_str())) << "error " << GetLastError();
    {
        const CModuleUnderTest module(CModuleUnderTest::Registration::None);
        EXPECT_FALSE(DeleteFileW(folder.PlatformName(OLESTR("log.txt")).c_str())) << "a log in use cannot be deleted";
    }
}

TEST(LogStart, AppendsToALogBeyondWhatHalfASizeCanTell)
{
    for (const std::uintmax_t cbLog : {std::uintmax_t{2'500'000'000}, std::uintmax_t{4'500'000'000}})
    {
        const CTestFolder folder;
        const auto file = folder.Path() / "large.txt";
        WriteBytes(file, "first");
        std::filesystem::resize_file(file, cbLog);
        const auto enable = Enable();
        const auto path = LogPath(folder.PlatformName(OLESTR("large.txt")));
        TraceThroughModule();
        EXPECT_GT(std::filesystem::file_size(file), cbLog);
        std::ifstream log(file, std::ios::binary);
        std::string beginning(5, ' ');
        log.read(beginning.data(), 5);
        EXPECT_EQ("first", beginning);
    }
}
} // namespace
