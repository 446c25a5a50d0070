// The connection settings of a profile.
#pragma once

#include "host/check/VendorElements.h"

void CheckConnection(CVendorElements& elements, CFindings& findings);
