#include "tests/support/Pattern.h"

#include <map>
#include <regex>

namespace tests
{
namespace
{
// Kept, because the walks of faults ask for the same few thousands of times.
const std::regex& Compiled(const std::string& pattern)
{
    thread_local std::map<std::string, std::regex> patterns;
    return patterns.try_emplace(pattern, pattern).first->second;
}
} // namespace

Match MatchOf(const std::string& text, const std::string& pattern)
{
    std::smatch match;
    std::regex_match(text, match, Compiled(pattern));
    return {match.begin(), match.end()};
}

bool Matches(const std::string& text, const std::string& pattern)
{
    return std::regex_match(text, Compiled(pattern));
}

std::vector<Match> Found(const std::string& text, const std::string& pattern)
{
    std::vector<Match> found;
    for (std::sregex_iterator it(text.begin(), text.end(), Compiled(pattern)), end; it != end; ++it)
        found.emplace_back(it->begin(), it->end());
    return found;
}

std::string Replaced(const std::string& text, const std::string& pattern, const std::string& replacement)
{
    return std::regex_replace(text, Compiled(pattern), replacement);
}

std::vector<std::string> Split(const std::string& text, const std::string& pattern)
{
    return {std::sregex_token_iterator(text.begin(), text.end(), Compiled(pattern), -1), {}};
}
} // namespace tests
