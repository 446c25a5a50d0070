#include "terminal/TerminalPresenter.h"

#include "terminal/Curses.h"
#include "terminal/DialogPainter.h"

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <locale.h>
#include <poll.h>

namespace platform::user32
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

struct FreeLocale
{
    using pointer = locale_t;
    void operator()(locale_t locale) const
    {
        freelocale(locale);
    }
};
using Locale = std::unique_ptr<locale_t, FreeLocale>;

// The person's character set. Without any setting the terminal is taken to be what terminals are today.
Locale TerminalLocale()
{
    const char* const variables[] = {"LC_ALL", "LC_CTYPE", "LANG"};
    const bool bSet = std::any_of(std::begin(variables), std::end(variables),
                                  [](const char* szName)
                                  {
                                      const char* szValue = std::getenv(szName);
                                      return szValue && *szValue;
                                  });
    locale_t locale = newlocale(LC_CTYPE_MASK, bSet ? "" : "C.UTF-8", locale_t());
    return Locale(locale ? locale : newlocale(LC_CTYPE_MASK, "C", locale_t()));
}

// The locale for the scope of the terminal library's calls: the program's own stays as it is.
class CUsedLocale
{
public:
    explicit CUsedLocale(locale_t locale) : m_before(uselocale(locale))
    {
    }
    ~CUsedLocale()
    {
        uselocale(m_before);
    }
    CUsedLocale(const CUsedLocale&) = delete;
    CUsedLocale& operator=(const CUsedLocale&) = delete;

private:
    locale_t m_before;
};

struct DeleteScreen
{
    void operator()(SCREEN* pScreen) const
    {
        endwin();
        delscreen(pScreen);
    }
};

struct KeyRow
{
    int nCode;
    UINT uKey;
    bool bShift = false;
    bool bAlt = false;
};
// Codes of our own for sequences that the terminal library has no name for.
constexpr int altUp = KEY_MAX + 1;
constexpr int altDown = KEY_MAX + 2;
constexpr KeyRow functionKeys[] = {
    {KEY_UP, VK_UP},
    {KEY_DOWN, VK_DOWN},
    {KEY_LEFT, VK_LEFT},
    {KEY_RIGHT, VK_RIGHT},
    {KEY_HOME, VK_HOME},
    {KEY_END, VK_END},
    {KEY_PPAGE, VK_PRIOR},
    {KEY_NPAGE, VK_NEXT},
    {KEY_DC, VK_DELETE},
    {KEY_ENTER, VK_RETURN},
    {KEY_BTAB, VK_TAB, true},
    {KEY_F0 + 4, VK_F4},
    {altUp, VK_UP, false, true},
    {altDown, VK_DOWN, false, true},
};
constexpr wint_t escape = 27;
constexpr WCHAR backspaceKey = 8;

Input KeyPressed(UINT uKey, bool bShift = false, bool bAlt = false)
{
    Input input;
    input.uKey = uKey;
    input.bShift = bShift;
    input.bAlt = bAlt;
    return input;
}

Input Typed(WCHAR ch, bool bAlt = false)
{
    Input input;
    input.kind = Input::Kind::Character;
    input.ch = ch;
    input.bAlt = bAlt;
    return input;
}

class CTerminalPresenter final : public IPresenter
{
public:
    CTerminalPresenter(File in, File out, Locale locale);

    bool IsOpen() const
    {
        return m_pScreen != nullptr;
    }

    int InputDescriptor() const override
    {
        return fileno(m_in.get());
    }
    void Show(const Scene& scene) override;
    std::vector<Input> ReadInput() override;
    bool IsLost() const override
    {
        return m_bLost;
    }

private:
    void ReadCode(int nCode, std::vector<Input>& inputs) const;
    void ReadMouse(std::vector<Input>& inputs) const;
    static void ReadCharacter(wint_t ch, std::vector<Input>& inputs);

    File m_in;
    File m_out;
    Locale m_locale;
    std::unique_ptr<SCREEN, DeleteScreen> m_pScreen;
    CTerminalCanvas m_canvas;
    std::vector<ClickTarget> m_targets;
    bool m_bLost = false;
};

CTerminalPresenter::CTerminalPresenter(File in, File out, Locale locale)
    : m_in(std::move(in)), m_out(std::move(out)), m_locale(std::move(locale))
{
    const CUsedLocale used(m_locale.get());
    m_pScreen.reset(newterm(nullptr, m_out.get(), m_in.get()));
    if (!m_pScreen)
        return;
    cbreak();
    noecho();
    nonl();
    keypad(stdscr, TRUE);
    nodelay(stdscr, TRUE);
    set_escdelay(25); // Esc alone is a key here, and nobody likes to wait for it
    define_key("\033[1;3A", altUp);
    define_key("\033[1;3B", altDown);
    mouseinterval(0);
    mousemask(BUTTON1_PRESSED, nullptr);
}

void CTerminalPresenter::Show(const Scene& scene)
{
    const CUsedLocale used(m_locale.get());
    m_canvas.Clear();
    m_targets = DrawScene(m_canvas, scene);
    m_canvas.Refresh();
}

void CTerminalPresenter::ReadMouse(std::vector<Input>& inputs) const
{
    MEVENT event;
    if (getmouse(&event) != OK || !(event.bstate & BUTTON1_PRESSED))
        return;
    const auto hit = std::find_if(m_targets.rbegin(), m_targets.rend(),
                                  [&event](const ClickTarget& target) { return target.cells.Contains(event.y, event.x); });
    if (hit == m_targets.rend() || !hit->hwnd)
        return;
    Input input;
    input.kind = hit->nEntry < 0 ? Input::Kind::Press : Input::Kind::Entry;
    input.hwnd = hit->hwnd;
    input.nEntry = hit->nEntry;
    inputs.push_back(input);
}

void CTerminalPresenter::ReadCode(int nCode, std::vector<Input>& inputs) const
{
    if (nCode == KEY_MOUSE)
        return ReadMouse(inputs);
    if (nCode == KEY_BACKSPACE)
        return inputs.push_back(Typed(backspaceKey));
    const auto* row =
        std::find_if(std::begin(functionKeys), std::end(functionKeys), [nCode](const KeyRow& key) { return key.nCode == nCode; });
    if (row != std::end(functionKeys))
        inputs.push_back(KeyPressed(row->uKey, row->bShift, row->bAlt));
}

void CTerminalPresenter::ReadCharacter(wint_t ch, std::vector<Input>& inputs)
{
    if (ch == L'\r' || ch == L'\n')
        return inputs.push_back(KeyPressed(VK_RETURN));
    if (ch == L'\t')
        return inputs.push_back(KeyPressed(VK_TAB));
    if (ch == 127 || ch == backspaceKey)
        return inputs.push_back(Typed(backspaceKey));
    if (ch == escape)
    {
        // A terminal sends Alt as Esc and the letter in one go.
        wint_t letter = 0;
        const bool bAlt = get_wch(&letter) == OK && letter != escape;
        return inputs.push_back(bAlt ? Typed(static_cast<WCHAR>(letter), true) : KeyPressed(VK_ESCAPE));
    }
    if (ch < L' ')
        return;
    if (ch > 0xFFFF)
    {
        inputs.push_back(Typed(static_cast<WCHAR>(0xD800u + ((ch - 0x10000u) >> 10))));
        return inputs.push_back(Typed(static_cast<WCHAR>(0xDC00u + ((ch - 0x10000u) & 0x3FFu))));
    }
    inputs.push_back(Typed(static_cast<WCHAR>(ch)));
}

std::vector<Input> CTerminalPresenter::ReadInput()
{
    const CUsedLocale used(m_locale.get());
    pollfd terminal{InputDescriptor(), POLLIN, 0};
    poll(&terminal, 1, 0);
    std::vector<Input> inputs;
    wint_t ch = 0;
    for (int nKind = get_wch(&ch); nKind != ERR; nKind = get_wch(&ch))
        nKind == KEY_CODE_YES ? ReadCode(static_cast<int>(ch), inputs) : ReadCharacter(ch, inputs);
    m_bLost = (terminal.revents & (POLLHUP | POLLERR)) != 0;
    return inputs;
}
} // namespace

std::unique_ptr<IPresenter> OpenTerminal()
{
    const char* szTerm = std::getenv("TERM");
    if (!szTerm || !*szTerm)
        return nullptr;
    File in(fopen("/dev/tty", "re"));
    File out(fopen("/dev/tty", "we"));
    if (!in || !out)
        return nullptr;
    auto pTerminal = std::make_unique<CTerminalPresenter>(std::move(in), std::move(out), TerminalLocale());
    return pTerminal->IsOpen() ? std::move(pTerminal) : nullptr;
}
} // namespace platform::user32
