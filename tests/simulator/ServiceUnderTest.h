// The simulated service as its clients see it: a module loaded by its path, functions found by their names, a folder.
#pragma once

#include "simulator/SimulatedWlan.h"
#include "simulator/Text.h"

#include <windows.h>

#include <wlanapi.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace service_test
{
using simulator::WideText;
using simulator::WideView;

// The service module's functions by the names that it exports.
struct Functions
{
    Functions();
    ~Functions();
    Functions(const Functions&) = delete;
    Functions& operator=(const Functions&) = delete;

    HMODULE hModule;
    decltype(&WlanOpenHandle) Open;
    decltype(&WlanCloseHandle) Close;
    decltype(&WlanEnumInterfaces) EnumInterfaces;
    decltype(&WlanGetInterfaceCapability) GetCapability;
    decltype(&WlanGetProfile) GetProfile;
    decltype(&WlanGetProfileList) GetProfileList;
    decltype(&WlanSetProfile) SetProfile;
    decltype(&WlanDeleteProfile) DeleteProfile;
    decltype(&WlanIhvControl) IhvControl;
    decltype(&WlanReasonCodeToString) ReasonCodeToString;
    decltype(&WlanFreeMemory) FreeMemory;
    decltype(&SimulatedWlanLiveHandles) LiveHandles;
    decltype(&SimulatedWlanLiveBlocks) LiveBlocks;
    decltype(&SimulatedWlanFailNext) FailNext;
    decltype(&SimulatedWlanClearFaults) ClearFaults;
    decltype(&SimulatedWlanCalls) Calls;
};

inline constexpr GUID firstGuid = {0x11112222, 0x3333, 0x4444, {0x55, 0x55, 0x66, 0x66, 0x77, 0x77, 0x88, 0x88}};
inline constexpr GUID secondGuid = {0xaaaabbbb, 0xcccc, 0xdddd, {0xee, 0xee, 0xff, 0xff, 0x00, 0x00, 0x11, 0x11}};
inline constexpr GUID unknownGuid = {1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};

WideText Profile(WideView name, WideView more = {});

// A service folder of its own for each test, an open client handle, and the check that the test leaves nothing behind.
class ServiceTest : public testing::Test
{
protected:
    static void SetUpTestSuite();
    static void TearDownTestSuite();
    void SetUp() override;
    void TearDown() override;

    void WriteAdapters(const std::string& json) const;
    std::filesystem::path ProfileFolder(const char* szGuid = "11112222-3333-4444-5555-666677778888") const;
    void Drop(const std::string& fileName, std::string_view bytes) const;
    std::vector<std::string> FilesOfProfiles() const;

    // The result of the call; texts and lists go back to the service at once.
    DWORD Set(const WideText& xml, bool bOverwrite = true, DWORD dwFlags = 0);
    DWORD Get(const WCHAR* szName, WideText& xml);
    DWORD Delete(const WCHAR* szName);
    std::vector<WideText> Names();

    static Functions* wlan;
    std::filesystem::path folder;
    HANDLE hClient = nullptr;
    DWORD dwReason = 0xDEAD;
};

std::string Slurp(const std::filesystem::path& file);
void Spill(const std::filesystem::path& file, std::string_view bytes);
} // namespace service_test
