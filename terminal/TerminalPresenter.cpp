// Dialogs on a person's terminal: the process's controlling one, which standard input and output need not be.
#include "platform/user32/Presenter.h"

#include "platform/user32/Procedures.h"
#include "platform/user32/TextColumns.h"
#include "terminal/Curses.h"
#include "terminal/DialogPainter.h"
#include "terminal/Keyboard.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <poll.h>
#include <string_view>
#include <unistd.h>

namespace terminal
{
namespace
{
struct CloseFile
{
    void operator()(FILE* pFile) const
    {
        fclose(pFile);
    }
};
using File = std::unique_ptr<FILE, CloseFile>;

struct DeleteScreen
{
    void operator()(SCREEN* pScreen) const
    {
        endwin();
        delscreen(pScreen);
    }
};

class CTerminalPresenter final : public IPresenter
{
public:
    CTerminalPresenter(File in, File out);

    bool IsOpen() const
    {
        return m_pScreen != nullptr;
    }

    int InputDescriptor() const override
    {
        return fileno(m_in.get());
    }
    void Show(const CThreadQueue& queue) override;
    void TakeInput(EngineLock& lock, const CThreadQueue& queue) override;
    bool IsLost() const override
    {
        return m_bLost;
    }

private:
    std::optional<Input> ReadInput() const;
    Input ReadMouse() const;

    File m_in;
    File m_out;
    std::unique_ptr<SCREEN, DeleteScreen> m_pScreen;
    Touch m_touch;
    bool m_bLost = false;
};

CTerminalPresenter::CTerminalPresenter(File in, File out) : m_in(std::move(in)), m_out(std::move(out))
{
    const CTerminalLocale used;
    m_pScreen.reset(newterm(nullptr, m_out.get(), m_in.get()));
    if (!m_pScreen)
        return;
    cbreak();
    noecho();
    nonl();
    keypad(stdscr, TRUE);
    nodelay(stdscr, TRUE);
    set_escdelay(25);                  // Esc alone is a key here, and nobody likes to wait for it
    define_key("\033[1;3A", KEY_F(4)); // Alt and an arrow open a list, too
    define_key("\033[1;3B", KEY_F(4));
    mouseinterval(0);
    mousemask(BUTTON1_PRESSED, nullptr);
}

void CTerminalPresenter::Show(const CThreadQueue& queue)
{
    const CTerminalLocale used;
    erase();
    m_touch = {};
    const auto dialogs = OpenDialogs(queue);
    for (const Window* pDialog : dialogs)
        m_touch = DrawDialog(*pDialog, pDialog == dialogs.back());
    curs_set(m_touch.cursor ? 1 : 0);
    if (m_touch.cursor)
        move(m_touch.cursor->nRow, m_touch.cursor->nColumn);
    refresh();
}

Input CTerminalPresenter::ReadMouse() const
{
    Input input;
    MEVENT event;
    if (getmouse(&event) != OK)
        return input;
    const auto hit = std::find_if(m_touch.targets.rbegin(), m_touch.targets.rend(),
                                  [&event](const ClickTarget& target) { return target.cells.Contains(event.y, event.x); });
    if (hit != m_touch.targets.rend())
    {
        input.hwndClicked = hit->hwnd;
        input.nEntry = hit->nEntry;
    }
    return input;
}

// Nothing when no more has come in. Keys that mean nothing come back as they are.
std::optional<Input> CTerminalPresenter::ReadInput() const
{
    const CTerminalLocale used;
    Input input;
    wint_t code = 0;
    const int nKind = get_wch(&code);
    if (nKind == ERR)
        return std::nullopt;
    const bool bKey = nKind == KEY_CODE_YES;
    if (bKey && code == KEY_MOUSE)
        return ReadMouse();
    wint_t letter = 0;
    if (bKey ? code == KEY_BACKSPACE : code == 127)
        input.ch = backspace;
    else if (bKey ? code == KEY_ENTER : code == L'\n')
        input.nKey = '\r';
    else if (!bKey && code == keyEscape && get_wch(&letter) == OK && letter != keyEscape)
    {
        // A terminal sends Alt as Esc and the letter in one go.
        input.ch = static_cast<WCHAR>(letter);
        input.bAlt = true;
    }
    else if (bKey || (code < L' ' && code != backspace))
        input.nKey = static_cast<int>(code);
    else if (code <= 0xFFFF)
        input.ch = static_cast<WCHAR>(code);
    return input;
}

void CTerminalPresenter::TakeInput(EngineLock& lock, const CThreadQueue& queue)
{
    pollfd terminal{InputDescriptor(), POLLIN, 0};
    poll(&terminal, 1, 0);
    m_bLost = (terminal.revents & (POLLHUP | POLLERR)) != 0;
    while (const auto input = ReadInput())
        if (const auto dialogs = OpenDialogs(queue); !dialogs.empty() && !dialogs.back()->Has(WS_DISABLED))
            HandleInput(lock, *dialogs.back(), *input);
}

// Null when there is no terminal, or none that can be drawn on.
std::unique_ptr<IPresenter> OpenTerminal()
{
    const char* szTerm = std::getenv("TERM");
    if (!szTerm || !*szTerm)
        return nullptr;
    File in(fopen("/dev/tty", "re"));
    File out(fopen("/dev/tty", "we"));
    if (!in || !out)
        return nullptr;
    auto pTerminal = std::make_unique<CTerminalPresenter>(std::move(in), std::move(out));
    return pTerminal->IsOpen() ? std::move(pTerminal) : nullptr;
}
} // namespace
} // namespace terminal

bool platform::user32::OpenPresenter(std::unique_ptr<IPresenter>& pPresenter)
{
    const char* szChoice = std::getenv("PLATFORM_DIALOGS");
    const std::string_view choice = szChoice ? szChoice : "";
    const bool bAsked = choice == "terminal";
    const bool bMayOpen = bAsked || (choice.empty() && isatty(STDIN_FILENO));
    pPresenter = bMayOpen ? terminal::OpenTerminal() : nullptr;
    return pPresenter || !bAsked;
}
