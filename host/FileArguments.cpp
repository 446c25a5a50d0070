#include "host/FileArguments.h"

#include "host/HostError.h"
#include "host/ProfilePaths.h"
#include "host/check/ProfileFiles.h"

namespace
{
namespace fs = std::filesystem;

struct FileArgument
{
    const char* szOption;
    const char* szInside; // the file or folder in the folder that is named; empty for the file that is named
    bool bWritten;
};
// What is only read comes first.
constexpr FileArgument fileArguments[] = {
    {"PROFILE", "", false},
    {"PATH", "", false},
    {"--module", "", false},
    {"--service", "adapters.json", false},
    {"--service", "profiles", false},
    {"--service", "service.lock", false},
    {"--output", "", true},
    {"--service-log", "", true},
    {"--trace", "", true},
};

struct UsedPlace
{
    const char* szOption;
    fs::path place;
};

// Whether it is that place, by whatever name, or lies in it.
bool LiesIn(const fs::path& place, const fs::path& file)
{
    std::error_code ignored;
    const fs::path realPlace = fs::weakly_canonical(fs::absolute(place), ignored);
    for (fs::path part = fs::weakly_canonical(fs::absolute(file), ignored); part.has_relative_path(); part = part.parent_path())
        if (part == realPlace || fs::equivalent(part, realPlace, ignored))
            return true;
    return false;
}

// Of a folder of profiles only these are used.
bool IsProfileOf(const fs::path& folder, const fs::path& file)
{
    CProfileFiles profiles({folder});
    std::error_code ignored;
    for (auto profile = profiles.Next(); profile; profile = profiles.Next())
        if (fs::equivalent(*profile, file, ignored))
            return true;
    return false;
}

bool IsUsed(const UsedPlace& place, const fs::path& file)
{
    std::error_code ignored;
    const bool bFolder = fs::is_directory(place.place, ignored);
    // A profile may have other names, outside of its folder.
    if (bFolder && IsProfileOf(place.place, file))
        return true;
    return !(bFolder && std::string_view(place.szOption) == "PATH") && LiesIn(place.place, file);
}

void RequireWritable(const fs::path& file)
{
    std::error_code ignored;
    const fs::file_status status = fs::status(file, ignored);
    if (!fs::exists(status) && fs::is_symlink(fs::symlink_status(file, ignored)))
        throw CHostError("is a link that leads to no file");
    if (fs::exists(status) && !fs::is_regular_file(status))
        throw CHostError("is not a regular file");
}

void RequireSeparate(const FileArgument& argument, const fs::path& file, const std::vector<UsedPlace>& used)
{
    RequireWritable(file);
    for (const UsedPlace& other : used)
        if (IsUsed(other, file))
            throw CHostError(std::string(argument.szOption) + " would write what " + other.szOption + " uses");
}
} // namespace

void RequireSeparateFiles(const CLI::App& command)
{
    std::vector<UsedPlace> used;
    const char* szAtStandardOutput = nullptr;
    for (const FileArgument& argument : fileArguments)
    {
        const CLI::Option* pOption = command.get_option_no_throw(argument.szOption);
        for (const std::string& strName : pOption ? pOption->results() : CLI::results_t())
        {
            if (strName.empty())
                throw CHostError(std::string(argument.szOption) + " names no file");
            if (strName == standardStream)
            {
                if (argument.bWritten && szAtStandardOutput)
                    throw CHostError(std::string(argument.szOption) + " and " + szAtStandardOutput +
                                     " cannot both go to standard output");
                szAtStandardOutput = argument.bWritten ? argument.szOption : szAtStandardOutput;
                continue;
            }
            const fs::path file = *argument.szInside ? PathOf(strName) / argument.szInside : PathOf(strName);
            if (argument.bWritten)
                Naming(strName, [&] { RequireSeparate(argument, file, used); });
            used.push_back({argument.szOption, file});
        }
    }
}
