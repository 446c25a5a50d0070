// Texts by regular expressions, for which a compiler needs seconds in each file that uses them: Pattern.cpp alone does.
#pragma once

#include <string>
#include <vector>

namespace tests
{
// The text that a pattern describes, and those of its groups.
using Match = std::vector<std::string>;

// Of the whole text; empty when the pattern does not describe it.
Match MatchOf(const std::string& text, const std::string& pattern);
bool Matches(const std::string& text, const std::string& pattern);

// Of each place in the text.
std::vector<Match> Found(const std::string& text, const std::string& pattern);
std::string Replaced(const std::string& text, const std::string& pattern, const std::string& replacement);
// What stands before, between and after those places.
std::vector<std::string> Split(const std::string& text, const std::string& pattern);
} // namespace tests
