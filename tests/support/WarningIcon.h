#pragma once

#include <windows.h>

namespace tests
{
// What the control of a message box holds as the icon of a warning.
LRESULT WarningIcon();
} // namespace tests
