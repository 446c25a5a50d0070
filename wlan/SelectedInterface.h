// The interface to which driver requests go: one for the process, without a lock.
#pragma once

#include <windows.h>

// Selects the interface of this GUID text, compared as written with those of the machine. 0 when it is selected, -1 when
// the machine has no such interface (the selection is then unchanged), -2 when the text does not convert. Throws
// std::bad_alloc.
LONG SelectIhvInterface(const WCHAR* szGuid);

// The selected interface; the null GUID until one was selected.
const GUID& SelectedInterfaceGuid();
