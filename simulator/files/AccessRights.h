// What replacing a file needs of each system.
#pragma once

#include "values/Unique.h"

#include <filesystem>

// Makes a new file, open for writing, with the access rights and the owner of the target where there is one. Empty, with
// the last error set, when that fails.
CUniqueFile CreateWithRightsOf(const std::filesystem::path& target, const std::filesystem::path& file);

// Makes the names in the folder last, where the system does not see to that by itself.
void BringFolderToDisk(const std::filesystem::path& folder);
