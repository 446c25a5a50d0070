// Writing a file so that it holds either all of the old or all of the new, whatever happens in between.
#pragma once

#include <filesystem>
#include <string_view>

// A link is followed, and a target that exists keeps its access rights. Throws CHostError, with the target's name, and
// leaves the target as it was when it is no regular file, is protected from writing, or cannot be written.
void WriteSafely(const std::filesystem::path& target, std::string_view bytes);
