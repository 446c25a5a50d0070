// What is asked of a platform: files with the folders and locks they need, and so on. A table by name in Agreed.cpp.
#pragma once

#include "answers/Question.h"
#include "answers/Record.h"

#include <cstdint>
#include <filesystem>
#include <memory>

namespace answers
{
std::unique_ptr<CSubject> AskFiles();
std::unique_ptr<CSubject> AskMutexes();
std::unique_ptr<CSubject> AskRegistry();
std::unique_ptr<CSubject> AskTexts();
std::unique_ptr<CSubject> AskModules();

// Asks all that stands in the texts of the folder and prints what is answered otherwise. When it rewrites, the answers are
// put into the texts instead. False when something differed.
bool AskAgreed(const std::filesystem::path& folder, bool bRewrites);

// How the module and its readers take nCount generated profiles. The same seed gives the same profiles everywhere.
void RecordDocuments(CRecord& record, std::uint32_t uSeed, unsigned nCount);
void RecordRegistry(CRecord& record, const std::filesystem::path& folder);
void RecordFiles(CRecord& record, const std::filesystem::path& folder);
void RecordPaths(CRecord& record, const std::filesystem::path& folder);
void RecordLocks(CRecord& record, const std::filesystem::path& folder);
void RecordFormats(CRecord& record, const std::filesystem::path& folder);
void RecordResources(CRecord& record, const std::filesystem::path& folder);
} // namespace answers
