// Files that others may be at meanwhile: read from what was opened, and written so that they hold either all of the old or all
// of the new, whatever happens in between.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

// Everything in a regular file of at most 16 MiB. Throws CHostError, without the file's name.
std::string ReadSafely(const std::filesystem::path& file);
// The same for what comes through standard input.
std::string ReadStandardInput();

// A link is followed, and a target that exists keeps its access rights. Throws CHostError, with the target's name, and
// leaves the target as it was when it is no regular file, has other names that would keep the old content, is protected from
// writing, or cannot be written; also when it has been read and holds something else by now.
void WriteSafely(const std::filesystem::path& target, std::string_view bytes, std::optional<std::string_view> wasRead = {});
