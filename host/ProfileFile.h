// A wireless profile in a file, in the form that the platform exports.
#pragma once

#include "host/Profile.h"

#include <filesystem>

class CProfileFile : public CProfile
{
public:
    // Throws CHostError, with the file's name, for whatever is not a readable wireless profile of at most 16 MiB.
    explicit CProfileFile(std::filesystem::path file);

    // The one that comes through standard input. It cannot be stored.
    static CProfileFile OfStandardInput();

    // Refuses when the file holds something else by now than what was read.
    void Store() const override;

private:
    CProfileFile(std::string strTitle, std::filesystem::path file, std::string strRead);

    std::filesystem::path m_file;
    std::string m_strRead;
};
