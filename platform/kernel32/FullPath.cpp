// Paths as the platform understands them, before any file is looked at.
#include "platform/kernel32/Paths.h"
#include "platform/kernel32/Unicode.h"

#include <algorithm>
#include <vector>

namespace platform
{
namespace
{
constexpr bool IsSeparator(char16_t unit)
{
    return unit == u'\\' || unit == u'/';
}

std::u16string CurrentFolder()
{
    std::error_code ignored;
    return PlatformPath(std::filesystem::current_path(ignored));
}

// The path with what a relative one leaves out put in front: "X:" and all names.
std::u16string Absolute(std::u16string_view path)
{
    if (path.size() >= 2 && path[1] == u':')
    {
        const auto rest = path.substr(2);
        std::u16string drive{UpperOf(path[0]), u':'};
        if (!rest.empty() && IsSeparator(rest[0]))
            return drive.append(rest);
        // Other drives have no current folder here but their root.
        const std::u16string current = CurrentFolder();
        return std::u16string(current.starts_with(drive) ? current : drive).append(u"\\").append(rest);
    }
    if (!path.empty() && path[0] == u'/')
        return std::u16string(u"Z:").append(path);
    const std::u16string current = CurrentFolder();
    if (!path.empty() && IsSeparator(path[0]))
        return current.substr(0, 2).append(path);
    return current + u'\\' + std::u16string(path);
}

// What the platform takes of a name: inside a path a single dot at its end goes, at the end of the path all dots and
// blanks.
std::u16string_view Trimmed(std::u16string_view name, bool bLast)
{
    if (!bLast)
    {
        const bool bOneDot = name.size() > 1 && name.back() == u'.' && name[name.size() - 2] != u'.';
        return bOneDot ? name.substr(0, name.size() - 1) : name;
    }
    const auto uEnd = name.find_last_not_of(u". ");
    return uEnd == name.npos ? std::u16string_view() : name.substr(0, uEnd + 1);
}
} // namespace

std::u16string FullPath(std::u16string_view platformPath)
{
    const std::u16string absolute = Absolute(platformPath);
    std::vector<std::u16string_view> names;
    std::u16string_view rest = std::u16string_view(absolute).substr(2);
    while (!rest.empty())
    {
        const auto cchName = std::min(rest.find_first_of(u"\\/"), rest.size());
        const auto name = rest.substr(0, cchName);
        const bool bLast = cchName == rest.size();
        rest.remove_prefix(std::min(cchName + 1, rest.size()));
        if (name == u"..")
        {
            if (!names.empty())
                names.pop_back();
        }
        else if (const auto trimmed = Trimmed(name, bLast); !trimmed.empty() && name != u".")
            names.push_back(trimmed);
    }
    std::u16string full = absolute.substr(0, 2);
    for (const auto& name : names)
        full.append(u"\\").append(name);
    if (names.empty() || IsSeparator(absolute.back()))
        full += u'\\';
    return full;
}
} // namespace platform
