// The process environment, read and changed under one lock: the C library's own functions offer none.
#pragma once

#include <optional>
#include <string>

namespace platform
{
// The variable's value in UTF-8; nothing when it is not set.
std::optional<std::string> EnvironmentText(const char* szName);
} // namespace platform
