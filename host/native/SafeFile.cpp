#include "host/SafeFile.h"

#include "host/HostError.h"
#include "host/native/UniqueDescriptor.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
[[noreturn]] void Refuse(const char* szWhat)
{
    throw CHostError(std::string(szWhat) + ": " + std::strerror(errno));
}

// A file that goes away again unless it is renamed.
class CTemporaryFile
{
public:
    explicit CTemporaryFile(const std::filesystem::path& target) : m_strName(target.string() + ".XXXXXX")
    {
        *m_descriptor.Put() = mkstemp(m_strName.data());
        if (!m_descriptor)
            Refuse("cannot be written, its folder takes no new file");
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
                   const std::filesystem::path real = std::filesystem::weakly_canonical(target, error);
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
