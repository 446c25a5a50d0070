// Low-level file queries of the C run-time.
#pragma once

#include "windef.h"

// 0 when the file or folder exists (mode 0) or grants the access asked for; -1 with errno otherwise.
int _waccess(const WCHAR* szPath, int nMode);
