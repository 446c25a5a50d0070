// The trace log, on, without echo: one line against the bare calls on the same file, and many writers against one.
#include "tests/benchmarks/Bare.h"
#include "tests/benchmarks/Rows.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestProgram.h"
#include "trace/IhvuiTrace.h"
#include "trace/KorCmnTracer.h"
#include "values/RegistrySwitches.h"

#include <algorithm>
#include <list>
#include <memory>
#include <thread>

namespace bench
{
namespace
{
constexpr const WCHAR* szTraced = OLESTR("<CCX><openNetwork/></CCX>");

void WriteLines(std::size_t nLines)
{
    for (std::size_t i = 0; i < nLines; ++i)
        IhvuiTrace(traceLevelInfo, OLESTR("bstrIHVProfile: %s\n"), szTraced);
}

// A log of this process's own, switched on as on any machine.
struct Log
{
    Log()
    {
        const auto& enable = RegistrySwitches::enableTraceLog;
        const DWORD dwOn = 1;
        RegCreateKeyExW(HKEY_LOCAL_MACHINE, enable.szSubKey, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS, nullptr,
                        key.Put(), nullptr);
        RegSetValueExW(key.Get(), enable.szValueName, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&dwOn), sizeof(dwOn));
        KorCmnTracer::Start(PlatformFile().c_str(), false, false);
    }
    ~Log()
    {
        KorCmnTracer::Stop();
        RegDeleteValueW(key.Get(), RegistrySwitches::enableTraceLog.szValueName);
    }
    Log(const Log&) = delete;
    Log& operator=(const Log&) = delete;

    std::filesystem::path File() const
    {
        return folder.Path() / "log.txt";
    }
    CWideString PlatformFile() const
    {
        return tests::PlatformNameOf(File());
    }
    void Check() const
    {
        const auto text = tests::ReadBytes(File());
        Require(nExpected == static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')), "lines of the log are lost");
    }

    tests::CTestFolder folder;
    CUniqueKey key;
    std::size_t nExpected = 0;
};

// The lock, the size, the seek, one write and the unlock, as each line must have them.
void AppendBare(HANDLE hFile, std::string_view line)
{
    OVERLAPPED region = {};
    LockFileEx(hFile, LOCKFILE_EXCLUSIVE_LOCK, 0, 2, 0, &region);
    DWORD dwHigh = 0;
    const DWORD dwLow = GetFileSize(hFile, &dwHigh);
    LONG lHigh = static_cast<LONG>(dwHigh);
    SetFilePointer(hFile, static_cast<LONG>(dwLow), &lHigh, FILE_BEGIN);
    DWORD cbWritten = 0;
    WriteFile(hFile, line.data(), static_cast<DWORD>(line.size()), &cbWritten, nullptr);
    UnlockFileEx(hFile, 0, 2, 0, &region);
}

// The sides write the same number of lines; the log must then hold them all.
template <class Module, class Bare>
Sides LineSides(const std::shared_ptr<Log>& pLog, std::size_t nLines, Module module, Bare bare)
{
    const auto counted = [=](auto write)
    {
        return Timed(
            [=]
            {
                write();
                pLog->nExpected += nLines;
            });
    };
    return {counted(module), counted(bare), [=] { pLog->Check(); }};
}

// Against the calls on the file alone, or against all that a line cannot do without: its form, the process's mutex, its bytes.
Sides OneWriter(bool bAllCalls)
{
    const auto pLog = std::make_shared<Log>();
    WriteLines(1);
    pLog->nExpected = 1;
    const auto line = tests::ReadBytes(pLog->File());
    const auto pFile =
        std::make_shared<CUniqueFile>(CreateFileW(pLog->PlatformFile().c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                                  nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    const auto pMutex = std::make_shared<CUniqueMutex>(CreateMutexW(nullptr, FALSE, nullptr));
    const auto writeBare = [=]
    {
        if (!bAllCalls)
            return AppendBare(pFile->Get(), line);
        const auto szLine = FormLine(OLESTR("bstrIHVProfile: %s\n"), szTraced);
        WaitForSingleObject(pMutex->Get(), INFINITE);
        char bytes[2000];
        const std::size_t cbLine = wcstombs(bytes, szLine.get(), sizeof(bytes));
        bytes[cbLine - 1] = '\r';
        bytes[cbLine] = '\n';
        AppendBare(pFile->Get(), {bytes, cbLine + 1});
        ReleaseMutex(pMutex->Get());
    };
    // Several in a turn: one takes not much longer than looking at the clock.
    constexpr std::size_t nLines = 16;
    const auto bare = [=]
    {
        for (std::size_t i = 0; i < nLines; ++i)
            writeBare();
    };
    return LineSides(
        pLog, nLines, [] { WriteLines(nLines); }, bare);
}

Sides Threads()
{
    constexpr std::size_t nLines = 4000;
    const auto write = [](std::size_t nThreads)
    {
        std::list<std::jthread> threads;
        for (std::size_t i = 0; i < nThreads; ++i)
            threads.emplace_back(WriteLines, nLines / nThreads);
    };
    return LineSides(
        std::make_shared<Log>(), nLines, [=] { write(8); }, [=] { write(1); });
}

// With their starts and ends: so many lines that these hardly count.
Sides Processes()
{
    constexpr std::size_t nLines = 20'000;
    const auto pLog = std::make_shared<Log>();
    const auto write = [=](std::size_t nProcesses)
    {
        std::list<tests::CStartedProgram> writers;
        for (std::size_t i = 0; i < nProcesses; ++i)
            writers.emplace_back(tests::ProgramFile(), std::vector<std::string>{szWriterOption, pLog->File().string(),
                                                                                std::to_string(nLines / nProcesses)});
        for (auto& writer : writers)
            Require(writer.ExitCode() == 0, "a process that writes lines failed");
    };
    return LineSides(
        pLog, nLines, [=] { write(4); }, [=] { write(1); });
}
} // namespace

int WriteAsChild(char** pszArguments)
{
    KorCmnTracer::Start(tests::Widen(pszArguments[0]).c_str(), false, false);
    WriteLines(std::stoul(pszArguments[1]));
    KorCmnTracer::Stop();
    return 0;
}

std::vector<Row> LogRows()
{
    // At least half as many lines a second as one writer.
    constexpr double dTwiceTheTime = 2.0;
    return {{"log line / calls on the file", 1.15, false, [] { return OneWriter(false); }},
            {"log line / all its calls", 1.15, false, [] { return OneWriter(true); }},
            {"log, 8 threads / 1", dTwiceTheTime, false, Threads},
            {"log, 4 processes / 1", dTwiceTheTime, false, Processes}};
}
} // namespace bench
