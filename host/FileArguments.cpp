#include "host/FileArguments.h"

#include "host/HostError.h"

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
        if (LiesIn(other.place, file))
            throw CHostError(std::string(argument.szOption) + " would write what " + other.szOption + " uses");
}
} // namespace

void RequireSeparateFiles(const CLI::App& command)
{
    std::vector<UsedPlace> used;
    for (const FileArgument& argument : fileArguments)
    {
        const CLI::Option* pOption = command.get_option_no_throw(argument.szOption);
        const std::string strName = pOption && !pOption->empty() ? pOption->as<std::string>() : std::string();
        // Of what may be written, "-" is standard output.
        if (strName.empty() || (argument.bWritten && strName == "-"))
            continue;
        const fs::path file = *argument.szInside ? PathOf(strName) / argument.szInside : PathOf(strName);
        if (argument.bWritten)
            Naming(strName, [&] { RequireSeparate(argument, file, used); });
        used.push_back({argument.szOption, file});
    }
}
