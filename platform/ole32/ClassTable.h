// The class objects that the process registered for itself.
#pragma once

#include <objbase.h>

namespace platform
{
// The registered class object with a reference of its own, or null.
IUnknown* FindClassObject(REFCLSID rclsid);
} // namespace platform
