// Dialog templates: the compiled form, of which only the extended one is in use, read into plain values.
#pragma once

#include "platform/user32/Window.h"

#include <cstdint>
#include <optional>
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

// Nothing when the bytes are no such template, end too early, or ask for what does not exist here: a menu, a class of
// the dialog's own, another class of controls, creation data.
std::optional<DialogTemplate> ReadDialogTemplate(std::span<const std::uint8_t> bytes);
} // namespace platform::user32
