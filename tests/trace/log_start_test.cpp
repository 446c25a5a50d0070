// How the trace log begins: its switches, its place, its backup.
#include "tests/support/ModuleUnderTest.h"
#include "tests/support/TraceLog.h"
#include "trace/IhvuiTrace.h"
#include "trace/KorCmnTracer.h"

#include <fstream>
#include <optional>

namespace
{
using tests::CModuleUnderTest;
using tests::CRegistryValue;
using tests::CTestFolder;
using tests::ReadBytes;
using tests::WriteBytes;
using Bytes = std::vector<BYTE>;

// A folder that is the current one as well, so that names without a folder can be tried.
class LogStart : public testing::Test
{
protected:
    LogStart()
    {
        GetCurrentDirectoryW(MAX_PATH, m_szBefore);
        EXPECT_TRUE(SetCurrentDirectoryW(m_folder.PlatformName().c_str()));
    }
    ~LogStart() override
    {
        SetCurrentDirectoryW(m_szBefore);
    }
    // One message of the module: loads it, asks it for a class, unloads it.
    static void TraceThroughModule()
    {
        const CModuleUnderTest module(CModuleUnderTest::Registration::None);
        CComRef<IUnknown> factory;
        EXPECT_EQ(S_OK, module.GetClassObject(CLSID_ExtUI, IID_IUnknown, factory.PutVoid()));
    }
    static CRegistryValue Enable(DWORD dwType = REG_DWORD, const Bytes& bytes = {1, 0, 0, 0})
    {
        return {HKEY_LOCAL_MACHINE, tests::szTraceKey, OLESTR("EnableTraceLog"), dwType, bytes};
    }
    static CRegistryValue LogPath(const CWideString& path, DWORD dwType = REG_SZ, std::size_t cchTerminator = 1)
    {
        return {HKEY_LOCAL_MACHINE, tests::szTraceKey, OLESTR("LogPath"), dwType,
                CRegistryValue::BytesOf(path.c_str(), (path.size() + cchTerminator) * sizeof(WCHAR))};
    }
    // A name in the folder that makes a path of so many code units.
    CWideString Padded(std::size_t cchPath) const
    {
        auto path = m_folder.PlatformName(OLESTR("p"));
        return path.append(cchPath - path.size(), WCHAR{'p'});
    }

    CTestFolder m_folder;
    WCHAR m_szBefore[MAX_PATH] = {};
};

TEST_F(LogStart, SwitchIsWhateverNumberFitsFourBytes)
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
        {"no_byte", REG_BINARY, {}, false},
        {"text_of_one_character", REG_SZ, {'0', 0, 0, 0}, true},
        {"text_of_two_characters", REG_SZ, {'1', 0, '1', 0, 0, 0}, false},
        {"five_bytes", REG_BINARY, {1, 0, 0, 0, 0}, false},
    };
    for (const auto& row : rows)
    {
        const auto path = LogPath(OLESTR("log.txt"));
        std::optional<CRegistryValue> enable;
        if (row.dwType)
            enable.emplace(Enable(*row.dwType, row.bytes));
        TraceThroughModule();
        EXPECT_EQ(row.bOn, ReadBytes("log.txt").ends_with("   Ihvui: GetClassObject\r\n")) << row.name;
        EXPECT_EQ(row.bOn, std::filesystem::remove("log.txt")) << row.name;
    }
}

TEST_F(LogStart, LogPathIsWhateverFits)
{
    constexpr const WCHAR* szDefaultLog = OLESTR("c:\\WlanLogs\\KorIHVui.txt");
    const auto removeDefault = [&]
    {
        const bool bThere = DeleteFileW(szDefaultLog) != FALSE;
        RemoveDirectoryW(OLESTR("c:\\WlanLogs"));
        return bThere;
    };
    const struct
    {
        const char* name;
        std::optional<CWideString> path;
        DWORD dwType;
        std::size_t cchTerminator;
        std::string file; // "default" for the default one, "" for none
    } rows[] = {
        {"absent", std::nullopt, REG_SZ, 1, "default"},
        {"empty", OLESTR(""), REG_SZ, 1, "default"},
        {"one_character", OLESTR("p"), REG_SZ, 1, "p"},
        {"without_terminator", OLESTR("raw.txt"), REG_SZ, 0, "raw.txt"},
        {"of_another_type", OLESTR("binary.txt"), REG_BINARY, 1, "binary.txt"},
        {"missing_folders", m_folder.PlatformName(OLESTR("one\\two/log.txt")), REG_SZ, 1, "one/two/log.txt"},
        {"missing_folder_of_one_character", OLESTR("a\\log.txt"), REG_SZ, 1, "a/log.txt"},
        {"longest_which_nothing_opens", Padded(260), REG_SZ, 1, ""},
        {"too_long", Padded(261), REG_SZ, 1, "default"},
        {"without_room_for_a_terminator", Padded(261), REG_SZ, 0, "default"},
    };
    for (const auto& row : rows)
    {
        SCOPED_TRACE(row.name);
        removeDefault();
        const auto enable = Enable();
        std::optional<CRegistryValue> path;
        if (row.path)
            path.emplace(LogPath(*row.path, row.dwType, row.cchTerminator));
        TraceThroughModule();
        EXPECT_EQ(row.file == "default", removeDefault());
        EXPECT_EQ(row.file != "default" && !row.file.empty(), ReadBytes(row.file).ends_with("GetClassObject\r\n"));
    }
}

// A folder cannot be opened, and a path beyond the limit would, shortened, name some other file.
TEST_F(LogStart, APathThatCannotBeLeavesTheLogOff)
{
    const auto enable = Enable();
    for (const CWideString& path : {CWideString(OLESTR("log.txt")), m_folder.PlatformName(OLESTR("")), Padded(261)})
    {
        KorCmnTracer::Start(path.c_str(), false, false);
        IhvuiTrace(traceLevelError, OLESTR("x\n"));
        KorCmnTracer::Stop();
    }
    EXPECT_EQ(36u, ReadBytes("log.txt").size()) << "the first path's line alone";
    EXPECT_EQ(1, std::distance(std::filesystem::directory_iterator("."), {}));
}

TEST_F(LogStart, BackupOfTheLogBefore)
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
        {"fresh_replaces_the_backup", true, "old", "older", "", "old"},
        {"fresh_makes_the_backup", true, "old", {}, "", "old"},
    };
    const auto enable = Enable();
    WCHAR szFolder[MAX_PATH] = {}; // with backslashes, whatever the machine's own separator is
    GetCurrentDirectoryW(MAX_PATH, szFolder);
    for (const CWideString& folder : {szFolder + CWideString(OLESTR("\\")), CWideString()})
        for (const auto& row : rows)
        {
            SCOPED_TRACE(row.name);
            for (const auto& [szFile, text] : {std::pair("ihv.txt", row.log), {"lastihv.txt", row.last}})
            {
                std::filesystem::remove(szFile);
                if (text)
                    WriteBytes(szFile, *text);
            }
            KorCmnTracer::Start((folder + OLESTR("ihv.txt")).c_str(), false, row.bFresh);
            KorCmnTracer::Stop();
            const auto now = [](const char* szFile)
            { return std::filesystem::exists(szFile) ? File(ReadBytes(szFile)) : File(); };
            EXPECT_EQ(row.expectedLog, now("ihv.txt"));
            EXPECT_EQ(row.expectedLast, now("lastihv.txt"));
        }
}

TEST_F(LogStart, UnloadingReleasesTheLogAndLoadingAgainContinuesIt)
{
    const auto enable = Enable();
    const auto path = LogPath(OLESTR("log.txt"));
    TraceThroughModule();
    const auto once = ReadBytes("log.txt");
    TraceThroughModule();
    EXPECT_EQ(2 * once.size(), ReadBytes("log.txt").size());
    EXPECT_TRUE(ReadBytes("log.txt").starts_with(once));
    EXPECT_TRUE(DeleteFileW(OLESTR("log.txt"))) << "error " << GetLastError();
    const CModuleUnderTest module(CModuleUnderTest::Registration::None);
    EXPECT_FALSE(DeleteFileW(OLESTR("log.txt"))) << "a log in use cannot be deleted";
}

// The size comes in two halves, and the error value is the low half of some sizes.
TEST_F(LogStart, AppendsToALogOfAnySize)
{
    const struct
    {
        std::uintmax_t cbLog;
        bool bAppends;
    } rows[] = {{2'500'000'000, true}, {4'294'967'295, false}, {4'500'000'000, true}, {8'589'934'591, true}};
    const auto enable = Enable();
    WriteBytes("large.txt", "first");
    for (const auto& row : rows)
    {
        std::filesystem::resize_file("large.txt", row.cbLog);
        KorCmnTracer::Start(OLESTR("large.txt"), false, false);
        SetLastError(ERROR_ACCESS_DENIED); // of something before
        IhvuiTrace(traceLevelError, OLESTR("x\n"));
        KorCmnTracer::Stop();
        EXPECT_EQ(row.cbLog + (row.bAppends ? 36 : 0), std::filesystem::file_size("large.txt"));
    }
    std::ifstream log("large.txt", std::ios::binary);
    std::string beginning(5, ' ');
    log.read(beginning.data(), 5);
    EXPECT_EQ("first", beginning);
}
} // namespace
