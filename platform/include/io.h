// Low-level file queries of the C run-time.
#pragma once

#include "windef.h"

// 0 when the file or folder exists (asked with mode 0, the only one here); -1 with errno otherwise.
int _waccess(const WCHAR* szPath, int nMode);
