// Where temporary files go.
#pragma once

#include "host/HostError.h"

// A path of the name in the folder for them. Throws CHostError when there is no such folder.
inline std::filesystem::path TemporaryFile(const std::string& strName)
{
    std::error_code error;
    const std::filesystem::path folder = std::filesystem::temp_directory_path(error);
    if (error)
        throw CHostError("the environment names no folder for temporary files: " + error.message());
    return folder / strName;
}
