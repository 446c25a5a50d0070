#include "platform/kernel32/Paths.h"

#include "platform/kernel32/Environment.h"
#include "platform/kernel32/Failure.h"
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
    const fs::path programs = fs::read_symlink("/proc/self/exe", ignored).parent_path();
    const std::string home = EnvironmentText("HOME").value_or("");
    // A build has its state beside the program; an installed program's folder is not its user's to write to.
    const bool bOfUser = configured.empty() && !home.empty() && !fs::exists(programs / "CMakeCache.txt", ignored);
    fs::path root = programs / "platform-root";
    if (!configured.empty())
        root = fs::absolute(configured, ignored);
    else if (bOfUser)
        root = fs::path(EnvironmentText("XDG_STATE_HOME").value_or(home + "/.local/state")) / "korihvui";
    fs::create_directories(root / "drive_c/windows", ignored);
    // That folder is the system's then, as the platform has it: there the module looks for its languages.
    if (bOfUser)
        fs::create_directory_symlink(programs, root / "drive_c/windows/system32", ignored);
    fs::create_directories(root / "drive_c/windows/system32", ignored);
    // The real name, so that names which the system reports are recognised as lying below it.
    const fs::path canonical = fs::weakly_canonical(root, ignored);
    return canonical.empty() ? root : canonical;
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

fs::path RealPath(LPCWSTR szPath, std::size_t cchLimit, DWORD dwLimitError)
{
    std::u16string_view path(szPath ? szPath : u"");
    Require(path.find_first_not_of(u' ') != path.npos, ERROR_PATH_NOT_FOUND);
    const bool bDrive = path.size() >= 2 && path[1] == u':';
    const char16_t drive = bDrive ? UpperOf(path[0]) : u'Z';
    Require(drive == u'C' || drive == u'Z', ERROR_PATH_NOT_FOUND);
    path.remove_prefix(bDrive ? 2 : 0);
    constexpr std::u16string_view forbidden = u"<>:\"|?*";
    Require(std::ranges::none_of(path, [&](char16_t unit) { return unit < 0x20 || forbidden.find(unit) != path.npos; }),
            ERROR_INVALID_NAME);
    std::string names = ToUtf8(path);
    std::ranges::replace(names, '\\', '/');
    std::error_code ignored;
    fs::path real = fs::absolute(bDrive ? '/' + names : names, ignored).lexically_normal();
    if (drive == u'C')
        real = DriveC() / real.relative_path();
    Require(PlatformPath(real).size() < cchLimit, dwLimitError);
    return real;
}

std::u16string PlatformPath(const fs::path& realPath)
{
    const fs::path below = realPath.lexically_relative(DriveC());
    const bool bOnC = !below.empty() && *below.begin() != "..";
    std::u16string names = FromUtf8((bOnC ? below : realPath.relative_path()).native());
    if (names == u".")
        names.clear();
    std::ranges::replace(names, u'/', u'\\');
    return (bOnC ? u"C:\\" : u"Z:\\") + names;
}
} // namespace platform
