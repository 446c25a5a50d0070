#include "platform/kernel32/Paths.h"

#include "platform/kernel32/Environment.h"
#include "platform/kernel32/Unicode.h"

#include <algorithm>
#include <map>
#include <mutex>

namespace platform
{
namespace fs = std::filesystem;

namespace
{
constexpr std::string_view drivePrefix = "drive_";

constexpr bool IsLetter(char16_t unit)
{
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z');
}

constexpr char LowerLetter(char16_t letter)
{
    return static_cast<char>(letter | 0x20);
}

constexpr bool HasDrive(std::u16string_view path)
{
    return path.size() >= 2 && IsLetter(path[0]) && path[1] == u':';
}

constexpr bool IsSeparator(char16_t unit)
{
    return unit == u'\\' || unit == u'/';
}

fs::path DriveFolder(char16_t letter)
{
    const char lower = LowerLetter(letter);
    if (lower == 'z')
        return "/";
    return RootFolder() / (std::string(drivePrefix) + lower);
}

// A path below a folder that no ".." leads out of, as nothing leads above the root of a drive.
fs::path Below(const fs::path& folder, std::u16string_view rest)
{
    std::string text = ToUtf8(rest);
    std::replace(text.begin(), text.end(), '\\', '/');
    // Made absolute first: the normal form of an absolute path has no ".." left at its front.
    const fs::path normal = fs::path("/" + text).lexically_normal();
    return folder / normal.relative_path();
}

fs::path MakeRootFolder(const std::string& configured)
{
    std::error_code ignored; // a root that cannot be made shows as missing folders in the operations that follow
    fs::path root = configured.empty() ? fs::read_symlink("/proc/self/exe", ignored).parent_path() / "platform-root"
                                       : fs::absolute(configured, ignored);
    fs::create_directories(root / "drive_c/windows/system32", ignored);
    // The real name, so that names which the system reports are recognised as lying below it.
    fs::path canonical = fs::weakly_canonical(root, ignored);
    return canonical.empty() ? root : canonical;
}
} // namespace

const fs::path& RootFolder()
{
    // Kept by the variable's value: a program may choose another root later, and earlier answers stay valid.
    static auto* const pLock = new std::mutex;
    static auto* const pRoots = new std::map<std::string, fs::path>;
    const std::string configured = EnvironmentText("PLATFORM_ROOT").value_or("");
    const std::lock_guard lock(*pLock);
    const auto found = pRoots->find(configured);
    if (found != pRoots->end())
        return found->second;
    return pRoots->emplace(configured, MakeRootFolder(configured)).first->second;
}

fs::path HostPath(std::u16string_view platformPath)
{
    if (HasDrive(platformPath))
        return Below(DriveFolder(platformPath[0]), platformPath.substr(2));
    if (!platformPath.empty() && platformPath[0] == u'/')
        return Below("/", platformPath);
    std::error_code ignored;
    std::u16string current = PlatformPath(fs::current_path(ignored));
    if (!platformPath.empty() && IsSeparator(platformPath[0]))
        return Below(DriveFolder(current[0]), platformPath);
    current.append(u"\\").append(platformPath);
    return Below(DriveFolder(current[0]), std::u16string_view(current).substr(2));
}

std::u16string PlatformPath(const fs::path& hostPath)
{
    std::error_code ignored;
    const fs::path absolute = fs::absolute(hostPath, ignored).lexically_normal();
    fs::path rest = absolute.relative_path();
    char16_t letter = u'Z';

    const fs::path below = absolute.lexically_relative(RootFolder());
    const std::string drive = below.empty() ? std::string() : below.begin()->string();
    if (drive.size() == drivePrefix.size() + 1 && drive.starts_with(drivePrefix))
    {
        letter = static_cast<char16_t>(drive.back() & ~0x20);
        rest = below.lexically_relative(drive);
        if (rest == ".")
            rest.clear();
    }

    std::u16string path{letter, u':', u'\\'};
    path += FromUtf8(rest.native());
    std::replace(path.begin(), path.end(), u'/', u'\\');
    return path;
}
} // namespace platform
