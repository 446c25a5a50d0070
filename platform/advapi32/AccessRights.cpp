#include "platform/advapi32/AccessRights.h"

#include <cerrno>
#include <string_view>
#include <vector>

#include <linux/limits.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace platform
{
namespace
{
constexpr const char* accessList = "system.posix_acl_access";

bool IsWithout(int nError)
{
    return nError == ENODATA || nError == EOPNOTSUPP;
}

// What is neither access rights nor the user's own belongs to the system, which lets few set it.
bool MustBeKept(std::string_view name)
{
    return name.starts_with("system.") || name.starts_with("user.");
}

bool CopyAttribute(int fdFrom, int fdTo, const char* szName)
{
    std::vector<char> value(XATTR_SIZE_MAX);
    const ssize_t cb = fgetxattr(fdFrom, szName, value.data(), value.size());
    return cb >= 0 && fsetxattr(fdTo, szName, value.data(), static_cast<std::size_t>(cb), 0) == 0;
}

bool CopyAttributes(int fdFrom, int fdTo)
{
    // The folder may have handed down a list to the new file that the old one does not have.
    if (fremovexattr(fdTo, accessList) != 0 && !IsWithout(errno))
        return false;
    std::vector<char> names(XATTR_LIST_MAX);
    const ssize_t cbNames = flistxattr(fdFrom, names.data(), names.size());
    if (cbNames < 0)
        return IsWithout(errno);
    for (std::string_view rest(names.data(), static_cast<std::size_t>(cbNames)); !rest.empty();)
    {
        const std::string_view name = rest.data(); // each ends with a zero
        if (!CopyAttribute(fdFrom, fdTo, name.data()) && MustBeKept(name))
            return false;
        rest.remove_prefix(name.size() + 1);
    }
    return true;
}
} // namespace

bool CopyRights(int fdFrom, int fdTo)
{
    struct stat from = {};
    if (fstat(fdFrom, &from) != 0)
        return false;
    // Owner and group in one step fail together, while a member may set the group.
    const bool bOwner = fchown(fdTo, from.st_uid, from.st_gid) == 0;
    if (!bOwner && fchown(fdTo, static_cast<uid_t>(-1), from.st_gid) != 0)
        return false;
    // The mode last: a change of owner clears parts of it, and until the list stands it would let in whom the list does not.
    return CopyAttributes(fdFrom, fdTo) && fchmod(fdTo, from.st_mode & (bOwner ? 07777U : 0777U)) == 0;
}
} // namespace platform
