#include "wlan/WirelessProfile.h"

#include "public/ConnectionContext.h"
#include "values/WideText.h"
#include "wlan/WlanMemory.h"

#include <algorithm>
#include <memory>

namespace
{
constexpr DWORD clientVersion = 2;

// Opened once for the process and never closed.
HANDLE WlanClientHandle = nullptr;

// The result of opening is not looked at: the call that follows fails by itself without a handle.
HANDLE NeedWlanClient()
{
    if (!WlanClientHandle)
        OpenWlanClient();
    return WlanClientHandle;
}

struct PhyFlag
{
    DWORD phyType;
    DWORD PhyCapabilities::*pFlag;
};
constexpr PhyFlag phyFlags[] = {
    {dot11_phy_type_ofdm, &PhyCapabilities::ofdm},
    {dot11_phy_type_hrdsss, &PhyCapabilities::hrDsss},
    {dot11_phy_type_erp, &PhyCapabilities::erp},
    {dot11_phy_type_ht, &PhyCapabilities::ht},
};

void FlagPhyType(DWORD phyType, PhyCapabilities& capabilities)
{
    for (const auto& flag : phyFlags)
    {
        if (flag.phyType == phyType)
            capabilities.*flag.pFlag = 1;
    }
}
} // namespace

bool OpenWlanClient()
{
    DWORD dwNegotiatedVersion{};
    return WlanOpenHandle(clientVersion, nullptr, &dwNegotiatedVersion, &WlanClientHandle) == ERROR_SUCCESS;
}

bool GetWirelessProfile(const void* pConnectionContext, WCHAR** pszProfile)
{
    if (!pConnectionContext)
        return false;
    const CConnectionContextReader context(pConnectionContext);
    const GUID interfaceGuid = context.InterfaceGuid();
    const auto szName = context.ProfileName();
    const HANDLE hClient = NeedWlanClient();

    CUniqueWlanMemory<WCHAR> szProfile;
    const DWORD dwResult = WlanGetProfile(hClient, &interfaceGuid, szName.data(), nullptr, szProfile.Put(), nullptr, nullptr);
    if (dwResult == ERROR_SUCCESS && szProfile)
    {
        const CWideView profile(szProfile.Get());
        auto copy = std::make_unique<WCHAR[]>(profile.size() + 1);
        profile.copy(copy.get(), profile.size());
        *pszProfile = copy.release();
    }
    return dwResult == ERROR_SUCCESS;
}

bool SetWirelessProfile(const void* pConnectionContext, const WCHAR* szProfile)
{
    if (!pConnectionContext)
        return false;
    const CConnectionContextReader context(pConnectionContext);
    const GUID interfaceGuid = context.InterfaceGuid();
    const HANDLE hClient = NeedWlanClient();

    DWORD dwReasonCode{};
    return WlanSetProfile(hClient, &interfaceGuid, context.ProfileFlags(), szProfile, nullptr, TRUE, nullptr, &dwReasonCode) ==
           ERROR_SUCCESS;
}

bool GetPhyCapabilities(const GUID& interfaceGuid, PhyCapabilities* pCapabilities)
{
    const HANDLE hClient = NeedWlanClient();
    CUniqueWlanMemory<WLAN_INTERFACE_CAPABILITY> capability;
    if (WlanGetInterfaceCapability(hClient, &interfaceGuid, nullptr, capability.Put()) != ERROR_SUCCESS)
        return false;

    *pCapabilities = {};
    if (!capability)
        return true;
    // The count comes from outside; the list does not reach beyond its own size.
    const DWORD cPhys = std::min<DWORD>(capability.Get()->dwNumberOfSupportedPhys, WLAN_MAX_PHY_INDEX);
    for (DWORD i = 0; i < cPhys; ++i)
        FlagPhyType(static_cast<DWORD>(capability.Get()->dot11PhyTypes[i]), *pCapabilities);
    return true;
}
