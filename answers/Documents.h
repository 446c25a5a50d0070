// What the module and its readers make of profiles.
#pragma once

#include <istream>
#include <ostream>

namespace answers
{
// A line for each line of KIND "TEXT": the text and, behind a tab each, "question -> answer".
void RecordDocuments(std::istream& documents, std::ostream& record);
} // namespace answers
