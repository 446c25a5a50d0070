// Dialogs on a person's terminal.
#pragma once

#include "terminal/Presenter.h"

namespace platform::user32
{
// Opens the process's controlling terminal, which standard input and output need not be. Null when there is none, or
// none that can be drawn on. The terminal is given back as it was when the presenter goes.
std::unique_ptr<IPresenter> OpenTerminal();
} // namespace platform::user32
