// What the program can be asked for.
#pragma once

#include <filesystem>
#include <iosfwd>

namespace answers
{
// Asks all questions of the texts in the folder and prints what is answered otherwise than agreed. False when something was.
bool AskAgreed(const std::filesystem::path& folder);

// What the module and its readers make of profiles. For each line of KIND "TEXT" one with the text and, behind a tab each,
// "question -> answer".
void RecordDocuments(std::istream& documents, std::ostream& record);
} // namespace answers
