// The vendor's security of a profile.
#pragma once

#include "host/check/VendorElements.h"

void CheckSecurity(CVendorElements& elements, CFindings& findings);
