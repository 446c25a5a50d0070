// What writers of a file leave beside it when they are killed.
#pragma once

#include <filesystem>
#include <system_error>

// What a temporary file's name has behind the target's; after it comes what makes the name its own.
inline constexpr const char* temporaryMark = ".korihost-";

// Hands each file that bears the mark of the target to the visitor. What cannot be listed is passed over, because it stands
// in nobody's way.
template <class Visit>
void ForEachLeftover(const std::filesystem::path& target, const Visit& visit)
{
    const std::filesystem::path beginning = target.filename() += temporaryMark;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(target.parent_path(), error), end; !error && entry != end;
         entry.increment(error))
        if (entry->path().filename().native().starts_with(beginning.native()))
            visit(entry->path());
}
