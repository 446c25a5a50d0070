// The Rapido check-box of the settings dialog and the driver behind it.
#pragma once

#include <windows.h>

// Builds the list of adapters, once in the process; interfaces added later are not seen. Throws std::bad_alloc, and then
// builds it at the next call.
void NeedAdapterList();

// Shows the field where one of the adapters is the maker's and its driver has the feature; elsewhere the check-box is
// unchecked and disabled.
void ShowRapido(HWND hwndDialog, LONG lRapido);
