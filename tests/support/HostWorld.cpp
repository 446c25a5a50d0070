#include "tests/support/HostWorld.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tests
{
namespace
{
constexpr const char* keysOfSamples[] = {"amber-lantern-47-otter", "copper-kettle-93-finch", "another sample passphrase",
                                         "sample passphrase of no real network"};
}

CHostWorld::CHostWorld()
{
    std::filesystem::copy(SAMPLES_FOLDER, m_folder.Path(), std::filesystem::copy_options::recursive);
    std::filesystem::copy_file(File(officeStored), File(officeFile));
}

std::string CHostWorld::Condensed(const std::string& strName) const
{
    std::string strText = ReadBytes(File(strName));
    std::erase_if(strText, [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; });
    return strText;
}

ProgramRun CHostWorld::Host(const std::vector<std::string>& arguments) const
{
    std::vector<std::string> placed;
    for (const std::string& strArgument : arguments)
        placed.push_back(strArgument.starts_with('@') ? File(strArgument.substr(1)).string() : strArgument);
    ProgramRun run = RunProgram("korihost", placed);
    for (const char* szKey : keysOfSamples)
        EXPECT_EQ(std::string::npos, (run.strOutput + run.strErrors).find(szKey)) << "a key shows: " << szKey;
    return run;
}

std::map<std::string, std::string> CHostWorld::Snapshot() const
{
    std::map<std::string, std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(m_folder.Path()))
        if (entry.is_regular_file() && entry.path().filename() != "service.lock")
            files[entry.path().lexically_relative(m_folder.Path()).generic_string()] = ReadBytes(entry.path());
    return files;
}
} // namespace tests
