#include "host/ProfilePaths.h"

#include "host/FileNames.h"
#include "host/check/ProfileFiles.h"

namespace
{
constexpr const char* optionName = "PATH";
}

CLI::Option* AddPathArguments(CLI::App& command, std::vector<std::string>& paths)
{
    return command
        .add_option(optionName, paths,
                    "Profiles as the platform exports them: files, folders of which all *.xml are taken, - for standard input")
        ->type_name("");
}

bool AreOneFile(const std::vector<std::string>& paths)
{
    std::error_code ignored;
    return paths.size() == 1 && !std::filesystem::is_directory(PathOf(paths.front()), ignored);
}

std::vector<std::filesystem::path> FilesOf(const std::vector<std::string>& paths)
{
    std::vector<std::filesystem::path> named;
    for (const std::string& strPath : paths)
        named.push_back(PathOf(strPath));
    std::vector<std::filesystem::path> files;
    CProfileFiles source(std::move(named));
    while (auto file = source.Next())
        files.push_back(std::move(*file));
    if (files.empty())
        throw CLI::ValidationError(optionName, "there is no profile file in " + paths.front());
    return files;
}

CProfileFile OpenProfile(const std::filesystem::path& file)
{
    return file == standardStream ? CProfileFile::OfStandardInput() : CProfileFile(file);
}
