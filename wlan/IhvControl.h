// Questions to the driver of the selected interface. A driver that does not answer counts as answering no.
#pragma once

#include <windows.h>

// 1 when the driver's vendor description names the maker, else 0.
LONG IsKorvaneInterface();

// The driver's answer to the Rapido question: not 0 when the interface can use both bands that way.
DWORD QueryRapidoCapability();
