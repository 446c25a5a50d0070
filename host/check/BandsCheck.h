// The bands of a profile, which stand in the platform's own part of it.
#pragma once

#include "host/check/Findings.h"

void CheckBands(const CElementMap& map, CFindings& findings);
