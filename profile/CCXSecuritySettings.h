// The security choice of an IHV profile: authentication and cipher.
#pragma once

#include "profile/CCXSecurityTokens.h"
#include "values/Bstr.h"

struct CCXSecuritySettings
{
    // Nothing known was read for the field.
    static constexpr DWORD invalid = 0xFFFFFFFFu;

    DWORD auth = invalid;
    DWORD cipher = invalid;

    CCXSecuritySettings() = default;
    explicit CCXSecuritySettings(const WCHAR* szIHVProfile)
    {
        Parse(szIHVProfile);
    }

    // CCKM with WEP.
    void SetDefaults();

    // Fills the record from a profile text, which may be null. What was not found holds the invalid marker; nothing
    // else tells of a failure.
    void Parse(const WCHAR* szIHVProfile);

    // Writes a new profile of the root and the security elements alone; the caller owns it. Null when no document could
    // be made. Throws CAtlException or std::bad_alloc.
    [[nodiscard]] BSTR Serialise() const;

    // Whether the record is still whole after it was written and read back.
    bool IsValid() const;
};
