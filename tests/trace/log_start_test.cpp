// How the trace log begins: its switches, its place, its backup.
#include "platform/testing/Faults.h"
#include "tests/support/ModuleUnderTest.h"
#include "tests/support/TraceLog.h"
#include "trace/IhvuiTrace.h"
#include "trace/KorCmnTracer.h"

namespace
{
using tests::CModuleUnderTest;
using tests::CRegistryValue;
using tests::ReadBytes;
using tests::WriteBytes;
constexpr std::size_t cbLine = sizeof("12:34:56.789 [     A3C]   Ihvui: x\r\n") - 1;

// A folder that is the current one as well, so that names without a folder can be tried.
class LogStart : public testing::Test
{
protected:
    LogStart()
    {
        GetCurrentDirectoryW(MAX_PATH, m_szBefore);
        EXPECT_TRUE(SetCurrentDirectoryW(m_folder.PlatformName().c_str()));
        GetCurrentDirectoryW(MAX_PATH, m_szFolder);
    }
    ~LogStart() override
    {
        SetCurrentDirectoryW(m_szBefore);
    }
    static CRegistryValue Value(const WCHAR* szName, DWORD dwType, const std::vector<BYTE>& bytes)
    {
        return {HKEY_LOCAL_MACHINE, tests::szTraceKey, szName, dwType, bytes};
    }
    static CRegistryValue Enable(DWORD dwType = REG_DWORD, const std::vector<BYTE>& bytes = {1, 0, 0, 0})
    {
        return Value(OLESTR("EnableTraceLog"), dwType, bytes);
    }
    static void WriteLog(const CWideString& path)
    {
        KorCmnTracer::Start(path.c_str(), false, false);
        SetLastError(ERROR_ACCESS_DENIED); // of something before
        IhvuiTrace(traceLevelError, OLESTR("x\n"));
        KorCmnTracer::Stop();
    }
    // A name in the folder that makes a path of so many code units.
    CWideString Padded(std::size_t cchPath) const
    {
        auto path = m_folder.PlatformName(OLESTR("p"));
        return path.append(cchPath - path.size(), WCHAR{'p'});
    }

    tests::CTestFolder m_folder;
    WCHAR m_szBefore[MAX_PATH] = {};
    WCHAR m_szFolder[MAX_PATH] = {}; // with backslashes, whatever the machine's own separator is
};

TEST_F(LogStart, SwitchIsWhateverNumberFitsFourBytes)
{
    const struct
    {
        DWORD dwType;
        std::vector<BYTE> bytes;
        bool bOn;
    } rows[] = {
        {REG_DWORD, {0, 0, 0, 0}, false},
        {REG_DWORD, {0, 0, 0, 0x80}, true},
        {REG_BINARY, {1}, true},
        {REG_BINARY, {1, 0, 0, 0, 0}, false},
    };
    for (const auto& row : rows)
    {
        WriteLog({}); // leaves it off, as a value that cannot be read does
        const auto enable = Enable(row.dwType, row.bytes);
        WriteLog(OLESTR("log.txt"));
        EXPECT_EQ(row.bOn, std::filesystem::remove("log.txt")) << testing::PrintToString(row.bytes);
    }
}

TEST_F(LogStart, LogPathIsWhateverFits)
{
    const struct
    {
        CWideString path;
        DWORD dwType;
        std::size_t cchTerminator;
        const char* szFile; // "" for none
    } rows[] = {
        {OLESTR(""), REG_SZ, 1, "given.txt"},
        {OLESTR("p"), REG_SZ, 1, "p"},
        {OLESTR("raw.txt"), REG_SZ, 0, "raw.txt"},
        {m_folder.PlatformName(OLESTR("one\\two/log.txt")), REG_SZ, 1, "one/two/log.txt"},
        {OLESTR("a\\log.txt"), REG_SZ, 1, "a/log.txt"},
        {m_folder.PlatformName() + OLESTR("\\"), REG_SZ, 1, ""},
        {Padded(260), REG_SZ, 1, ""}, // fits, though not every system opens it
        {Padded(261), REG_SZ, 1, "given.txt"},
        {Padded(261), REG_SZ, 0, "given.txt"},
    };
    const auto enable = Enable();
    for (const auto& row : rows)
    {
        const auto path = Value(OLESTR("LogPath"), row.dwType,
                                CRegistryValue::BytesOf(row.path.c_str(), (row.path.size() + row.cchTerminator) * sizeof(WCHAR)));
        std::filesystem::remove("given.txt");
        WriteLog(OLESTR("given.txt"));
        for (const char* szFile : {row.szFile, "given.txt"})
            EXPECT_EQ(szFile == std::string(row.szFile) && *szFile ? cbLine : 0, ReadBytes(szFile).size())
                << tests::Narrow(row.path);
    }
    EXPECT_FALSE(std::filesystem::exists("o")) << "of \"one\"";
    // Shortened, it would name some other file; the one of the start before is not taken either.
    std::filesystem::remove("given.txt");
    std::filesystem::remove(Padded(260));
    WriteLog(OLESTR("given.txt"));
    WriteLog(Padded(261));
    EXPECT_EQ(cbLine, ReadBytes("given.txt").size());
    EXPECT_FALSE(std::filesystem::exists(Padded(260)));
    // A name without a folder has none that could be missing.
    const platform::testing::CFailNth fault("_wfopen", 1, ERROR_PATH_NOT_FOUND);
    WriteLog(OLESTR("bare.txt"));
    EXPECT_FALSE(std::filesystem::exists("bare.txt"));
}

TEST_F(LogStart, BackupOfTheLogBefore)
{
    const std::string none = "(none)";
    const struct
    {
        bool bFresh;
        std::string log, last;                 // before
        std::string expectedLog, expectedLast; // after
    } rows[] = {
        {false, "old", "older", "old", "older"},
        {false, none, "older", "", none},
        {true, "old", "older", "", "old"},
        {true, "old", none, "", "old"},
    };
    const auto enable = Enable();
    for (const CWideString& folder : {m_szFolder + CWideString(OLESTR("\\")), CWideString()})
        for (const auto& row : rows)
        {
            for (const auto& [szFile, text] : {std::pair("ihv.txt", row.log), {"lastihv.txt", row.last}})
            {
                std::filesystem::remove(szFile);
                if (text != none)
                    WriteBytes(szFile, text);
            }
            KorCmnTracer::Start((folder + OLESTR("ihv.txt")).c_str(), false, row.bFresh);
            KorCmnTracer::Stop();
            for (const auto& [szFile, text] : {std::pair("ihv.txt", row.expectedLog), {"lastihv.txt", row.expectedLast}})
                EXPECT_EQ(text, std::filesystem::exists(szFile) ? ReadBytes(szFile) : none);
        }
}

TEST_F(LogStart, ModuleHoldsItsOwnFileUntilItIsUnloaded)
{
    const WCHAR* const szLog = OLESTR("c:\\WlanLogs\\KorIHVui.txt");
    const auto remove = [&] { return DeleteFileW(szLog) && RemoveDirectoryW(OLESTR("c:\\WlanLogs")); };
    const auto request = [&]
    {
        const CModuleUnderTest module(CModuleUnderTest::Registration::None);
        CComRef<IUnknown> factory;
        EXPECT_EQ(S_OK, module.GetClassObject(CLSID_ExtUI, IID_IUnknown, factory.PutVoid()));
        EXPECT_FALSE(remove());
    };
    remove();
    request();
    const auto enable = Enable();
    request();
    request();
    {
        const CUniqueFile file(CreateFileW(szLog, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                                           FILE_ATTRIBUTE_NORMAL, nullptr));
        EXPECT_EQ(2 * (cbLine + sizeof("GetClassObject") - sizeof("x")), GetFileSize(file.Get(), nullptr));
    }
    EXPECT_TRUE(remove());
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
        WriteLog(OLESTR("large.txt"));
        EXPECT_EQ(row.cbLog + (row.bAppends ? cbLine : 0), std::filesystem::file_size("large.txt"));
    }
}
} // namespace
