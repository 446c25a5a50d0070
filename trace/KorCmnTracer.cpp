#include "trace/KorCmnTracer.h"

#include "trace/LogLine.h"
#include "trace/TracePaths.h"
#include "values/RegistrySwitches.h"
#include "values/RegistryValues.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <optional>

#include <io.h>

WCHAR KorCmnTracer::s_szLogPath[maxPathLength + 1] = {};
bool KorCmnTracer::s_bConsoleEcho = false;
std::atomic<bool> KorCmnTracer::s_bEnabled = false;
LONG KorCmnTracer::s_lModuleLevels[moduleCount] = {defaultLevel, defaultLevel, defaultLevel, defaultLevel, defaultLevel};
CUniqueFile KorCmnTracer::s_logFile;
CUniqueMutex KorCmnTracer::s_lock;

namespace
{
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
    explicit CFileLock(HANDLE hFile)
        : m_hFile(hFile), m_bHeld(LockFileEx(hFile, LOCKFILE_EXCLUSIVE_LOCK, 0, cbLock, 0, &m_region) != FALSE)
    {
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
    bool m_bHeld;
};

struct FilePosition
{
    DWORD dwLow;
    DWORD dwHigh;
};

// Nothing when the size cannot be read. The log grows without bound, so the high half counts; only with one can the error
// value be a size, and then the platform says that there was no error.
std::optional<FilePosition> FindEnd(HANDLE hFile)
{
    FilePosition end = {};
    end.dwLow = GetFileSize(hFile, &end.dwHigh);
    if (end.dwLow == INVALID_FILE_SIZE && (end.dwHigh == 0 || GetLastError() != NO_ERROR))
        return std::nullopt;
    return end;
}

bool MoveTo(HANDLE hFile, const FilePosition& position)
{
    LONG lHigh = static_cast<LONG>(position.dwHigh);
    return SetFilePointer(hFile, static_cast<LONG>(position.dwLow), &lHigh, FILE_BEGIN) != INVALID_SET_FILE_POINTER ||
           GetLastError() == NO_ERROR;
}

struct CStreamCloser
{
    using Handle = std::FILE*;
    static std::FILE* Empty()
    {
        return nullptr;
    }
    static void Close(std::FILE* pFile)
    {
        std::fclose(pFile);
    }
};

// Creates the file empty, or empties it; false with the system's last error code otherwise.
bool CreateEmptyFile(const WCHAR* szPath)
{
    const CUnique<CStreamCloser> created(_wfopen(szPath, OLESTR("w+")));
    return static_cast<bool>(created);
}

bool CreateFolderOf(const WCHAR* szPath)
{
    const int nSeparator = FindLastPathSeparator(szPath, cchPath);
    if (nSeparator == 0)
        return false;
    // No heap: a log that has no folder yet must not depend on there being memory.
    WCHAR szFolder[cchPath] = {};
    std::copy_n(szPath, nSeparator + 1, szFolder);
    return CreateDirectoryPath(szFolder);
}

// Moves the log out of the way of a new one. Neither result matters, nor whether there is memory for the name: without a
// log there is nothing to keep, and a log that cannot be moved is emptied.
void KeepAsLast(const WCHAR* szPath)
{
    WCHAR* szBackupText = nullptr;
    InsertText(szPath, ReverseFind(szPath, OLESTR('\\')) + 1, OLESTR("last"), &szBackupText);
    const std::unique_ptr<WCHAR[]> szBackup(szBackupText);
    if (!szBackup)
        return;
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
    const bool bWanted = ReadSwitches(szLogPath);
    // Off until it is open, also when memory runs out on the way.
    s_bEnabled = false;
    s_bEnabled = bWanted && OpenLog(bFreshFile);
    if (!s_bEnabled)
        return;
    if (!s_lock)
        s_lock.Reset(CreateMutexW(nullptr, FALSE, nullptr));
}

bool KorCmnTracer::ReadSwitches(const WCHAR* szLogPath)
{
    const auto& logPath = RegistrySwitches::logPath;
    WCHAR szConfiguredPath[maxPathLength + 1] = {};
    RegReadString(HKEY_LOCAL_MACHINE, logPath.szSubKey, logPath.szValueName, szConfiguredPath,
                  static_cast<DWORD>(std::size(szConfiguredPath)));
    const CWideView path(szConfiguredPath[0] != WCHAR{} ? szConfiguredPath : szLogPath);
    const bool bPathFits = path.size() <= maxPathLength;
    if (bPathFits)
        *std::copy(path.begin(), path.end(), s_szLogPath) = WCHAR{};

    LONG* plLevel = s_lModuleLevels;
    for (const WCHAR* szModuleWord : moduleWords)
    {
        DWORD dwLevel = static_cast<DWORD>(defaultLevel);
        RegReadDword(HKEY_LOCAL_MACHINE, RegistrySwitches::szTraceLevelsKey, szModuleWord, &dwLevel);
        *plLevel++ = static_cast<LONG>(dwLevel);
    }

    const auto& enable = RegistrySwitches::enableTraceLog;
    DWORD dwEnable = s_bEnabled;
    RegReadDword(HKEY_LOCAL_MACHINE, enable.szSubKey, enable.szValueName, &dwEnable);
    return dwEnable != 0 && bPathFits;
}

bool KorCmnTracer::OpenLog(bool bFreshFile)
{
    if (bFreshFile || !Exists(s_szLogPath))
        BeginNewLog(s_szLogPath);
    s_logFile.Reset(CreateFileW(s_szLogPath, GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                                FILE_ATTRIBUTE_NORMAL, nullptr));
    return static_cast<bool>(s_logFile);
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

    CLogLine line(moduleWords[module], szText);
    if (!line)
        return;
    if (lLevel <= s_lModuleLevels[module] && s_bEnabled)
        AppendLine(line.Text());
    if (s_bConsoleEcho)
    {
        line.ReplaceUnrepresentable();
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

    // With its end in one write: whoever dies in it leaves no line for the next one to continue.
    const CNarrowLine narrow(szLine);
    DWORD cbWritten{};
    if (!narrow.Text().empty())
        WriteFile(s_logFile.Get(), narrow.Text().data(), static_cast<DWORD>(narrow.Text().size()), &cbWritten, nullptr);
}
