// The machine's wireless adapters, as adapters.json lists them.
#pragma once

#include "values/Utf8Text.h"

#include <windows.h>
#include <wlanapi.h>

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace simulator
{
struct Adapter
{
    GUID guid{};
    CWideString description;
    WLAN_INTERFACE_STATE state = wlan_interface_state_disconnected;
    std::vector<DOT11_PHY_TYPE> phyTypes; // at most WLAN_MAX_PHY_INDEX
    // What the driver answers; a query without an answer here is one that the driver does not know.
    std::optional<std::string> vendor;
    std::optional<DWORD> rapido;
    // A driver that refuses every request, and whole replies, header included, that replace the regular ones.
    std::optional<DWORD> driverError;
    std::optional<std::string> vendorReply;
    std::optional<std::string> rapidoReply;
};

using AdapterList = std::shared_ptr<const std::vector<Adapter>>;

// In the order of the file. Throws ERROR_INVALID_DATA, with the reason for the call log, when the file is not as
// described in docs/simulated-service.md.
AdapterList ReadAdapters(const std::filesystem::path& serviceFolder);

// Throws ERROR_NOT_FOUND for a GUID that is not in the list.
Adapter FindAdapter(const std::filesystem::path& serviceFolder, const GUID& guid);

// The 36 characters in lower case, without braces.
CWideString GuidText(const GUID& guid);
} // namespace simulator
