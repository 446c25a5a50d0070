// Telling what a command changed.
#pragma once

#include "values/WideText.h"

#include <string>

// The difference in the unified form, or a sentence when there is none to show. Keys do not show.
std::string ChangeReport(const std::string& strBeforeName, CWideView before, const std::string& strAfterName, CWideView after);
