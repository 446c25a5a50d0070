// What is asked of a platform; each function works in the folder, which is empty and its own, and leaves nothing in the
// registry.
#pragma once

#include "answers/Record.h"

namespace answers
{
void RecordRegistry(CRecord& record, const std::filesystem::path& folder);
void RecordFiles(CRecord& record, const std::filesystem::path& folder);
void RecordPaths(CRecord& record, const std::filesystem::path& folder);
void RecordLocks(CRecord& record, const std::filesystem::path& folder);
void RecordFormats(CRecord& record, const std::filesystem::path& folder);
void RecordResources(CRecord& record, const std::filesystem::path& folder);

// How the module and its readers take nCount generated profiles. The same seed gives the same profiles everywhere.
void RecordDocuments(CRecord& record, std::uint32_t uSeed, unsigned nCount);
} // namespace answers
