// Copies of the samples in a temporary folder, for cases that let the host program work on them.
#pragma once

#include "tests/support/TestFolder.h"
#include "tests/support/TestProgram.h"

#include <map>

namespace tests
{
inline constexpr const char* rapidoMachine = "service/one-adapter-rapido";
inline constexpr const char* rapidoAdapter = "5b7d2c10-8e46-4f3a-9d21-c07a64e1f3b8";

class CHostWorld
{
public:
    CHostWorld();

    std::filesystem::path File(const std::string& strName) const
    {
        return m_folder.Path() / strName;
    }
    // What a file holds, without white space: the same on every version of the document component.
    std::string Condensed(const std::string& strName) const;

    // Runs the host program; "@" at the beginning of an argument stands for the folder. Fails the case when a key of one
    // of the samples shows.
    ProgramRun Host(const std::vector<std::string>& arguments) const;

    // Every file's bytes, but for what the service makes for its own use.
    std::map<std::string, std::string> Snapshot() const;

private:
    CTestFolder m_folder;
};

// A profile "Office" as a file, and where the machine has it stored.
inline constexpr const char* officeFile = "office.xml";
inline constexpr const char* officeStored =
    "service/one-adapter-rapido/profiles/5b7d2c10-8e46-4f3a-9d21-c07a64e1f3b8/Wi-Fi-Office.xml";
} // namespace tests
