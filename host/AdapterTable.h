// What the extension's dialog would find out about the machine: adapters, their abilities, and a stored profile's bands.
#pragma once

#include "host/WlanService.h"

// Rows about every adapter, with the profile of the name on the chosen adapter. Throws CHostError when the service fails.
std::string AdapterTable(const CWlanService& service, const std::optional<GUID>& chosen, const CWideString& strProfile);
