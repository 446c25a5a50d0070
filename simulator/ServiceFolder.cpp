#include "simulator/ServiceFolder.h"

#include "simulator/ServiceError.h"
#include "values/Utf8Text.h"

#include <objbase.h>

namespace simulator
{
namespace
{
namespace fs = std::filesystem;

std::mutex processMutex;
} // namespace

std::optional<fs::path> PathFromEnvironment(LPCWSTR szName)
{
    CWideString value(MAX_PATH, WCHAR{});
    for (;;)
    {
        const DWORD cch = GetEnvironmentVariableW(szName, value.data(), static_cast<DWORD>(value.size()));
        if (cch == 0)
            return std::nullopt;
        const bool bComplete = cch < value.size();
        value.resize(cch);
        if (bComplete)
            return fs::path(value);
    }
}

fs::path ServiceFolder()
{
    const auto folder = PathFromEnvironment(OLESTR("WLAN_SERVICE_DIR"));
    if (!folder)
        throw CServiceError(ERROR_SERVICE_NOT_ACTIVE, "WLAN_SERVICE_DIR is not set");
    if (!IsFile(AdaptersFile(*folder)))
        throw CServiceError(ERROR_SERVICE_NOT_ACTIVE, "WLAN_SERVICE_DIR names no folder with an adapters.json");
    return *folder;
}

fs::path AdaptersFile(const fs::path& serviceFolder)
{
    return serviceFolder / "adapters.json";
}

bool IsFile(const fs::path& path)
{
    std::error_code ignored;
    return fs::is_regular_file(path, ignored);
}

CServiceLock::CServiceLock(const fs::path& serviceFolder, Access access) : m_processLock(processMutex)
{
    try
    {
        m_lockFile.emplace(serviceFolder / "service.lock", GENERIC_READ | GENERIC_WRITE, OPEN_ALWAYS);
        m_lockFile->Lock(true);
    }
    catch (const CFileError&)
    {
        if (access == Access::Write)
            throw;
    }
}
} // namespace simulator
