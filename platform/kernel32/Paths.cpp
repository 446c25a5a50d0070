#include "platform/kernel32/Paths.h"

#include "platform/kernel32/Environment.h"
#include "platform/kernel32/Unicode.h"

#include <algorithm>
#include <map>
#include <mutex>

#include <sys/stat.h>

namespace platform
{
namespace fs = std::filesystem;

namespace
{
constexpr std::string_view drivePrefix = "drive_";

constexpr char LowerLetter(char16_t letter)
{
    return static_cast<char>(letter | 0x20);
}

fs::path DriveFolder(char16_t letter)
{
    const char lower = LowerLetter(letter);
    if (lower == 'z')
        return "/";
    return RootFolder() / (std::string(drivePrefix) + lower);
}

bool Exists(const fs::path& path)
{
    struct stat status = {};
    return lstat(path.c_str(), &status) == 0;
}

// The name in the folder that differs in case only; the name itself when there is none.
fs::path NameInFolder(const fs::path& folder, const fs::path& name)
{
    const std::u16string folded = FoldCase(FromUtf8(name.native()));
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error))
    {
        auto present = entry->path().filename();
        if (FoldCase(FromUtf8(present.native())) == folded)
            return present;
    }
    return name;
}

// The file below the folder, its names found in whatever case they are written.
fs::path FindBelow(const fs::path& folder, const fs::path& names)
{
    fs::path found = folder / names;
    if (Exists(found))
        return found;
    found = folder;
    for (const auto& name : names)
    {
        // A final separator shows as an empty name.
        found /= name.empty() || Exists(found / name) ? name : NameInFolder(found, name);
    }
    return found;
}

fs::path HostNames(std::u16string_view fullPath)
{
    std::string text = ToUtf8(fullPath.substr(std::min<std::size_t>(3, fullPath.size())));
    std::replace(text.begin(), text.end(), '\\', '/');
    return text;
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
    return HostPathOfFull(FullPath(platformPath), CaseOf(platformPath));
}

NameCase CaseOf(std::u16string_view platformPath)
{
    return platformPath.starts_with(u'/') ? NameCase::AsWritten : NameCase::Any;
}

fs::path HostPathOfFull(std::u16string_view fullPath, NameCase nameCase)
{
    const fs::path drive = DriveFolder(fullPath[0]);
    const fs::path names = HostNames(fullPath);
    switch (nameCase)
    {
    case NameCase::AsWritten:
        return drive / names;
    case NameCase::LastAsWritten:
        return FindBelow(drive, names.parent_path()) / names.filename();
    case NameCase::Any:
        break;
    }
    return FindBelow(drive, names);
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
