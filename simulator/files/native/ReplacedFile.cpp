#include "simulator/files/ReplacedFile.h"

#include "platform/advapi32/AccessRights.h"
#include "platform/kernel32/Descriptor.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>

namespace
{
using platform::CDescriptor;

DWORD CodeOf(int nError)
{
    if (nError == EEXIST)
        return ERROR_FILE_EXISTS;
    if (nError == ENOENT || nError == ENOTDIR)
        return ERROR_PATH_NOT_FOUND;
    return nError == ENOSPC || nError == EDQUOT ? ERROR_DISK_FULL : ERROR_ACCESS_DENIED;
}

// A lock of this open file: another thread of this process is another writer.
bool Lock(const CDescriptor& file)
{
    struct flock whole = {};
    whole.l_type = F_WRLCK;
    whole.l_whence = SEEK_SET;
    return fcntl(file.Get(), F_OFD_SETLK, &whole) == 0 || (errno != EAGAIN && errno != EACCES);
}

bool HasName(const struct stat& file, const std::filesystem::path& name)
{
    struct stat named = {};
    return lstat(name.c_str(), &named) == 0 && named.st_dev == file.st_dev && named.st_ino == file.st_ino;
}
} // namespace

struct CReplacedFile::State
{
    CDescriptor file;
};

CReplacedFile::CReplacedFile(const std::filesystem::path& file)
{
    // Whoever had the turn before may have put another file in the place of the one that was opened.
    for (struct stat status = {}; !m_state || !HasName(status, file);)
    {
        CDescriptor opened(open(file.c_str(), O_WRONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
        if (opened.Get() < 0 && errno == ENOENT)
        {
            m_state.reset();
            return;
        }
        if (opened.Get() < 0 || fstat(opened.Get(), &status) != 0 || !S_ISREG(status.st_mode))
            throw CFileError("cannot be written", CodeOf(opened.Get() < 0 ? errno : EACCES));
        if (!Lock(opened))
            throw CFileError("cannot be written, another program is writing it", ERROR_LOCK_VIOLATION);
        m_state = std::make_unique<State>(std::move(opened));
    }
}

CReplacedFile::~CReplacedFile() = default;

// Nobody else's from its first moment on: what is replaced may have been so.
CUniqueFile CReplacedFile::MakeSuccessor(const std::filesystem::path& file) const
{
    const CDescriptor made(open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, m_state ? 0600 : 0666));
    if (made.Get() < 0)
    {
        SetLastError(CodeOf(errno));
        return {};
    }
    // Before it gets its rights, which may be such that this user could not open it any more.
    CUniqueFile opened = OpenFile(file, GENERIC_WRITE, OPEN_EXISTING);
    const bool bRights = !m_state || platform::CopyRights(m_state->file.Get(), made.Get());
    if (!opened || !bRights)
        unlink(file.c_str());
    if (!bRights)
        throw CFileError("cannot be replaced, its group and access rights cannot be kept", ERROR_ACCESS_DENIED);
    return opened;
}

bool IsOwnFile(const std::filesystem::path& file)
{
    struct stat status = {};
    return lstat(file.c_str(), &status) == 0 && S_ISREG(status.st_mode) && status.st_uid == geteuid();
}

void BringFolderToDisk(const std::filesystem::path& folder)
{
    const CDescriptor opened(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (opened.Get() >= 0)
        fsync(opened.Get());
}
