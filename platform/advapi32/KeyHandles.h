// The handles of open keys.
#pragma once

#include "platform/advapi32/RegistryTree.h"

#include <optional>

namespace platform::registry
{
struct OpenKey
{
    Path path;
    REGSAM samDesired = 0;
    bool bPredefined = false; // has the rights that the key leaves at each operation
    bool bDeleted = false;
};

// All functions may be called from any thread.

// A new handle; values are never used twice, so that a closed one is recognised.
HKEY AddHandle(Path path, REGSAM samDesired);

// What an open or predefined handle stands for; nothing for anything else.
std::optional<OpenKey> FindHandle(HKEY hKey);

// False for what is not an open handle; predefined handles stay open.
bool CloseHandleOfKey(HKEY hKey);

// The key is gone: its handles stay gone when a key of the same name is created later. A deletion and creation by
// another process between two operations goes unseen: its handles then mean the new key.
void MarkHandlesDeleted(const Path& path);
} // namespace platform::registry
