// What replacing a file needs of each system.
#pragma once

#include "simulator/files/File.h"

#include <memory>

// The file that is to be replaced, which need not be there yet. As long as this lives, no other writer has its turn at a
// file that is there; the turn ends with the process, too.
class CReplacedFile
{
public:
    // Of a name that is no link. Waits for nobody. Throws CFileError when the file may not be written, is no regular file, or is
    // another writer's.
    explicit CReplacedFile(const std::filesystem::path& file);
    ~CReplacedFile();
    CReplacedFile(const CReplacedFile&) = delete;
    CReplacedFile& operator=(const CReplacedFile&) = delete;

    bool Exists() const
    {
        return m_state != nullptr;
    }
    // Makes a new file, open for writing, with the access rights of this one where it is there. Empty, with the last error
    // set, when that name is taken or the folder takes no file; throws CFileError when the rights cannot be kept.
    CUniqueFile MakeSuccessor(const std::filesystem::path& file) const;

private:
    struct State;
    std::unique_ptr<State> m_state; // null when there is no such file
};

// Whether it is a regular file, and no other user's where the system says so.
bool IsOwnFile(const std::filesystem::path& file);

// Makes the names in the folder last, where the system does not see to that by itself.
void BringFolderToDisk(const std::filesystem::path& folder);
