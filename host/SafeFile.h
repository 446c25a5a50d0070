// Writing a file so that it holds either all of the old or all of the new, whatever happens in between.
#pragma once

#include <filesystem>
#include <string_view>

// Writes a temporary file in the target's folder, brings it to the disk and renames it over the target; a link is
// followed. A target that exists keeps its permissions. What a writer leaves that is killed meanwhile, NAME.korihost-*,
// goes with the next writing of the same file. Throws CHostError, with the target's name, and leaves the
// target as it was when it is no regular file, is protected from writing, or cannot be written.
void WriteSafely(const std::filesystem::path& target, std::string_view bytes);
