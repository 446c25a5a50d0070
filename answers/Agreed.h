// What both builds agreed to answer to the questions in the texts of a folder.
#pragma once

#include <filesystem>

namespace answers
{
// Asks all of them and prints what is answered otherwise. False when something was.
bool AskAgreed(const std::filesystem::path& folder);
} // namespace answers
