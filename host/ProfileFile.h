// A wireless profile in a file, in the form that the platform exports.
#pragma once

#include "host/Profile.h"

#include <filesystem>

class CProfileFile : public CProfile
{
public:
    // Throws CHostError, with the file's name, for whatever is not a readable wireless profile of at most 16 MiB.
    explicit CProfileFile(std::filesystem::path file);

    const std::filesystem::path& File() const
    {
        return m_file;
    }

    void Store() const override;

private:
    std::filesystem::path m_file;
};
