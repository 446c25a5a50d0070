// The names of the result codes that the module and its callers meet.
#pragma once

#include <windows.h>

// The code's name as it is written in source texts; null for a code without a row.
const WCHAR* FindResultName(HRESULT hr);
