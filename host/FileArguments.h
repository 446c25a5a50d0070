// The arguments that name files, looked at together before any of them is opened.
#pragma once

#include <CLI/CLI.hpp>

// What holds for every file that is written, for the descriptions of the arguments.
inline constexpr const char* writtenFileRule = "a regular file, new or there; a link is followed, but must lead to a file";

// Throws CHostError when a file that the command writes is no such file, or is one that another argument names or uses.
void RequireSeparateFiles(const CLI::App& command);
