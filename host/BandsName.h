// The bands of a wireless profile in words.
#pragma once

#include "values/WideText.h"

#include <string>

// "5 GHz": what the settings dialog takes for the profile's bands.
std::string BandsName(const CWideString& strProfile);
