#include "simulator/files/AccessRights.h"

#include "simulator/files/File.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
DWORD CodeOf(int nError)
{
    if (nError == EEXIST)
        return ERROR_FILE_EXISTS;
    if (nError == ENOENT || nError == ENOTDIR)
        return ERROR_PATH_NOT_FOUND;
    return nError == ENOSPC || nError == EDQUOT ? ERROR_DISK_FULL : ERROR_ACCESS_DENIED;
}
} // namespace

// Nobody else's from its first moment on: what is replaced may have been so.
CUniqueFile CreateWithRightsOf(const std::filesystem::path& target, const std::filesystem::path& file)
{
    struct stat old = {};
    const bool bExists = stat(target.c_str(), &old) == 0;
    const int nDescriptor = open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, bExists ? 0600 : 0666);
    if (nDescriptor < 0)
    {
        SetLastError(CodeOf(errno));
        return {};
    }
    bool bDone = true;
    if (bExists)
    {
        // Before the mode, because a change of owner clears parts of it; as far as this user may.
        [[maybe_unused]] const int nIgnored = fchown(nDescriptor, old.st_uid, old.st_gid);
        bDone = fchmod(nDescriptor, old.st_mode & 07777) == 0;
    }
    close(nDescriptor);
    CUniqueFile opened = bDone ? OpenFile(file, GENERIC_WRITE, OPEN_EXISTING) : CUniqueFile();
    if (!opened)
        unlink(file.c_str());
    return opened;
}

void BringFolderToDisk(const std::filesystem::path& folder)
{
    const int nDescriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (nDescriptor < 0)
        return;
    fsync(nDescriptor);
    close(nDescriptor);
}
