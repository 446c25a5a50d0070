// The entries that a self-registering server exports.
#pragma once

#include "objbase.h"

extern "C"
{
    PLATFORM_EXPORT HRESULT WINAPI DllRegisterServer();
    PLATFORM_EXPORT HRESULT WINAPI DllUnregisterServer();
}
