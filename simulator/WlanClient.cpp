// The exported functions about clients, their memory and the adapters.
#include "simulator/Adapters.h"
#include "simulator/Calls.h"
#include "simulator/Clients.h"
#include "simulator/ServiceFolder.h"

#include <windows.h>

#include <wlanapi.h>

#include <objbase.h>

#include <algorithm>
#include <cstddef>

using namespace simulator;

namespace
{
constexpr DWORD lowestVersion = 1;
constexpr DWORD highestVersion = 2;

// Copies what fits and ends it with a zero; the rest of the buffer stays.
void CopyTruncated(CWideView text, WCHAR* szBuffer, std::size_t cchBuffer)
{
    const std::size_t cch = std::min(text.size(), cchBuffer - 1);
    std::copy_n(text.data(), cch, szBuffer);
    szBuffer[cch] = WCHAR{};
}

} // namespace

DWORD WINAPI WlanOpenHandle(DWORD dwClientVersion, PVOID pReserved, PDWORD pdwNegotiatedVersion, PHANDLE phClientHandle)
{
    return ServiceCall(
        "WlanOpenHandle", [&](CCallLine& line) { line.Number("version", dwClientVersion); },
        [&](CCallLine& line)
        {
            Require(pdwNegotiatedVersion && phClientHandle && !pReserved);
            Require(dwClientVersion >= lowestVersion && dwClientVersion <= highestVersion, ERROR_NOT_SUPPORTED);
            ServiceFolder();
            const HANDLE hClient = OpenClient();
            *pdwNegotiatedVersion = dwClientVersion;
            *phClientHandle = hClient;
            line.Handle(hClient);
        });
}

DWORD WINAPI WlanCloseHandle(HANDLE hClientHandle, PVOID pReserved)
{
    return ServiceCall(
        "WlanCloseHandle", [&](CCallLine& line) { line.Handle(hClientHandle); },
        [&](CCallLine&)
        {
            RequireClient(hClientHandle);
            Require(!pReserved);
            CloseClient(hClientHandle);
        });
}

DWORD WINAPI WlanEnumInterfaces(HANDLE hClientHandle, PVOID pReserved, PWLAN_INTERFACE_INFO_LIST* ppInterfaceList)
{
    return ServiceCall(
        "WlanEnumInterfaces", [&](CCallLine& line) { line.Handle(hClientHandle); },
        [&](CCallLine& line)
        {
            RequireClient(hClientHandle);
            Require(ppInterfaceList && !pReserved);
            const AdapterList pAdapters = ReadAdapters(ServiceFolder());
            const std::vector<Adapter>& adapters = *pAdapters;
            const std::size_t cb =
                offsetof(WLAN_INTERFACE_INFO_LIST, InterfaceInfo) + adapters.size() * sizeof(WLAN_INTERFACE_INFO);
            auto* pList = static_cast<PWLAN_INTERFACE_INFO_LIST>(AllocateBlock(std::max(cb, sizeof(WLAN_INTERFACE_INFO_LIST))));
            WLAN_INTERFACE_INFO* pInfo = pList->InterfaceInfo;
            for (const Adapter& adapter : adapters)
            {
                pInfo->InterfaceGuid = adapter.guid;
                CopyTruncated(adapter.description, pInfo->strInterfaceDescription, std::size(pInfo->strInterfaceDescription));
                pInfo->isState = adapter.state;
                ++pInfo;
            }
            pList->dwNumberOfItems = static_cast<DWORD>(adapters.size());
            *ppInterfaceList = pList;
            line.Number("items", pList->dwNumberOfItems);
        });
}

DWORD WINAPI WlanGetInterfaceCapability(HANDLE hClientHandle, const GUID* pInterfaceGuid, PVOID pReserved,
                                        PWLAN_INTERFACE_CAPABILITY* ppCapability)
{
    return ServiceCall(
        "WlanGetInterfaceCapability", [&](CCallLine& line) { line.Handle(hClientHandle).Interface(pInterfaceGuid); },
        [&](CCallLine& line)
        {
            RequireClient(hClientHandle);
            Require(pInterfaceGuid && ppCapability && !pReserved);
            const Adapter adapter = FindAdapter(ServiceFolder(), *pInterfaceGuid);
            // A driver may list more types than the record has room for.
            const std::size_t cb = sizeof(WLAN_INTERFACE_CAPABILITY) + adapter.phyTypes.size() * sizeof(DOT11_PHY_TYPE);
            auto* pCapability = static_cast<PWLAN_INTERFACE_CAPABILITY>(AllocateBlock(cb));
            pCapability->interfaceType = wlan_interface_type_native_802_11;
            pCapability->dwMaxDesiredSsidListSize = 1;
            pCapability->dwMaxDesiredBssidListSize = 1;
            pCapability->dwNumberOfSupportedPhys = static_cast<DWORD>(adapter.phyTypes.size());
            std::copy(adapter.phyTypes.begin(), adapter.phyTypes.end(), pCapability->dot11PhyTypes);
            *ppCapability = pCapability;
            line.Number("phys", pCapability->dwNumberOfSupportedPhys);
        });
}

VOID WINAPI WlanFreeMemory(PVOID pMemory)
{
    EnterCall("WlanFreeMemory");
    CCallLine line("WlanFreeMemory");
    line.Given("memory", pMemory);
    FreeBlock(pMemory);
    line.Write();
}
