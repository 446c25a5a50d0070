// The arguments of the commands that use the WLAN service.
#pragma once

#include "host/Profile.h"
#include "host/WlanService.h"

#include <CLI/CLI.hpp>

// Returns the adapter's option.
CLI::Option* AddServiceArguments(CLI::App& command, ServiceOptions& options);

// What a command works on: the file PROFILE, or the stored profile --name.
struct TargetOptions
{
    std::string strProfile; // both UTF-8; one at least
    std::string strName;
};
void AddStoredNameArgument(CLI::App& command, std::string& strName);
void AddTargetArguments(CLI::App& command, TargetOptions& options, const std::string& strWhatHappens);

// The name under which the service has the profile; its own unless another is given.
CWideString NameInService(const std::string& strName, const CProfile& profile);
CWideString NameInService(const TargetOptions& options, const CProfile& profile);
