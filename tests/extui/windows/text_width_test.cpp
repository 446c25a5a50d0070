// Whether the texts fit where the dialog shows them, in the fonts that the platform draws them in.
#include "tests/support/LanguageFile.h"

namespace tests
{
namespace
{
class CTextRuler
{
public:
    explicit CTextRuler(HFONT hFont) : m_hdc(GetDC(nullptr)), m_hBefore(SelectObject(m_hdc, hFont))
    {
    }
    ~CTextRuler()
    {
        SelectObject(m_hdc, m_hBefore);
        ReleaseDC(nullptr, m_hdc);
    }
    CTextRuler(const CTextRuler&) = delete;
    CTextRuler& operator=(const CTextRuler&) = delete;

    LONG Width(CWideView text) const
    {
        SIZE size = {};
        EXPECT_TRUE(GetTextExtentPoint32W(m_hdc, text.data(), static_cast<int>(text.size()), &size));
        return size.cx;
    }
    // Other machines' fonts are a little wider.
    void ExpectRoom(CWideView text, LONG cxRoom) const
    {
        EXPECT_LE(Width(text) * 11, cxRoom * 10) << Utf8Of(text);
    }
    // Those of East Asia are as wide as they are high. A font without them shows a box in their place, which has to have that
    // width as well.
    void ExpectWideCharacters() const
    {
        TEXTMETRICW metrics = {};
        GetTextMetricsW(m_hdc, &metrics);
        EXPECT_EQ(metrics.tmHeight - metrics.tmInternalLeading, Width(L"\u8A9E")) << "not measured in the font of dialogs";
    }

private:
    const HDC m_hdc;
    const HGDIOBJ m_hBefore;
};

CWideString TextOfWindow(HWND hwnd)
{
    WCHAR szText[256] = {};
    GetWindowTextW(hwnd, szText, 256);
    return szText;
}

// What a control needs of its width for other things: a box and a gap, or an edge on both sides.
LONG OwnWidth(HWND hwndControl)
{
    WCHAR szClass[16] = {};
    GetClassNameW(hwndControl, szClass, 16);
    if (CWideView(szClass) != L"Button")
        return 0;
    switch (GetWindowLongW(hwndControl, GWL_STYLE) & BS_TYPEMASK)
    {
    case BS_AUTOCHECKBOX:
        return 13 + 5;
    case BS_GROUPBOX:
        return 2 * 9;
    default:
        return 2 * 4;
    }
}

INT_PTR CALLBACK MeasureTexts(HWND hwndDialog, UINT uMessage, WPARAM, LPARAM lModule)
{
    if (uMessage != WM_INITDIALOG)
        return FALSE;
    const CTextRuler ruler(reinterpret_cast<HFONT>(SendMessageW(hwndDialog, WM_GETFONT, 0, 0)));
    ruler.ExpectWideCharacters();
    INT_PTR cControls = 0;
    for (HWND hwnd = GetWindow(hwndDialog, GW_CHILD); hwnd; hwnd = GetWindow(hwnd, GW_HWNDNEXT), ++cControls)
    {
        RECT inside = {};
        GetClientRect(hwnd, &inside);
        ruler.ExpectRoom(TextOfWindow(hwnd), inside.right - OwnWidth(hwnd));
    }
    COMBOBOXINFO list = {};
    list.cbSize = sizeof(list);
    EXPECT_TRUE(GetComboBoxInfo(GetDlgItem(hwndDialog, IDC_ROAMING_OPTION), &list));
    for (UINT uId = IDS_ROAMING_DEFAULT; uId <= IDS_ROAMING_VERY_HIGH; ++uId)
        ruler.ExpectRoom(StringOf(reinterpret_cast<HMODULE>(lModule), uId), list.rcItem.right - list.rcItem.left);

    NONCLIENTMETRICSW metrics = {};
    metrics.cbSize = sizeof(metrics);
    EXPECT_TRUE(SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, metrics.cbSize, &metrics, 0));
    const std::unique_ptr<HFONT__, decltype(&DeleteObject)> captionFont(CreateFontIndirectW(&metrics.lfCaptionFont),
                                                                        DeleteObject);
    RECT client = {};
    GetClientRect(hwndDialog, &client);
    CTextRuler(captionFont.get()).ExpectRoom(TextOfWindow(hwndDialog), client.right - metrics.iCaptionWidth - 2 * 4);
    EndDialog(hwndDialog, cControls);
    return TRUE;
}
} // namespace

TEST(DialogTexts, FitWithTenPercentToSpare)
{
    for (const std::string& strLanguage : Languages())
    {
        SCOPED_TRACE(strLanguage);
        const auto library = LoadLanguage(strLanguage);
        EXPECT_EQ(10, DialogBoxParamW(library.Get(), MAKEINTRESOURCEW(IDD_CONNECTION_SETTINGS), nullptr, MeasureTexts,
                                      reinterpret_cast<LPARAM>(library.Get())))
            << "controls";
    }
}
} // namespace tests
