// The arguments of the commands that use the WLAN service.
#pragma once

#include "host/WlanService.h"

#include <CLI/CLI.hpp>

// Returns the adapter's option.
CLI::Option* AddServiceArguments(CLI::App& command, ServiceOptions& options);

// The name under which the service has the profile.
void AddStoredNameArgument(CLI::App& command, std::string& strName);
