// The profiles of one adapter, a file each.
#pragma once

#include "simulator/ProfileReader.h"
#include "simulator/Text.h"

#include <windows.h>

#include <filesystem>
#include <optional>
#include <vector>

namespace simulator
{
struct StoredProfile
{
    WideText name;
    WideText text;
    DWORD dwFlags;
    std::filesystem::path file;
};

// Works on the folder as it is at each call; the caller holds a CServiceLock, the writing kind for Store and Delete.
// Failures of the file system are thrown as CServiceError with the platform's code.
class CProfileStore
{
public:
    CProfileStore(const std::filesystem::path& serviceFolder, const GUID& guid);

    // Every readable profile in the order of the file names. Of several files with one profile name the one that the
    // service itself would have written comes first and counts; the others are left out.
    std::vector<StoredProfile> List();
    std::optional<StoredProfile> Find(WideView name);

    // Afterwards either the old profile is there, whole, or the new one. Throws ERROR_ALREADY_EXISTS when the profile
    // exists and bOverwrite is false.
    void Store(WideView name, std::string_view encodedText, DWORD dwFlags, bool bOverwrite);

    // Deletes every file that holds the profile; false when there was none.
    bool Delete(WideView name);

private:
    std::optional<StoredProfile> ReadProfile(const std::filesystem::path& file);
    std::vector<StoredProfile> ReadFolder();
    std::filesystem::path FreeFile(WideView name) const;

    std::filesystem::path m_serviceFolder;
    std::filesystem::path m_folder;
    CProfileReader m_reader;
};
} // namespace simulator
