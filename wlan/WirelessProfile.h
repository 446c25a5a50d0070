// The wireless profile and the capabilities of an interface, through the WLAN service.
//
// All operations share one client handle, opened when it is first needed and kept until the process ends. They answer
// true or false, trace nothing, and run on one thread at a time. A null connection context gives false.
#pragma once

#include <windows.h>

// Whether the interface lists a PHY type: 1 or 0.
struct PhyCapabilities
{
    DWORD ofdm;   // 802.11a, the 5 GHz band
    DWORD hrDsss; // 802.11b
    DWORD erp;    // 802.11g, the 2.4 GHz band
    DWORD ht;     // 802.11n
};

// Opens the shared client handle.
bool OpenWlanClient();

// Reads the profile that the context names. *pszProfile receives a new zero-terminated array, the caller's to free with
// delete[]; it stays as it was on failure, and when the service succeeds without a text. Throws std::bad_alloc.
bool GetWirelessProfile(const void* pConnectionContext, WCHAR** pszProfile);

// Stores a profile text on the context's interface with the context's flags, over the profile of the same name.
bool SetWirelessProfile(const void* pConnectionContext, const WCHAR* szProfile);

// Fills *pCapabilities; left as they were on failure.
bool GetPhyCapabilities(const GUID& interfaceGuid, PhyCapabilities* pCapabilities);
