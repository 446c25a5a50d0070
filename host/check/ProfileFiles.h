// The profile files that paths stand for.
#pragma once

#include <filesystem>
#include <optional>
#include <vector>

// Gives file after file in an order that depends on their names alone, and holds no more than the names in the folders that
// it is in.
class CProfileFiles
{
public:
    // A path is a file, whatever its name, or a folder. In folders at any depth the *.xml are taken; folders that are links
    // are not followed.
    explicit CProfileFiles(const std::vector<std::filesystem::path>& paths);

    bool IsAtEnd();

    // Nothing at the end. A folder that cannot be listed is given like a file: whoever reads it hears of it.
    std::optional<std::filesystem::path> Next();

private:
    struct Entry
    {
        std::filesystem::path name;
        bool bFolder;
    };
    struct Folder
    {
        std::filesystem::path path;
        std::vector<Entry> entries; // the next one last
    };

    std::optional<std::filesystem::path> Find();
    bool Enter(const std::filesystem::path& folder);

    std::vector<Folder> m_folders; // the innermost last
    std::optional<std::filesystem::path> m_next;
};
