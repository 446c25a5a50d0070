// The table of loaded modules.
#pragma once

#include "platform/kernel32/Module.h"

#include <mutex>

namespace platform
{
// Held by the loader while it loads and unloads, entry points included; the same thread may take it again.
std::recursive_mutex& LoaderLock();

// The module behind a handle, the program for a null one; null when there is none. The caller holds the loader's lock.
CModule* FindModule(HMODULE hModule);
} // namespace platform
