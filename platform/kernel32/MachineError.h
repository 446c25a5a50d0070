// The platform's error codes for what the machine's own calls report.
#pragma once

#include <windows.h>

#include <filesystem>

namespace platform
{
// The code for an errno value that concerns an open handle.
DWORD ErrorFromErrno(int nErrno) noexcept;

// Throws the failure that errno tells of when the machine's call has failed. Of a path, a missing last component and a missing
// folder on the way to it are different failures.
void RequireDone(int nResult);
void RequireDone(int nResult, const std::filesystem::path& realPath);
} // namespace platform
