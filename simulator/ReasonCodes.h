// Why a profile was refused, with the platform's values. Not every SDK's <wlanapi.h> declares them, hence own names.
#pragma once

#include <windows.h>

namespace simulator
{
inline constexpr DWORD reasonSuccess = 0;
inline constexpr DWORD reasonInvalidProfileSchema = 0x80001;
inline constexpr DWORD reasonInvalidProfileName = 0x80003;
} // namespace simulator
