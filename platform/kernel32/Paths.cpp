#include "platform/kernel32/Paths.h"

#include "platform/kernel32/Environment.h"
#include "platform/kernel32/Unicode.h"

#include <algorithm>
#include <mutex>
#include <optional>

namespace platform
{
namespace fs = std::filesystem;

namespace
{
fs::path DriveC()
{
    return RootFolder() / "drive_c";
}

fs::path MakeRootFolder(const std::string& configured)
{
    std::error_code ignored; // a root that cannot be made shows as missing folders in the operations that follow
    const fs::path root = configured.empty() ? fs::read_symlink("/proc/self/exe", ignored).parent_path() / "platform-root"
                                             : fs::absolute(configured, ignored);
    fs::create_directories(root / "drive_c/windows/system32", ignored);
    // The real name, so that names which the system reports are recognised as lying below it.
    const fs::path canonical = fs::weakly_canonical(root, ignored);
    return canonical.empty() ? root : canonical;
}

bool HasForbiddenCharacter(std::u16string_view names)
{
    return std::ranges::any_of(
        names,
        [](char16_t unit) { return unit < 0x20 || std::u16string_view(u"<>:\"|?*").find(unit) != std::u16string_view::npos; });
}

// The folder that a drive's letter stands for.
std::optional<fs::path> DriveFolder(char16_t letter)
{
    switch (UpperOf(letter))
    {
    case u'C':
        return DriveC();
    case u'Z':
        return "/";
    default:
        return std::nullopt;
    }
}
} // namespace

fs::path RootFolder()
{
    // A program may choose another root later.
    static auto* const pLock = new std::mutex;
    static auto* const pKnown = new std::pair<std::optional<std::string>, fs::path>;
    const std::string configured = EnvironmentText("PLATFORM_ROOT").value_or("");
    const std::lock_guard lock(*pLock);
    if (pKnown->first != configured)
        *pKnown = {configured, MakeRootFolder(configured)};
    return pKnown->second;
}

CheckedPath CheckPath(LPCWSTR szPath, std::size_t cchLimit, DWORD dwLimitError)
{
    std::u16string_view path(szPath ? szPath : u"");
    if (path.find_first_not_of(u' ') == path.npos)
        return {ERROR_PATH_NOT_FOUND, {}};
    std::optional<fs::path> drive;
    if (path.size() >= 2 && path[1] == u':')
    {
        drive = DriveFolder(path[0]);
        if (!drive)
            return {ERROR_PATH_NOT_FOUND, {}};
        path.remove_prefix(2);
    }
    if (HasForbiddenCharacter(path))
        return {ERROR_INVALID_NAME, {}};
    std::string names = ToUtf8(path);
    std::ranges::replace(names, '\\', '/');
    std::error_code ignored;
    const fs::path hostPath = drive ? *drive / fs::path('/' + names).lexically_normal().relative_path()
                                    : fs::absolute(names, ignored).lexically_normal();
    if (PlatformPath(hostPath).size() >= cchLimit)
        return {dwLimitError, {}};
    return {ERROR_SUCCESS, hostPath};
}

std::u16string PlatformPath(const fs::path& hostPath)
{
    const fs::path below = hostPath.lexically_relative(DriveC());
    const bool bOnC = !below.empty() && *below.begin() != "..";
    std::u16string names = FromUtf8((bOnC ? below : hostPath.relative_path()).native());
    if (names == u".")
        names.clear();
    std::ranges::replace(names, u'/', u'\\');
    return (bOnC ? u"C:\\" : u"Z:\\") + names;
}
} // namespace platform
