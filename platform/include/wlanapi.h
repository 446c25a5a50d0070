// The WLAN service client functions and their records.
#pragma once

#include "windef.h"
#include "winerror.h"

#define WLAN_MAX_PHY_INDEX 64
#define WLAN_MAX_NAME_LENGTH 256

using WLAN_REASON_CODE = DWORD;
inline constexpr WLAN_REASON_CODE WLAN_REASON_CODE_SUCCESS = 0;
inline constexpr WLAN_REASON_CODE WLAN_REASON_CODE_UNKNOWN = 0x10001;
inline constexpr WLAN_REASON_CODE WLAN_REASON_CODE_INVALID_PROFILE_SCHEMA = 0x80001;
inline constexpr WLAN_REASON_CODE WLAN_REASON_CODE_PROFILE_MISSING = 0x80002;
inline constexpr WLAN_REASON_CODE WLAN_REASON_CODE_INVALID_PROFILE_NAME = 0x80003;

enum DOT11_PHY_TYPE : std::uint32_t
{
    dot11_phy_type_unknown = 0,
    dot11_phy_type_fhss = 1,
    dot11_phy_type_dsss = 2,
    dot11_phy_type_irbaseband = 3,
    dot11_phy_type_ofdm = 4,
    dot11_phy_type_hrdsss = 5,
    dot11_phy_type_erp = 6,
    dot11_phy_type_ht = 7,
};

enum WLAN_INTERFACE_STATE : std::uint32_t
{
    wlan_interface_state_not_ready = 0,
    wlan_interface_state_connected = 1,
    wlan_interface_state_ad_hoc_network_formed = 2,
    wlan_interface_state_disconnecting = 3,
    wlan_interface_state_disconnected = 4,
    wlan_interface_state_associating = 5,
    wlan_interface_state_discovering = 6,
    wlan_interface_state_authenticating = 7,
};

enum WLAN_INTERFACE_TYPE : std::uint32_t
{
    wlan_interface_type_emulated_802_11 = 0,
    wlan_interface_type_native_802_11 = 1,
    wlan_interface_type_invalid = 2,
};

enum WLAN_IHV_CONTROL_TYPE : std::uint32_t
{
    wlan_ihv_control_type_service = 0,
    wlan_ihv_control_type_driver = 1,
};

struct WLAN_INTERFACE_INFO
{
    GUID InterfaceGuid;
    WCHAR strInterfaceDescription[256];
    WLAN_INTERFACE_STATE isState;
};
using PWLAN_INTERFACE_INFO = WLAN_INTERFACE_INFO*;

struct WLAN_INTERFACE_INFO_LIST
{
    DWORD dwNumberOfItems;
    DWORD dwIndex;
    WLAN_INTERFACE_INFO InterfaceInfo[1];
};
using PWLAN_INTERFACE_INFO_LIST = WLAN_INTERFACE_INFO_LIST*;

struct WLAN_PROFILE_INFO
{
    WCHAR strProfileName[WLAN_MAX_NAME_LENGTH];
    DWORD dwFlags;
};
using PWLAN_PROFILE_INFO = WLAN_PROFILE_INFO*;

struct WLAN_PROFILE_INFO_LIST
{
    DWORD dwNumberOfItems;
    DWORD dwIndex;
    WLAN_PROFILE_INFO ProfileInfo[1];
};
using PWLAN_PROFILE_INFO_LIST = WLAN_PROFILE_INFO_LIST*;

struct WLAN_INTERFACE_CAPABILITY
{
    WLAN_INTERFACE_TYPE interfaceType;
    BOOL bDot11DSupported;
    DWORD dwMaxDesiredSsidListSize;
    DWORD dwMaxDesiredBssidListSize;
    DWORD dwNumberOfSupportedPhys;
    DOT11_PHY_TYPE dot11PhyTypes[WLAN_MAX_PHY_INDEX];
};
using PWLAN_INTERFACE_CAPABILITY = WLAN_INTERFACE_CAPABILITY*;

extern "C"
{
    PLATFORM_EXPORT DWORD WINAPI WlanOpenHandle(DWORD dwClientVersion, PVOID pReserved, PDWORD pdwNegotiatedVersion,
                                                PHANDLE phClientHandle);
    PLATFORM_EXPORT DWORD WINAPI WlanCloseHandle(HANDLE hClientHandle, PVOID pReserved);
    PLATFORM_EXPORT DWORD WINAPI WlanEnumInterfaces(HANDLE hClientHandle, PVOID pReserved,
                                                    PWLAN_INTERFACE_INFO_LIST* ppInterfaceList);
    PLATFORM_EXPORT DWORD WINAPI WlanGetInterfaceCapability(HANDLE hClientHandle, const GUID* pInterfaceGuid, PVOID pReserved,
                                                            PWLAN_INTERFACE_CAPABILITY* ppCapability);
    PLATFORM_EXPORT DWORD WINAPI WlanGetProfileList(HANDLE hClientHandle, const GUID* pInterfaceGuid, PVOID pReserved,
                                                    PWLAN_PROFILE_INFO_LIST* ppProfileList);
    PLATFORM_EXPORT DWORD WINAPI WlanGetProfile(HANDLE hClientHandle, const GUID* pInterfaceGuid, LPCWSTR szProfileName,
                                                PVOID pReserved, LPWSTR* pszProfileXml, DWORD* pdwFlags, PDWORD pdwGrantedAccess);
    PLATFORM_EXPORT DWORD WINAPI WlanSetProfile(HANDLE hClientHandle, const GUID* pInterfaceGuid, DWORD dwFlags,
                                                LPCWSTR szProfileXml, LPCWSTR szAllUserProfileSecurity, BOOL bOverwrite,
                                                PVOID pReserved, DWORD* pdwReasonCode);
    PLATFORM_EXPORT DWORD WINAPI WlanIhvControl(HANDLE hClientHandle, const GUID* pInterfaceGuid, WLAN_IHV_CONTROL_TYPE type,
                                                DWORD cbInBuffer, PVOID pInBuffer, DWORD cbOutBuffer, PVOID pOutBuffer,
                                                PDWORD pcbReturned);
    PLATFORM_EXPORT VOID WINAPI WlanFreeMemory(PVOID pMemory);
}
