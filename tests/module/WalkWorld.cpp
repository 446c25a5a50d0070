#include "tests/module/WalkWorld.h"

#include "tests/support/Machine.h"

#include <chrono>
#include <cstdio>
#include <future>

namespace tests::walk
{
namespace
{
constexpr std::string_view machine = R"([{"guid": "5b7d2c10-8e46-4f3a-9d21-c07a64e1f3b8", "description": "Adapter",
    "state": "connected", "phyTypes": [4, 5, 6, 7], "vendor": "Korvane Fenn", "rapido": 1},
    {"guid": "91e4a6f2-30bc-4d58-a7e9-5c8f1b2d6073", "description": "Other", "state": "connected", "phyTypes": []}])";

constexpr auto patience = std::chrono::seconds(20);

void CallWith(const char* szExport)
{
    const CModuleUnderTest module(CModuleUnderTest::Registration::None);
    EXPECT_EQ(S_OK, module.Export<HRESULT WINAPI()>(szExport)());
}
} // namespace

CWorld::CWorld() : service(machine)
{
    // As every host has COM ready: a module that is unloaded by COM while it alone keeps COM ready takes COM's ground away.
    CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    // Not by the module that is walked: registering takes longer than most operations.
    CallWith("DllRegisterServer");
}

CWorld::~CWorld()
{
    Unload();
    CallWith("DllUnregisterServer");
    CoUninitialize();
}

void CWorld::Load()
{
    m_module.emplace(CModuleUnderTest::Registration::None);
}

void CWorld::Unload()
{
    m_module.reset();
    // COM holds on to what it activated.
    CoFreeUnusedLibrariesEx(0, 0);
}

Alive CWorld::CountAlive() const
{
    return {LiveObjects(), SimulatedWlanLiveBlocks(), SimulatedWlanLiveHandles()};
}

bool CWorld::IsLineWritten()
{
    std::error_code missing;
    const auto cbBefore = std::filesystem::file_size(log.File(), missing);
    if (missing)
        return false;
    auto request = std::async(std::launch::async,
                              [this]
                              {
                                  CComRef<IUnknown> factory;
                                  EXPECT_EQ(S_OK, m_module->GetClassObject(CLSID_ExtUI, IID_IUnknown, factory.PutVoid()));
                              });
    if (request.wait_for(patience) != std::future_status::ready)
    {
        std::fprintf(stderr, "a lock is left held\n");
        std::abort();
    }
    static constexpr std::size_t cbLine = sizeof("00:00:00.000 [       0]   Ihvui: GetClassObject\r\n") - 1;
    return std::filesystem::file_size(log.File(), missing) == cbBefore + cbLine;
}

bool CWorld::IsLogFree() const
{
    return static_cast<bool>(log.HeldByAnother(0, 2));
}
} // namespace tests::walk
