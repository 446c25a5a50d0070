#include "trace/KorCmnTracer.h"

#include "trace/LogLine.h"
#include "trace/TracePaths.h"
#include "values/RegistryValues.h"

#include <cstdio>
#include <memory>
#include <optional>

#include <io.h>

WCHAR KorCmnTracer::s_szLogPath[maxPathLength + 1] = {};
bool KorCmnTracer::s_bConsoleEcho = false;
std::atomic<bool> KorCmnTracer::s_bEnabled = false;
LONG KorCmnTracer::s_lModuleLevels[moduleCount] = {2, 2, 2, 2, 2};
CUniqueFile KorCmnTracer::s_logFile;
CUniqueMutex KorCmnTracer::s_lock;

namespace
{
constexpr const WCHAR* szProductKey = OLESTR("Software\\Korvane\\Wavedesk");
constexpr std::size_t cchKeyCapacity = 261;
constexpr LONG defaultLevel = 2;

// The word of each module: in its lines, and as the name of the registry value that holds its level.
constexpr const WCHAR* moduleWords[KorCmnTracer::moduleCount] = {
    OLESTR("Any"), OLESTR("Ihvs"), OLESTR("Ihvui"), OLESTR("CCXLib"), OLESTR("IhvsMini"),
};

// Files are locked by two bytes at their beginning: every writer of the log uses the same ones.
constexpr DWORD cbLock = 2;

bool Exists(const WCHAR* szPath)
{
    return _waccess(szPath, 0) == 0;
}

// Holds the process's mutex for one line.
class CMutexTurn
{
public:
    explicit CMutexTurn(HANDLE hMutex) : m_hMutex(hMutex), m_dwWait(WaitForSingleObject(hMutex, INFINITE))
    {
    }
    ~CMutexTurn()
    {
        // A wait that found the mutex abandoned owns it all the same; kept, it would block every later writer.
        if (m_dwWait == WAIT_OBJECT_0 || m_dwWait == WAIT_ABANDONED)
            ReleaseMutex(m_hMutex);
    }
    CMutexTurn(const CMutexTurn&) = delete;
    CMutexTurn& operator=(const CMutexTurn&) = delete;

    bool IsGranted() const
    {
        return m_dwWait == WAIT_OBJECT_0;
    }
    bool IsAbandoned() const
    {
        return m_dwWait == WAIT_ABANDONED;
    }

private:
    HANDLE m_hMutex;
    DWORD m_dwWait;
};

// Holds the file's lock for one line.
class CFileLock
{
public:
    explicit CFileLock(HANDLE hFile) : m_hFile(hFile)
    {
        m_bHeld = LockFileEx(m_hFile, LOCKFILE_EXCLUSIVE_LOCK, 0, cbLock, 0, &m_region) != FALSE;
    }
    ~CFileLock()
    {
        if (m_bHeld)
            UnlockFileEx(m_hFile, 0, cbLock, 0, &m_region);
    }
    CFileLock(const CFileLock&) = delete;
    CFileLock& operator=(const CFileLock&) = delete;

    bool IsHeld() const
    {
        return m_bHeld;
    }

private:
    HANDLE m_hFile;
    OVERLAPPED m_region{};
    bool m_bHeld = false;
};

struct FilePosition
{
    DWORD dwLow;
    DWORD dwHigh;
};

// Nothing when the size cannot be read. The log grows without bound, so the high half counts; only with one can the error
// value be a size.
std::optional<FilePosition> FindEnd(HANDLE hFile)
{
    FilePosition end = {};
    SetLastError(NO_ERROR);
    end.dwLow = GetFileSize(hFile, &end.dwHigh);
    if (end.dwLow == INVALID_FILE_SIZE && (end.dwHigh == 0 || GetLastError() != NO_ERROR))
        return std::nullopt;
    return end;
}

bool MoveTo(HANDLE hFile, const FilePosition& position)
{
    LONG lHigh = static_cast<LONG>(position.dwHigh);
    SetLastError(NO_ERROR);
    return SetFilePointer(hFile, static_cast<LONG>(position.dwLow), &lHigh, FILE_BEGIN) != INVALID_SET_FILE_POINTER ||
           GetLastError() == NO_ERROR;
}

// Creates the file empty, or empties it; false with the system's last error code otherwise.
bool CreateEmptyFile(const WCHAR* szPath)
{
    std::FILE* pFile = _wfopen(szPath, OLESTR("w+"));
    if (!pFile)
        return false;
    std::fclose(pFile);
    return true;
}

bool CreateFolderOf(const WCHAR* szPath)
{
    const int nSeparator = FindLastPathSeparator(szPath, MAX_PATH + 1);
    if (nSeparator <= 0)
        return false;
    return CreateDirectoryPath(CWideString(szPath, static_cast<std::size_t>(nSeparator) + 1).c_str());
}

// Moves the log out of the way of a new one. Neither result matters: without a log there is nothing to keep, and a log
// that cannot be moved is emptied.
void KeepAsLast(const WCHAR* szPath)
{
    WCHAR* szBackupText = nullptr;
    InsertText(szPath, ReverseFind(szPath, OLESTR('\\')) + 1, OLESTR("last"), &szBackupText);
    const std::unique_ptr<WCHAR[]> szBackup(szBackupText);
    DeleteFileW(szBackup.get());
    MoveFileW(szPath, szBackup.get());
}

void BeginNewLog(const WCHAR* szPath)
{
    KeepAsLast(szPath);
    if (!CreateEmptyFile(szPath) && GetLastError() == ERROR_PATH_NOT_FOUND && CreateFolderOf(szPath))
        CreateEmptyFile(szPath);
}
} // namespace

void KorCmnTracer::Start(const WCHAR* szLogPath, bool bConsoleEcho, bool bFreshFile)
{
    s_bConsoleEcho = bConsoleEcho;
    ReadSwitches(szLogPath);
    if (s_bEnabled)
        OpenLog(bFreshFile);
    if (s_bEnabled && !s_lock)
        s_lock.Reset(CreateMutexW(nullptr, FALSE, nullptr));
}

void KorCmnTracer::ReadSwitches(const WCHAR* szLogPath)
{
    WCHAR szDebugKey[cchKeyCapacity] = {};
    WCHAR szLevelsKey[cchKeyCapacity] = {};
    _snwprintf(szDebugKey, cchKeyCapacity - 1, OLESTR("%s\\Debug"), szProductKey);
    _snwprintf(szLevelsKey, cchKeyCapacity - 1, OLESTR("%s\\Debug\\TraceLevels"), szProductKey);

    WCHAR szConfiguredPath[maxPathLength + 1] = {};
    RegReadString(HKEY_LOCAL_MACHINE, szDebugKey, OLESTR("LogPath"), szConfiguredPath, maxPathLength + 1);
    const CWideView path(szConfiguredPath[0] != WCHAR{} ? szConfiguredPath : szLogPath);
    const bool bPathFits = path.size() <= maxPathLength;
    if (bPathFits)
        *std::copy(path.begin(), path.end(), s_szLogPath) = WCHAR{};

    for (int i = 0; i < moduleCount; ++i)
    {
        DWORD dwLevel = static_cast<DWORD>(defaultLevel);
        RegReadDword(HKEY_LOCAL_MACHINE, szLevelsKey, moduleWords[i], &dwLevel);
        s_lModuleLevels[i] = static_cast<LONG>(dwLevel);
    }

    DWORD dwEnable = 0;
    if (RegReadDword(HKEY_LOCAL_MACHINE, szDebugKey, OLESTR("EnableTraceLog"), &dwEnable))
        s_bEnabled = dwEnable != 0 && bPathFits;
}

void KorCmnTracer::OpenLog(bool bFreshFile)
{
    if (bFreshFile || !Exists(s_szLogPath))
        BeginNewLog(s_szLogPath);
    s_logFile.Reset(CreateFileW(s_szLogPath, GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                                FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!s_logFile)
        s_bEnabled = false;
}

void KorCmnTracer::Stop()
{
    s_logFile.Reset();
    s_lock.Reset();
}

void KorCmnTracer::Trace(LONG lLevel, ModuleIndex module, const WCHAR* szText)
{
    WriteLine(lLevel, module, szText);
}

void KorCmnTracer::WriteLine(LONG lLevel, ModuleIndex module, const WCHAR* szText)
{
    if (s_szLogPath[0] == WCHAR{})
        FormDefaultLogPath(s_szLogPath, maxPathLength + 1);

    const CLogLine line(moduleWords[module], szText);
    if (!line)
        return;
    if (lLevel <= s_lModuleLevels[module] && s_bEnabled)
        AppendLine(line.Text());
    if (s_bConsoleEcho)
    {
        // Seen at once, also where standard output is a file or a pipe and the host ends without a farewell.
        _putws(line.Text());
        std::fflush(stdout);
    }
}

void KorCmnTracer::AppendLine(const WCHAR* szLine)
{
    const CMutexTurn turn(s_lock.Get());
    if (turn.IsAbandoned())
        return;
    if (!turn.IsGranted())
    {
        s_bEnabled = false;
        return;
    }
    const CFileLock lock(s_logFile.Get());
    if (!lock.IsHeld())
    {
        s_bEnabled = false;
        return;
    }
    // The end is looked up anew for every line: other processes append to the same file.
    const auto end = FindEnd(s_logFile.Get());
    if (!end)
    {
        s_bEnabled = false;
        return;
    }
    // A line that cannot be put at the end would destroy others.
    if (!MoveTo(s_logFile.Get(), *end))
        return;

    const CNarrowLine narrow(szLine);
    const auto write = [](const char* pText, std::size_t cbText)
    {
        DWORD cbWritten = 0;
        WriteFile(s_logFile.Get(), pText, static_cast<DWORD>(cbText), &cbWritten, nullptr);
    };
    if (!narrow.EndsInLineFeed())
    {
        if (narrow.Length() != 0)
            write(narrow.Text(), narrow.Length());
        return;
    }
    write(narrow.Text(), narrow.Length() - 1);
    write("\r\n", 2);
}
