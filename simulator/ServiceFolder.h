// The folder that holds the service's state, and the right to use it for one operation.
#pragma once

#include "simulator/files/File.h"

#include <filesystem>
#include <mutex>
#include <optional>

namespace simulator
{
// The value of an environment variable as a path; nothing when it is missing or empty.
std::optional<std::filesystem::path> PathFromEnvironment(LPCWSTR szName);

// The folder named by WLAN_SERVICE_DIR. Throws ERROR_SERVICE_NOT_ACTIVE when there is no such folder with a list of
// adapters. Read anew by every call: a person may exchange the machine while a client runs.
std::filesystem::path ServiceFolder();

std::filesystem::path AdaptersFile(const std::filesystem::path& serviceFolder);

bool IsFile(const std::filesystem::path& path);

// Held by every operation on profiles: one at a time, among the threads of this process and among processes. Readers take
// part because an open file cannot be replaced on the platform. A folder in which the lock file cannot be made can only be
// read, and is then read without it.
class CServiceLock
{
public:
    enum class Access
    {
        Read,
        Write,
    };
    CServiceLock(const std::filesystem::path& serviceFolder, Access access);

private:
    std::lock_guard<std::mutex> m_processLock;
    std::optional<CFile> m_lockFile;
};
} // namespace simulator
