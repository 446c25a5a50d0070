// How the functions of the kernel and the registry end early: with the platform's code for what is wrong.
#pragma once

#include <windows.h>

namespace platform
{
struct Failure
{
    DWORD dwError;
};

// Throws the failure when the condition does not hold.
inline void Require(bool bCondition, DWORD dwError)
{
    if (!bCondition)
        throw Failure{dwError};
}
} // namespace platform
