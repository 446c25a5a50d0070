#include "tests/support/SimulatedService.h"

#include "host/WlanService.h"
#include "tests/support/ModuleUnderTest.h"

#include <gtest/gtest.h>

#include <sstream>

namespace tests
{
CSimulatedService::CSimulatedService(std::string_view adapters)
{
    SetAdapters(adapters);
    m_library.Reset(LoadLibraryW(PlatformNameOf(BuildFolder() / "simulated" / "wlanapi.dll").c_str()));
    SimulatedWlanClearFaults();
}

CSimulatedService::~CSimulatedService()
{
    SimulatedWlanClearFaults();
}

void CSimulatedService::SetAdapters(std::string_view adapters) const
{
    WriteBytes(m_folder.Path() / "adapters.json", adapters);
}

void CSimulatedService::AddProfile(const GUID& adapter, std::string_view fileName, std::string_view xml) const
{
    const auto folder = m_folder.Path() / "profiles" / ::TextOf(adapter);
    std::filesystem::create_directories(folder);
    WriteBytes(folder / fileName, xml);
}

std::string CSimulatedService::Profile(const GUID& adapter, CWideView name) const
{
    const auto profile = CWlanService({m_folder.Path().string(), "", ""}).Profile(adapter, CWideString(name));
    return profile ? Narrow(profile->strText) : "";
}

std::vector<std::string> CSimulatedService::Calls() const
{
    std::istringstream log(ReadBytes(m_folder.Path() / "calls.log"));
    std::vector<std::string> lines;
    for (std::string line; std::getline(log, line);)
        lines.push_back(line.ends_with('\r') ? line.substr(0, line.size() - 1) : line);
    return lines;
}
} // namespace tests
