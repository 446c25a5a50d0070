// Showing what changed in a profile without showing its keys.
#pragma once

#include "values/WideText.h"

#include <string>

// The difference in the unified form, with the names in its head, or a sentence when there is none to show. Keys do not show.
std::string ChangeReport(const std::string& strBeforeName, CWideView before, const std::string& strAfterName, CWideView after);
