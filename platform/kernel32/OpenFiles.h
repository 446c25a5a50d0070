// Opening real files the way the platform does: dispositions, no directory ever opened as a file, and no name taken away
// from a file that is open.
#pragma once

#include "platform/kernel32/Descriptor.h"

#include <windows.h>

#include <filesystem>

#include <sys/stat.h>

namespace platform
{
struct OpenRequest
{
    DWORD dwAccess;      // GENERIC_READ, GENERIC_WRITE or both
    DWORD dwShareMode;   // readers and writers are always let in; FILE_SHARE_DELETE is what an open file may leave out
    DWORD dwDisposition; // CREATE_NEW ... OPEN_ALWAYS
};

// Throws Failure; ERROR_INVALID_PARAMETER for a request that is not served here.
CDescriptor OpenRealFile(const std::filesystem::path& realPath, const OpenRequest& request);

// Whether nobody may write to the file. Looked at even where this user may write to everything.
bool IsReadOnly(const struct stat& status) noexcept;

// As long as it lives, the file keeps its name: it is neither renamed nor deleted by this process.
class CNameHold
{
public:
    explicit CNameHold(const CDescriptor& file);
    ~CNameHold();
    CNameHold(const CNameHold&) = delete;
    CNameHold& operator=(const CNameHold&) = delete;

private:
    struct stat m_status = {};
};

bool IsNameHeld(const struct stat& status);
} // namespace platform
