// The module's trace log, switched on for one scope and read back.
#pragma once

#include "tests/support/RegistryValue.h"
#include "tests/support/TestFolder.h"

#include <optional>
#include <string>
#include <vector>

namespace tests
{
inline constexpr const WCHAR* szTraceKey = OLESTR("Software\\Korvane\\Wavedesk\\Debug");
inline constexpr const WCHAR* szTraceLevelsKey = OLESTR("Software\\Korvane\\Wavedesk\\Debug\\TraceLevels");

// Must be made before the module is loaded: the switches are read once.
class CTraceLog
{
public:
    CTraceLog()
        : m_enable(HKEY_LOCAL_MACHINE, szTraceKey, OLESTR("EnableTraceLog"), 1),
          m_path(HKEY_LOCAL_MACHINE, szTraceKey, OLESTR("LogPath"), m_folder.PlatformName(OLESTR("trace.txt")))
    {
    }

    std::filesystem::path File() const
    {
        return m_folder.Path() / "trace.txt";
    }
    std::string Bytes() const
    {
        return ReadBytes(File());
    }
    // The messages since the last call, each as it was traced, without time, thread and module word and with its own
    // line feeds. Lines of another form are handed out as they are, so that a comparison shows them.
    std::vector<std::string> Take();

    // The file as another program opens it, which holds this lock in it; none when the lock is somebody else's.
    CUniqueFile HeldByAnother(DWORD dwOffset, DWORD cbLock) const;

private:
    CTestFolder m_folder;
    CRegistryValue m_enable;
    CRegistryValue m_path;
    std::size_t m_cbTaken = 0;
};
} // namespace tests
