// The trace log: one append-only text file, shared by the threads of this process and by other processes.
//
// It is switched on and placed through the registry, below HKEY_LOCAL_MACHINE\Software\Korvane\Wavedesk\Debug, read
// once by Start. Whatever fails here is never reported to the caller: the log goes quiet instead.
#pragma once

#include "values/Unique.h"
#include "values/WideText.h"

#include <atomic>

class KorCmnTracer
{
public:
    // The writers that share the log file's form. This module writes as Ihvui.
    enum ModuleIndex
    {
        Any,
        Ihvs,
        Ihvui,
        CCXLib,
        IhvsMini,
        moduleCount,
    };

    // Limits, in UTF-16 code units without terminator.
    static constexpr std::size_t maxPathLength = MAX_PATH;
    static constexpr std::size_t maxLineLength = 2000;

    virtual ~KorCmnTracer() = default;

    // Reads the switches and opens the log. szLogPath is used unless the registry names another path; a path beyond
    // maxPathLength leaves the log off, because a shortened one would name some other file. bFreshFile begins a new log
    // and keeps the one before it under its name with "last" in front. Called once, before any other thread traces.
    static void Start(const WCHAR* szLogPath, bool bConsoleEcho, bool bFreshFile);

    // Closes what Start opened. Called once, after every other thread has stopped tracing.
    static void Stop();

    // Writes one message of the module at the level. Any thread.
    static void Trace(LONG lLevel, ModuleIndex module, const WCHAR* szText);

    // Forms one line of the message, appends it to the file when the module's level lets it through, and echoes it.
    static void WriteLine(LONG lLevel, ModuleIndex module, const WCHAR* szText);

private:
    // Whether the log is to be on.
    static bool ReadSwitches(const WCHAR* szLogPath);
    // Whether the log file is open.
    static bool OpenLog(bool bFreshFile);
    static void AppendLine(const WCHAR* szLine);

    static constexpr LONG defaultLevel = 2;

    static WCHAR s_szLogPath[maxPathLength + 1];
    static bool s_bConsoleEcho;
    // Cleared by whichever writer meets a failure, and looked at outside the lock.
    static std::atomic<bool> s_bEnabled;
    static LONG s_lModuleLevels[moduleCount];
    static CUniqueFile s_logFile;
    static CUniqueMutex s_lock;
};
