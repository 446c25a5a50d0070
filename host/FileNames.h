// Names of files as the command line and the output have them, which is UTF-8.
#pragma once

#include <filesystem>
#include <string>

inline std::string NameOf(const std::filesystem::path& file)
{
    const std::u8string strName = file.u8string();
    return std::string(strName.begin(), strName.end());
}

inline std::filesystem::path PathOf(const std::string& strUtf8)
{
    return std::filesystem::path(std::u8string(strUtf8.begin(), strUtf8.end()));
}
