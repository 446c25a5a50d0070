#include "terminal/TerminalPresenter.h"

#include <cstdlib>
#include <string_view>
#include <unistd.h>

namespace platform::user32
{
bool OpenPresenter(std::unique_ptr<IPresenter>& pPresenter)
{
    const char* szChoice = std::getenv("PLATFORM_DIALOGS");
    const std::string_view choice = szChoice ? szChoice : "";
    const bool bAsked = choice == "terminal";
    const bool bMayOpen = bAsked || (choice.empty() && isatty(STDIN_FILENO));
    pPresenter = bMayOpen ? OpenTerminal() : nullptr;
    return pPresenter || !bAsked;
}
} // namespace platform::user32
