#include "tests/support/SimulatedService.h"

#include "host/Library.h"
#include "tests/support/ModuleUnderTest.h"

#include <wlanapi.h>

#include <sstream>

namespace tests
{
namespace
{
std::string GuidText(const GUID& guid)
{
    char szText[64];
    std::snprintf(szText, sizeof(szText), "%08x-%04x-%04x-%02x%02x-%02x%02x%02x%02x%02x%02x", static_cast<unsigned>(guid.Data1),
                  guid.Data2, guid.Data3, guid.Data4[0], guid.Data4[1], guid.Data4[2], guid.Data4[3], guid.Data4[4],
                  guid.Data4[5], guid.Data4[6], guid.Data4[7]);
    return szText;
}
} // namespace

CSimulatedService::CSimulatedService(std::string_view adapters)
{
    SetAdapters(adapters);
    SetEnvironmentVariableW(OLESTR("WLAN_SERVICE_DIR"), m_folder.PlatformName().c_str());
    SetEnvironmentVariableW(OLESTR("WLAN_SERVICE_LOG"), m_folder.PlatformName(OLESTR("calls.log")).c_str());
    m_hModule = LoadLibraryW(PlatformNameOf(BuildFolder() / "simulated" / "wlanapi.dll").c_str());
    EXPECT_NE(nullptr, m_hModule);
    ClearFaults();
}

CSimulatedService::~CSimulatedService()
{
    ClearFaults();
    SetEnvironmentVariableW(OLESTR("WLAN_SERVICE_DIR"), nullptr);
    SetEnvironmentVariableW(OLESTR("WLAN_SERVICE_LOG"), nullptr);
    FreeLibrary(m_hModule);
}

void CSimulatedService::SetAdapters(std::string_view adapters) const
{
    WriteBytes(m_folder.Path() / "adapters.json", adapters);
}

void CSimulatedService::AddProfile(const GUID& adapter, std::string_view fileName, std::string_view xml) const
{
    const auto folder = m_folder.Path() / "profiles" / GuidText(adapter);
    std::filesystem::create_directories(folder);
    WriteBytes(folder / fileName, xml);
}

std::string CSimulatedService::Profile(const GUID& adapter, CWideView name) const
{
    HANDLE hClient = nullptr;
    DWORD dwVersion = 0;
    Export<decltype(&WlanOpenHandle)>(m_hModule, "WlanOpenHandle")(2, nullptr, &dwVersion, &hClient);
    LPWSTR szProfile = nullptr;
    const CWideString szName(name);
    Export<decltype(&WlanGetProfile)>(m_hModule, "WlanGetProfile")(hClient, &adapter, szName.c_str(), nullptr, &szProfile,
                                                                   nullptr, nullptr);
    const std::string text = szProfile ? Narrow(szProfile) : "";
    Export<decltype(&WlanFreeMemory)>(m_hModule, "WlanFreeMemory")(szProfile);
    Export<decltype(&WlanCloseHandle)>(m_hModule, "WlanCloseHandle")(hClient, nullptr);
    return text;
}

std::vector<std::string> CSimulatedService::Calls() const
{
    std::istringstream log(ReadBytes(m_folder.Path() / "calls.log"));
    std::vector<std::string> lines;
    for (std::string line; std::getline(log, line);)
        lines.push_back(line.ends_with('\r') ? line.substr(0, line.size() - 1) : line);
    return lines;
}

LONG CSimulatedService::LiveHandles() const
{
    return Export<decltype(&SimulatedWlanLiveHandles)>(m_hModule, "SimulatedWlanLiveHandles")();
}

LONG CSimulatedService::LiveBlocks() const
{
    return Export<decltype(&SimulatedWlanLiveBlocks)>(m_hModule, "SimulatedWlanLiveBlocks")();
}

void CSimulatedService::FailNext(const char* szFunction, unsigned uFirst, unsigned uCount, DWORD dwError) const
{
    EXPECT_TRUE(
        Export<decltype(&SimulatedWlanFailNext)>(m_hModule, "SimulatedWlanFailNext")(szFunction, uFirst, uCount, dwError));
}

void CSimulatedService::ClearFaults() const
{
    Export<decltype(&SimulatedWlanClearFaults)>(m_hModule, "SimulatedWlanClearFaults")();
}

unsigned CSimulatedService::CountCalls(const char* szFunction) const
{
    return Export<decltype(&SimulatedWlanCalls)>(m_hModule, "SimulatedWlanCalls")(szFunction);
}
} // namespace tests
