// The arguments of the commands that use the WLAN service.
#pragma once

#include "host/WlanService.h"

#include <CLI/CLI.hpp>

// Returns the adapter's option.
CLI::Option* AddServiceArguments(CLI::App& command, ServiceOptions& options);
