// The one header that product code includes for the platform's base types, kernel, registry and user interface.
#pragma once

#include "windef.h"
#include "winerror.h"
#include "winbase.h"
#include "winnls.h"
#include "winreg.h"
#include "winuser.h"
#include "widecrt.h"
