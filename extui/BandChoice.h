// The band check-boxes of the settings dialog and the wireless profile behind them.
#pragma once

#include <windows.h>

// Shows the bands of the profile that the context names, as far as its interface is capable of them. A null context
// shows them as the template makes them.
void ShowBands(HWND hwndDialog, const void* pConnectionContext);

// Whether at least one band is checked.
bool IsAnyBandChecked(HWND hwndDialog);

// Writes the checked bands into the wireless profile. A profile that cannot be read, rewritten or stored stays as it is.
void StoreBands(HWND hwndDialog, const void* pConnectionContext);
