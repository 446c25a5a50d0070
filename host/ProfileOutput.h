// Where a changed profile goes: to another file, over the old one, or nowhere.
#pragma once

#include "host/ProfileFile.h"

#include <CLI/CLI.hpp>

struct OutputOptions
{
    std::string strFile; // UTF-8
    bool bInPlace = false;
};

void AddOutputArguments(CLI::App& command, OutputOptions& options);

// Writes the changed profile where it is to go, and tells the difference. Throws CHostError.
std::string WriteChanged(const OutputOptions& options, const CProfileFile& profile, const CProfileFile& changed);
