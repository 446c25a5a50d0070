#include "host/SafeFile.h"

#include "host/HostError.h"
#include "host/Leftovers.h"
#include "host/native/UniqueDescriptor.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
[[noreturn]] void Refuse(const char* szWhat)
{
    throw CHostError(std::string(szWhat) + ": " + std::strerror(errno));
}

// Takes away what writers of the same file left when they were killed. A writer that lives holds its file's lock.
void RemoveLeftovers(const std::filesystem::path& target)
{
    ForEachLeftover(target,
                    [](const std::filesystem::path& leftover)
                    {
                        const CUniqueDescriptor file(open(leftover.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
                        if (file && flock(file.Get(), LOCK_EX | LOCK_NB) == 0)
                            unlink(leftover.c_str());
                    });
}

// A file that goes away again unless it is renamed.
class CTemporaryFile
{
public:
    explicit CTemporaryFile(const std::filesystem::path& target)
    {
        // Until it is locked, another writer may take the file for a leftover: then there has to be another.
        do
        {
            m_strName = target.string() + temporaryMark + "XXXXXX";
            *m_descriptor.Put() = mkostemp(m_strName.data(), O_CLOEXEC);
            if (!m_descriptor)
                Refuse("cannot be written, its folder takes no new file");
            flock(m_descriptor.Get(), LOCK_EX);
        } while (!HasName());
    }
    ~CTemporaryFile()
    {
        if (!m_bRenamed)
            unlink(m_strName.c_str());
    }
    CTemporaryFile(const CTemporaryFile&) = delete;
    CTemporaryFile& operator=(const CTemporaryFile&) = delete;

    int Descriptor() const
    {
        return m_descriptor.Get();
    }
    void RenameTo(const std::filesystem::path& target)
    {
        if (rename(m_strName.c_str(), target.c_str()) != 0)
            Refuse("cannot be replaced");
        m_bRenamed = true;
    }

private:
    bool HasName() const
    {
        struct stat status
        {
        };
        return fstat(m_descriptor.Get(), &status) != 0 || status.st_nlink != 0;
    }

    std::string m_strName;
    CUniqueDescriptor m_descriptor;
    bool m_bRenamed = false;
};

// Permissions and, as far as this user may, the owner of the file that is replaced; else what a new file would get.
void TakePermissions(int nDescriptor, const struct stat* pOld)
{
    if (pOld)
    {
        // Before the mode, because a change of owner clears parts of it.
        [[maybe_unused]] const int nIgnored = fchown(nDescriptor, pOld->st_uid, pOld->st_gid);
        if (fchmod(nDescriptor, pOld->st_mode & 07777) != 0)
            Refuse("cannot keep the permissions");
        return;
    }
    const mode_t mask = umask(0);
    umask(mask);
    if (fchmod(nDescriptor, 0666 & ~mask) != 0)
        Refuse("cannot set the permissions");
}

void BringFolderToDisk(const std::filesystem::path& target)
{
    const CUniqueDescriptor folder(open(target.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder)
        fsync(folder.Get());
}
} // namespace

void WriteSafely(const std::filesystem::path& target, std::string_view bytes)
{
    NamingFile(target,
               [&]
               {
                   std::error_code error;
                   const std::filesystem::path real = std::filesystem::weakly_canonical(absolute(target), error);
                   if (error)
                       throw CHostError("cannot be written: " + error.message());
                   struct stat old
                   {
                   };
                   const bool bExists = stat(real.c_str(), &old) == 0;
                   if (bExists && !S_ISREG(old.st_mode))
                       throw CHostError("cannot be written: it is not a regular file");
                   if (bExists && access(real.c_str(), W_OK) != 0)
                       Refuse("cannot be written");

                   // First, for their room may be needed.
                   RemoveLeftovers(real);
                   CTemporaryFile temporary(real);
                   if (!WriteAll(temporary.Descriptor(), bytes))
                       Refuse("cannot be written");
                   TakePermissions(temporary.Descriptor(), bExists ? &old : nullptr);
                   if (fsync(temporary.Descriptor()) != 0)
                       Refuse("cannot be brought to the disk");
                   temporary.RenameTo(real);
                   BringFolderToDisk(real);
               });
}
