// Every value of the registry that the module looks at, all of them below HKEY_LOCAL_MACHINE and none of them ever written
// by it. The levels of the trace log stand in a value for each module word (trace/KorCmnTracer.cpp).
#pragma once

#include <windows.h>

struct RegistrySwitch
{
    const WCHAR* szSubKey;
    const WCHAR* szValueName;
};

namespace RegistrySwitches
{
inline constexpr const WCHAR* szTraceLevelsKey = OLESTR("Software\\Korvane\\Wavedesk\\Debug\\TraceLevels");

// Not 0: lines are written to the log file.
inline constexpr RegistrySwitch enableTraceLog = {OLESTR("Software\\Korvane\\Wavedesk\\Debug"), OLESTR("EnableTraceLog")};
// Text: the log file's path in place of the usual one.
inline constexpr RegistrySwitch logPath = {OLESTR("Software\\Korvane\\Wavedesk\\Debug"), OLESTR("LogPath")};
// Not 0: the settings dialog does not show Radio Measurement.
inline constexpr RegistrySwitch noCcx = {OLESTR("SOFTWARE\\Korvane\\Fenn"), OLESTR("NoCCX")};
} // namespace RegistrySwitches
