// What both builds agreed to answer to the questions in the texts of a folder.
#pragma once

#include <filesystem>

namespace answers
{
// Asks all of them and prints what is answered otherwise. When it rewrites, the answers are put into the texts instead. False
// when something differed.
bool AskAgreed(const std::filesystem::path& folder, bool bRewrites);
} // namespace answers
