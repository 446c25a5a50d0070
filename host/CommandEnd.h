// How a command ends that has told everything itself.
#pragma once

inline constexpr int exitRefused = 1;
inline constexpr int exitUsage = 2;

// Thrown by a command's work: the program ends with the code and says nothing more.
struct CommandEnd
{
    int nExitCode;
};
