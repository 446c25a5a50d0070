// What a wireless profile uses by itself, without any vendor's authentication.
#pragma once

#include "values/WideText.h"

struct StandardSecurity
{
    CWideString strAuthentication; // as the profile names it; empty when it names none
    CWideString strEncryption;
};

// The profile must be a well-formed document.
StandardSecurity StandardSecurityOf(CWideView profile);
