// A simulated WLAN service for one scope: a folder of its own, adapters and profiles as a case wants them. Must be made
// before the module is loaded, so that the module finds it in place of the system's.
#pragma once

#include "simulator/SimulatedWlan.h"
#include "tests/support/EnvironmentVariable.h"
#include "tests/support/TestFolder.h"
#include "values/Unique.h"

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace tests
{
inline constexpr GUID adapterGuid = {0x5b7d2c10, 0x8e46, 0x4f3a, {0x9d, 0x21, 0xc0, 0x7a, 0x64, 0xe1, 0xf3, 0xb8}};
inline constexpr GUID otherAdapterGuid = {0x91e4a6f2, 0x30bc, 0x4d58, {0xa7, 0xe9, 0x5c, 0x8f, 0x1b, 0x2d, 0x60, 0x73}};

class CSimulatedService
{
public:
    // szAdapters: the adapters.json of the machine.
    explicit CSimulatedService(std::string_view adapters);
    ~CSimulatedService();
    CSimulatedService(const CSimulatedService&) = delete;
    CSimulatedService& operator=(const CSimulatedService&) = delete;

    // Exchanges the machine's adapters.
    void SetAdapters(std::string_view adapters) const;

    // Puts a profile file there, as a person would.
    void AddProfile(const GUID& adapter, std::string_view fileName, std::string_view xml) const;

    // What the service now has under the name; "" when it has none.
    std::string Profile(const GUID& adapter, CWideView name) const;

    // The calls since the service was made, one line each.
    std::vector<std::string> Calls() const;

    const std::filesystem::path& Folder() const
    {
        return m_folder.Path();
    }
    // See SimulatedWlanFailNext.
    static void FailNext(const char* szFunction, unsigned uFirst, unsigned uCount, DWORD dwError)
    {
        if (!SimulatedWlanFailNext(szFunction, uFirst, uCount, dwError))
            throw std::invalid_argument(szFunction);
    }

private:
    CTestFolder m_folder;
    CEnvironmentVariable m_folderName{"WLAN_SERVICE_DIR", m_folder.Path()};
    CEnvironmentVariable m_logName{"WLAN_SERVICE_LOG", m_folder.Path() / "calls.log"};
    CUniqueLibrary m_library;
};

// Machines that the cases use: adapters.json texts.
inline constexpr std::string_view makersMachine = R"([{"guid": "5b7d2c10-8e46-4f3a-9d21-c07a64e1f3b8",
    "description": "Adapter", "state": "connected", "phyTypes": [4, 5, 6, 7], "vendor": "Korvane Fenn", "rapido": 1}])";
} // namespace tests
