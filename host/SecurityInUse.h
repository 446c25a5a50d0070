// The security that a profile uses.
#pragma once

#include "host/Profile.h"
#include "public/Dot11ExtUI.h"

struct SecurityInUse
{
    bool bExtensions;    // the extension authenticates, not the platform
    bool bSelected;      // with the property that it offers
    std::string strName; // "CCKM with AES"; UTF-8
};

// The extension answers for its part of the profile. Where the profile has none the extension would answer with its
// defaults, which nobody has chosen: such a profile uses what the platform's part of it names. Throws CHostError.
SecurityInUse SecurityInUseOf(IDot11ExtUI& root, const CProfile& profile);
