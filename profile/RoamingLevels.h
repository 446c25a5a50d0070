// The levels of Advanced Roaming: the number that stands in a profile, the text that the settings dialog shows for it, and
// its English name for whoever names levels without a dialog.
#pragma once

#include "resources/resource.h"

#include <windows.h>

struct RoamingLevel
{
    LONG lOption;
    UINT uTextId;
    const char* szName;
};

// The dialog lists them in this order; the first is shown for a number that is none of them.
inline constexpr RoamingLevel roamingLevels[] = {
    {0, IDS_ROAMING_DEFAULT, "Default"}, {1, IDS_ROAMING_VERY_LOW, "Very Low"}, {2, IDS_ROAMING_LOW, "Low"},
    {3, IDS_ROAMING_NORMAL, "Normal"},   {4, IDS_ROAMING_HIGH, "High"},         {5, IDS_ROAMING_VERY_HIGH, "Very High"},
};
