// Style bits and icons that only the engine and what draws it need to know.
#pragma once

#include "platform/user32/Window.h"

namespace platform::user32
{
inline constexpr DWORD BS_TYPEMASK = 0x0F;
inline constexpr DWORD BS_DEFPUSHBUTTON = 1;
inline constexpr DWORD BS_GROUPBOX = 7;

inline constexpr DWORD SS_ICON = 3;
inline constexpr DWORD SS_NOPREFIX = 0x80;

inline constexpr DWORD CBS_TYPEMASK = 3;
inline constexpr DWORD CBS_DROPDOWN = 2;
inline constexpr DWORD CBS_SORT = 0x0100;

inline constexpr WORD IDI_ERROR = 32513;
inline constexpr WORD IDI_WARNING = 32515;

inline bool IsButton(const Window& control, DWORD dwType) noexcept
{
    return control.windowClass == WindowClass::Button && (control.dwStyle & BS_TYPEMASK) == dwType;
}

inline bool IsPushButton(const Window& control) noexcept
{
    return control.windowClass == WindowClass::Button && (control.dwStyle & BS_TYPEMASK) <= BS_DEFPUSHBUTTON;
}

// A combo box whose field takes text from the keyboard.
inline bool HasField(const Window& control) noexcept
{
    return control.windowClass == WindowClass::ComboBox && (control.dwStyle & CBS_TYPEMASK) == CBS_DROPDOWN;
}

// How many entries a list box shows at a time.
inline int VisibleEntries(const Window& list) noexcept
{
    constexpr int unitsPerEntry = 8;
    return list.place.cy < 2 * unitsPerEntry ? 1 : list.place.cy / unitsPerEntry;
}
} // namespace platform::user32
