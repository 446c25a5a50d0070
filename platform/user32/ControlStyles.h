// Style bits, keys and notification codes that only the engine and what draws it need to know.
#pragma once

#include "platform/user32/Window.h"

namespace platform::user32
{
inline constexpr DWORD BS_TYPEMASK = 0x0F;
inline constexpr DWORD BS_PUSHBUTTON = 0;
inline constexpr DWORD BS_DEFPUSHBUTTON = 1;
inline constexpr DWORD BS_CHECKBOX = 2;
inline constexpr DWORD BS_RADIOBUTTON = 4;
inline constexpr DWORD BS_3STATE = 5;
inline constexpr DWORD BS_AUTO3STATE = 6;
inline constexpr DWORD BS_GROUPBOX = 7;
inline constexpr DWORD BS_AUTORADIOBUTTON = 9;

inline constexpr DWORD SS_TYPEMASK = 0x1F;
inline constexpr DWORD SS_CENTER = 1;
inline constexpr DWORD SS_RIGHT = 2;
inline constexpr DWORD SS_ICON = 3;
inline constexpr DWORD SS_SIMPLE = 11;
inline constexpr DWORD SS_LEFTNOWORDWRAP = 12;
inline constexpr DWORD SS_NOPREFIX = 0x80;

inline constexpr DWORD ES_MULTILINE = 0x0004;
inline constexpr DWORD ES_PASSWORD = 0x0020;
inline constexpr DWORD ES_READONLY = 0x0800;
inline constexpr DWORD ES_NUMBER = 0x2000;

inline constexpr DWORD CBS_TYPEMASK = 3;
inline constexpr DWORD CBS_SIMPLE = 1;
inline constexpr DWORD CBS_DROPDOWN = 2;
inline constexpr DWORD CBS_DROPDOWNLIST = 3;
inline constexpr DWORD CBS_SORT = 0x0100;
inline constexpr DWORD LBS_NOTIFY = 1;
inline constexpr DWORD LBS_SORT = 2;

inline constexpr UINT CBN_EDITCHANGE = 5;
inline constexpr UINT CBN_DROPDOWN = 7;
inline constexpr UINT CBN_CLOSEUP = 8;
inline constexpr UINT CBN_SELENDOK = 9;
inline constexpr UINT CBN_SELENDCANCEL = 10;
inline constexpr UINT LBN_SELCHANGE = 1;
inline constexpr UINT EN_CHANGE = 0x0300;

inline constexpr WORD IDI_ERROR = 32513;
inline constexpr WORD IDI_QUESTION = 32514;
inline constexpr WORD IDI_WARNING = 32515;
inline constexpr WORD IDI_INFORMATION = 32516;

// How many entries a list box of this size shows at a time.
inline int VisibleEntries(const DialogUnits& place) noexcept
{
    constexpr int unitsPerEntry = 8;
    return place.cy < 2 * unitsPerEntry ? 1 : place.cy / unitsPerEntry;
}

inline DWORD ButtonType(DWORD dwStyle) noexcept
{
    return dwStyle & BS_TYPEMASK;
}

inline bool IsPushButton(WindowClass windowClass, DWORD dwStyle) noexcept
{
    return windowClass == WindowClass::Button && ButtonType(dwStyle) <= BS_DEFPUSHBUTTON;
}

inline bool IsRadioButton(DWORD dwStyle) noexcept
{
    return ButtonType(dwStyle) == BS_RADIOBUTTON || ButtonType(dwStyle) == BS_AUTORADIOBUTTON;
}

// Takes text from the keyboard, so that plain letters are no mnemonics there.
inline bool TakesText(WindowClass windowClass, DWORD dwStyle) noexcept
{
    return windowClass == WindowClass::Edit ||
           (windowClass == WindowClass::ComboBox && (dwStyle & CBS_TYPEMASK) != CBS_DROPDOWNLIST);
}

// Whether the control's text may mark a letter with '&'.
inline bool HasMnemonic(WindowClass windowClass, DWORD dwStyle) noexcept
{
    return windowClass == WindowClass::Button || (windowClass == WindowClass::Static && !(dwStyle & SS_NOPREFIX));
}
} // namespace platform::user32
