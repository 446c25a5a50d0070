// The profiles that the paths of a command line stand for.
#pragma once

#include "host/ProfileFile.h"

#include <CLI/CLI.hpp>

// In place of a file it stands for standard input, or for standard output where something is written.
inline constexpr const char* standardStream = "-";

// The option need not be given.
CLI::Option* AddPathArguments(CLI::App& command, std::vector<std::string>& paths);

// Whether the paths are a single one, and that no folder.
bool AreOneFile(const std::vector<std::string>& paths);

// The files, with all *.xml of the folders in their places. Throws CLI::ValidationError when there is none.
std::vector<std::filesystem::path> FilesOf(const std::vector<std::string>& paths);

// Throws CHostError.
CProfileFile OpenProfile(const std::filesystem::path& file);
