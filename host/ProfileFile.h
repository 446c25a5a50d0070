// A wireless profile in a file, in the form that the platform exports.
#pragma once

#include "host/ProfileText.h"
#include "host/VendorPlaces.h"

#include <filesystem>
#include <optional>

class CProfileFile
{
public:
    // Throws CHostError, with the file's name, for whatever is not a readable wireless profile of at most 16 MiB.
    explicit CProfileFile(std::filesystem::path file);

    const std::filesystem::path& File() const
    {
        return m_file;
    }
    // The name of the profile itself.
    const CWideString& ProfileName() const
    {
        return m_strName;
    }
    CWideView Text() const
    {
        return m_profile.strText;
    }
    // Everything as it would be written.
    std::string Bytes() const
    {
        return EncodeProfile(m_profile);
    }

    std::optional<CWideString> VendorText(VendorPlace place) const;

    // Throws CHostError, and leaves everything as it was, when the result would be no profile any more.
    void PutVendorText(VendorPlace place, CWideView vendorText);

private:
    std::filesystem::path m_file;
    ProfileText m_profile;
    CWideString m_strName;
};

// True when both names stand for one file that exists.
bool IsSameFile(const std::filesystem::path& left, const std::filesystem::path& right);
