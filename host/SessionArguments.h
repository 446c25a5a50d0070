// The arguments of the commands that use the extension.
#pragma once

#include "host/Session.h"

#include <CLI/CLI.hpp>

void AddModuleArgument(CLI::App& command, std::string& strModule);
void AddTraceArgument(CLI::App& command, std::string& strTrace);
void AddSessionArguments(CLI::App& command, SessionOptions& options);
