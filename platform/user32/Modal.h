// A dialog's life: made from its template, run until it is ended, destroyed.
#pragma once

#include "platform/user32/Template.h"

#include <optional>

namespace platform::user32
{
// Runs the dialog on the calling thread and returns what EndDialog was given; nothing, with a last error, when the
// dialog could not be made. The owner is null or a window; it is disabled as long as the dialog is up.
std::optional<INT_PTR> RunDialog(const DialogTemplate& dialogTemplate, HWND hwndOwner, DLGPROC pProcedure, LPARAM lInitParam);

// Keeps the result, hides the dialog and gives the owner back; the dialog's loop then comes to its end.
void EndModal(Window& dialog, INT_PTR nResult);
} // namespace platform::user32
