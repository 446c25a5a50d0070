// The module's registration as an in-process COM server.
#pragma once

#include <windows.h>

// Writes the registration of the module's class below HKEY_CLASSES_ROOT\CLSID, or removes it. S_OK when every step
// succeeded, S_FALSE otherwise; what was written or deleted before a failing step stays so.
HRESULT SelfRegister(bool bUnregister);
