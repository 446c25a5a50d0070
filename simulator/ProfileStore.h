// The profiles of one adapter, a file each.
#pragma once

#include "simulator/ProfileReader.h"

#include <windows.h>

#include <filesystem>
#include <optional>
#include <vector>

namespace simulator
{
struct StoredProfile
{
    CWideString name;
    CWideString text;
    DWORD dwFlags;
    std::filesystem::path file;
};

// UTF-8 such that reading the file gives back exactly the text. Nothing when the text holds a lone surrogate: it has no such
// form, and a substitute would alter it.
std::optional<std::string> EncodeFile(CWideView text);

// Works on the folder as it is at each call; the caller holds a CServiceLock.
// Failures of the file system are thrown as CFileError.
class CProfileStore
{
public:
    CProfileStore(const std::filesystem::path& serviceFolder, const GUID& guid);

    // Of several files with one profile name the one that the service itself would have written counts, else the first in
    // the order of the file names.
    std::optional<StoredProfile> Find(CWideView name);

    // Every profile that a name finds, in the order of the file names.
    std::vector<StoredProfile> All();

    // Afterwards either the old profile is there, whole, or the new one. Throws ERROR_ALREADY_EXISTS when the profile
    // exists and bOverwrite is false.
    void Store(CWideView name, std::string_view encodedText, DWORD dwFlags, bool bOverwrite);

private:
    std::optional<StoredProfile> ReadProfile(const std::filesystem::path& file);
    std::vector<StoredProfile> ReadFolder();
    std::filesystem::path FreeFile(CWideView name) const;

    std::filesystem::path m_serviceFolder;
    std::filesystem::path m_folder;
    CProfileReader m_reader;
};
} // namespace simulator
