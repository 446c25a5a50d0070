// The roaming level list of the settings dialog.
#pragma once

#include <windows.h>

// Fills the list with the levels, in their order, and selects the one of the option (the first when it is none of them).
void ShowRoamingOption(HWND hwndDialog, LONG lRoamingOption);

// Stores the selected level; an unselected list leaves the option as it is.
void ReadRoamingOption(HWND hwndDialog, LONG* plRoamingOption);

// The list can be used exactly while Advanced Roaming is checked.
void EnableRoamingOption(HWND hwndDialog);
