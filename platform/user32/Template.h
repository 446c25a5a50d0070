// Dialog templates: the compiled form (both the plain and the extended one) read into plain values.
#pragma once

#include "platform/user32/Window.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace platform::user32
{
struct ControlTemplate
{
    WindowClass windowClass = WindowClass::Static;
    DWORD dwStyle = 0;
    int nId = 0;
    DialogUnits place;
    std::u16string text;
    WORD wIcon = 0;
};

struct DialogTemplate
{
    DWORD dwStyle = 0;
    DialogUnits place;
    std::u16string title;
    std::vector<ControlTemplate> controls;
};

// ERROR_SUCCESS; ERROR_RESOURCE_DATA_NOT_FOUND when the bytes are no dialog template or end too early,
// ERROR_CANNOT_FIND_WND_CLASS for a window class that does not exist here, ERROR_NOT_SUPPORTED for a dialog with a menu.
DWORD ReadDialogTemplate(std::span<const std::uint8_t> bytes, DialogTemplate& dialog);
} // namespace platform::user32
