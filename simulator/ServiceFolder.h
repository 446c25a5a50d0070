// The folder that holds the service's state, and the right to use it for one operation.
#pragma once

#include "simulator/ServiceFiles.h"

#include <filesystem>
#include <memory>
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

// Held by every operation on profiles: one thread of this process at a time, and among processes either one writer or
// many readers. Readers take part because an open file cannot be replaced on the platform. A folder in which the lock
// file cannot be made can only be read, and is then read without it.
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
    std::unique_ptr<CFile> m_lockFile;
};
} // namespace simulator
