// The platform's error codes for what the machine's own calls report.
#pragma once

#include <windows.h>

#include <filesystem>

namespace platform
{
// The code for an errno value that concerns an open handle.
DWORD ErrorFromErrno(int nErrno) noexcept;

// The code for an errno value that concerns a path: a missing last component and a missing folder on the way to it are
// different errors.
DWORD PathError(int nErrno, const std::filesystem::path& hostPath);
} // namespace platform
