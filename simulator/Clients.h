// What clients of this process hold: handles and memory blocks. Any thread may call.
#pragma once

#include <windows.h>

#include <cstddef>

namespace simulator
{
// Throws ERROR_REMOTE_SESSION_LIMIT_EXCEEDED when too many are open. A value is never given twice.
HANDLE OpenClient();

// Both throw ERROR_INVALID_HANDLE for null and for a handle that is not open.
void RequireClient(HANDLE hClient);
void CloseClient(HANDLE hClient);

LONG LiveClients();

// Zeroed memory for the client, given back with FreeBlock.
void* AllocateBlock(std::size_t cb);

// Passes over null and over what is not a live block.
void FreeBlock(void* pBlock) noexcept;

LONG LiveBlocks();
} // namespace simulator
