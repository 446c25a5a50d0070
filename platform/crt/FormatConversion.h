// One conversion of a printf-style wide format: "%-08.3I64X" and its kind.
#pragma once

#include <windows.h>

#include <cstdarg>
#include <cstddef>
#include <optional>

namespace platform
{
enum class ArgumentSize
{
    Default, // 32 bits for numbers; a LONG is that wide, so "l" changes nothing for them
    Short,   // h, as often as it stands there
    Long,    // l, w, L
    Wide,    // ll, I64, 64 bits
    Pointer, // I, z, t: as wide as a pointer
};

struct Conversion
{
    bool bLeft = false;
    bool bZero = false;
    bool bPlus = false;
    bool bBlank = false;
    bool bAlternative = false;
    std::size_t cchWidth = 0;
    std::optional<std::size_t> cchPrecision;
    ArgumentSize size = ArgumentSize::Default;
    WCHAR letter = 0; // 0 when the format ends before it
};

// Variable arguments by reference: a va_list cannot be handed on that way itself where it is an array.
struct Arguments
{
    va_list list;
};

// Reads the conversion behind a percent sign and moves szFormat behind it; widths given as "*" come from the arguments.
Conversion ReadConversion(const WCHAR*& szFormat, Arguments& arguments);
} // namespace platform
