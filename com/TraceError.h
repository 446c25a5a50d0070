// The error line of operations that fail: the code and its name come from one place, so that the line can never name
// another code than the one returned.
#pragma once

#include <windows.h>

// Writes the line and returns the code.
HRESULT TraceError(HRESULT hr);
