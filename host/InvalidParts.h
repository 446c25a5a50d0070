// What the extension makes of the parts of a profile that it does not take as they are, before and after a change. A line for
// each; nothing where there is no such part.
#pragma once

#include "host/Profile.h"
#include "public/Dot11ExtUI.h"

// "office.xml: before: encryption is WEP104, allowed WEP, TKIP, AES, None: taken as CCKM with AES"
std::string InvalidPartsBefore(const CProfile& profile);
// What became of them: "office.xml: after: CCKM with AES". Throws CHostError.
std::string InvalidPartsAfter(IDot11ExtUI& root, const CProfile& before, const CProfile& changed);
