// Replacing a file so that it holds either all of the old or all of the new, whatever happens in between.
#pragma once

#include "simulator/files/ReplacedFile.h"

#include <optional>

// New content for a file: complete, and on the disk, under a temporary name in the same folder until Commit puts it in
// place in one step. It has the access rights of the file that it replaces; without Commit it is taken away again.
class CStagedFile
{
public:
    // A link is followed, but for one that leads nowhere. Throws CFileError, as Commit does, also when the target is protected
    // from writing, or another writer is at it.
    CStagedFile(const std::filesystem::path& target, std::string_view bytes);
    ~CStagedFile();
    CStagedFile(const CStagedFile&) = delete;
    CStagedFile& operator=(const CStagedFile&) = delete;

    void Commit();

private:
    std::filesystem::path m_target;
    CReplacedFile m_replaced;
    std::filesystem::path m_temporary;
    std::optional<CFile> m_file;
    bool m_bCommitted = false;
};

// Takes away what this user's writers have left that were killed: the temporary files in the folder of a target of this name,
// or of all without one. Those of writers that live stay.
void RemoveLeftovers(const std::filesystem::path& folder, const std::filesystem::path& target);
