// The dialog as a terminal shows it: in every language each text is there as a whole, also of characters that take two columns.
#include "terminal/Curses.h"
#include "terminal/DialogPainter.h"
#include "tests/support/DialogActor.h"
#include "tests/support/LanguageFile.h"

#include <clocale>

namespace tests
{
namespace
{
using platform::user32::CDesktop;

// A terminal of the usual size that nobody looks at.
class CUnseenTerminal
{
public:
    CUnseenTerminal() : m_pFile(std::fopen("/dev/null", "r+")), m_pScreen(newterm("xterm", m_pFile, m_pFile))
    {
        resize_term(24, 80);
    }
    ~CUnseenTerminal()
    {
        endwin();
        delscreen(m_pScreen);
        std::fclose(m_pFile);
    }
    CUnseenTerminal(const CUnseenTerminal&) = delete;
    CUnseenTerminal& operator=(const CUnseenTerminal&) = delete;

    std::string Draw(HWND hwndDialog) const
    {
        const auto lock = CDesktop::Get().Lock();
        erase();
        terminal::DrawDialog(*CDesktop::Get().Find(hwndDialog), true);
        std::string strScreen;
        for (int nRow = 0; nRow < getmaxy(stdscr); ++nRow)
        {
            wchar_t szRow[81] = {};
            mvinnwstr(nRow, 0, szRow, 80);
            std::string strRow = Utf8Of(CWideString(szRow, szRow + std::wcslen(szRow)));
            strRow.erase(strRow.find_last_not_of(' ') + 1);
            strScreen += strRow + "\n";
        }
        return strScreen;
    }

private:
    FILE* const m_pFile;
    SCREEN* const m_pScreen;
};

struct Drawing
{
    const HMODULE hModule;
    CUnseenTerminal terminal;
    std::string screen;

    void Expect(const CWideString& text) const
    {
        EXPECT_NE(std::string::npos, screen.find(Utf8Of(text))) << Utf8Of(text) << "\n" << screen;
    }
};

INT_PTR CALLBACK DrawAndEnd(HWND hwndDialog, UINT uMessage, WPARAM, LPARAM lDrawing)
{
    if (uMessage != WM_INITDIALOG)
        return FALSE;
    auto& drawing = *reinterpret_cast<Drawing*>(lDrawing);
    const HWND hwndList = GetDlgItem(hwndDialog, IDC_ROAMING_OPTION);
    for (WPARAM n = 0; n <= IDS_ROAMING_VERY_HIGH - IDS_ROAMING_DEFAULT; ++n)
    {
        const auto level = StringOf(drawing.hModule, IDS_ROAMING_DEFAULT + static_cast<UINT>(n));
        SendMessageW(hwndList, CB_INSERTSTRING, n, reinterpret_cast<LPARAM>(level.c_str()));
        SendMessageW(hwndList, CB_SETCURSEL, n, 0);
        drawing.screen = drawing.terminal.Draw(hwndDialog);
        drawing.Expect(level);
    }
    drawing.Expect(StringOf(drawing.hModule, IDS_CONNECTION_SETTINGS));
    for (const int nId : {IDOK, IDCANCEL, IDC_RADIO_MEASUREMENT, IDC_RAPIDO, IDC_ADVANCED_ROAMING, IDC_ROAMING_OPTION_LABEL,
                          IDC_BAND_2_4_GHZ, IDC_WIRELESS_MODES, IDC_BAND_5_GHZ})
    {
        WCHAR szText[256] = {};
        SendMessageW(GetDlgItem(hwndDialog, nId), WM_GETTEXT, 256, reinterpret_cast<LPARAM>(szText));
        drawing.Expect(szText);
    }
    EndDialog(hwndDialog, 1);
    return TRUE;
}

void DrawMessageBox(Drawing& drawing)
{
    const auto text = StringOf(drawing.hModule, IDS_NO_BAND_SELECTED);
    const CDialogActor person(
        [&](CDialogActor& actor)
        {
            const auto box = actor.WaitForMessageBox();
            drawing.screen = drawing.terminal.Draw(box.Get());
            box.Click(IDOK);
        });
    MessageBoxW(nullptr, text.c_str(), StringOf(drawing.hModule, IDS_CONNECTION_SETTINGS).c_str(), MB_OK);
}

constexpr const char* japanese = R"(
          ┌ Korvane 接続設定 ────────────────────────────────────────┐
          │                                                          │
          │                                                          │
          │    ┌─ ワイヤレス モード ────────────────────────────┐    │
          │    │   [ ] 5 GHz 帯を有効にする                     │    │
          │    │                                                │    │
          │    │                                                │    │
          │    │   [ ] 2.4 GHz 帯を有効にする                   │    │
          │    └────────────────────────────────────────────────┘    │
          │                                                          │
          │    [ ] 無線測定を有効にする                              │
          │                                                          │
          │    [ ] Rapido A/G を有効にする                           │
          │    [ ] 高度なローミング設定を有効にする                  │
          │                                                          │
          │       ローミング オプション        [非常に高い      v]   │
          │                                                          │
          │                                                          │
          │                                                          │
          │                                 < OK >     [キャンセル]  │
          │                                                          │
          └──────────────────────────────────────────────────────────┘

)";
} // namespace

TEST(TerminalDialog, ShowsTheTextsOfEveryLanguage)
{
    // The screen is read as the program's locale has it.
    ASSERT_NE(nullptr, std::setlocale(LC_CTYPE, "C.UTF-8"));
    for (const std::string& strLanguage : Languages())
    {
        SCOPED_TRACE(strLanguage);
        const auto library = LoadLanguage(strLanguage);
        Drawing drawing{library.Get(), {}, {}};
        EXPECT_EQ(1, DialogBoxParamW(drawing.hModule, MAKEINTRESOURCEW(IDD_CONNECTION_SETTINGS), nullptr, DrawAndEnd,
                                     reinterpret_cast<LPARAM>(&drawing)));
        if (strLanguage == "ja-JP")
        {
            EXPECT_EQ(japanese, drawing.screen);
        }
        DrawMessageBox(drawing);
        drawing.Expect(StringOf(drawing.hModule, IDS_NO_BAND_SELECTED));
    }
}
} // namespace tests
