// The one header that product code includes for the platform's base types, kernel, registry and user interface.
#pragma once

#include "widecrt.h"
#include "winbase.h"
#include "windef.h"
#include "winerror.h"
#include "winnls.h"
#include "winreg.h"
#include "winuser.h"
