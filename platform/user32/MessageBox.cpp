// Message boxes: dialogs that are laid out for their text.
#include "platform/user32/ControlStyles.h"
#include "platform/user32/Modal.h"
#include "platform/user32/PlannedFailure.h"

#include <algorithm>
#include <iterator>

namespace platform::user32
{
namespace
{
constexpr UINT typeMask = 0x0F;
constexpr UINT iconMask = 0xF0;
constexpr UINT defaultButtonMask = 0xF00;
constexpr UINT modalityMask = 0x3000;
constexpr int idText = 0xFFFF;
constexpr int idIcon = 1088;

struct BoxButton
{
    int nId;
    std::u16string_view text;
};
constexpr BoxButton ok{IDOK, u"OK"}, cancel{IDCANCEL, u"Cancel"}, abortAll{3, u"&Abort"}, retry{4, u"&Retry"},
    ignore{5, u"&Ignore"}, yes{6, u"&Yes"}, no{7, u"&No"};

struct BoxType
{
    std::size_t cButtons;
    BoxButton buttons[3];
    int nCloseResult; // of Esc and the title bar; 0 when the box cannot be closed
};
// In the order of the types' numbers.
constexpr BoxType boxTypes[] = {
    {1, {ok}, IDOK},   {2, {ok, cancel}, IDCANCEL},    {3, {abortAll, retry, ignore}, 0}, {3, {yes, no, cancel}, IDCANCEL},
    {2, {yes, no}, 0}, {2, {retry, cancel}, IDCANCEL},
};

struct BoxIcon
{
    UINT uType;
    WORD wIcon;
};
constexpr BoxIcon boxIcons[] = {
    {MB_ICONERROR, IDI_ERROR},
    {0x20, IDI_QUESTION},
    {MB_ICONWARNING, IDI_WARNING},
    {MB_ICONINFORMATION, IDI_INFORMATION},
};

// 0 for a box without an icon.
WORD IconOf(UINT uType)
{
    const auto* row = std::find_if(std::begin(boxIcons), std::end(boxIcons),
                                   [uType](const BoxIcon& icon) { return icon.uType == (uType & iconMask); });
    return row == std::end(boxIcons) ? WORD() : row->wIcon;
}

INT_PTR CALLBACK BoxProcedure(HWND hwnd, UINT uMessage, WPARAM wParam, LPARAM lParam)
{
    if (uMessage == WM_INITDIALOG)
    {
        SetWindowLongPtrW(hwnd, DWLP_USER, lParam);
        return TRUE;
    }
    if (uMessage != WM_COMMAND || HIWORD(wParam) != BN_CLICKED)
        return FALSE;
    const auto& type = boxTypes[GetWindowLongPtrW(hwnd, DWLP_USER)];
    const int nId = LOWORD(wParam);
    const auto* const pEnd = type.buttons + type.cButtons;
    const bool bButton = std::any_of(type.buttons, pEnd, [nId](const BoxButton& button) { return button.nId == nId; });
    const int nResult = bButton ? nId : nId == IDCANCEL ? type.nCloseResult : 0;
    if (nResult != 0)
        EndDialog(hwnd, nResult);
    return TRUE;
}

// In characters: the longest line, and how many lines.
struct TextExtent
{
    int nColumns = 0;
    int nLines = 1;
};

TextExtent Measure(std::u16string_view text)
{
    TextExtent extent;
    int nColumn = 0;
    for (const WCHAR ch : text)
    {
        nColumn = ch == u'\n' ? 0 : nColumn + 1;
        extent.nLines += ch == u'\n';
        extent.nColumns = std::max(extent.nColumns, nColumn);
    }
    return extent;
}

DialogTemplate LayOut(std::u16string_view text, std::u16string_view caption, const BoxType& type, UINT uType)
{
    constexpr int margin = 7, unitsPerColumn = 4, unitsPerLine = 8, iconWidth = 20, buttonWidth = 50, buttonHeight = 14;
    constexpr int widestText = 240;
    const DWORD dwShown = WS_CHILD | WS_VISIBLE;
    const WORD wIcon = IconOf(uType);
    const auto extent = Measure(text);
    const int nTextX = margin + (wIcon ? iconWidth + margin : 0);
    const int nTextWidth = std::min((extent.nColumns + 1) * unitsPerColumn, widestText);
    // Long lines are wrapped; a line that breaks at a blank wastes some room, hence one more.
    const int nWrapped = extent.nColumns * unitsPerColumn / widestText * 2;
    const int nTextHeight = (extent.nLines + nWrapped) * unitsPerLine;
    const int nButtons = static_cast<int>(type.cButtons);
    const int nButtonsWidth = nButtons * (buttonWidth + margin) - margin;
    const int nButtonsY = margin + std::max(nTextHeight, unitsPerLine) + unitsPerLine;

    DialogTemplate box;
    box.dwStyle = WS_POPUP;
    box.title = caption;
    box.place.cx = std::max(nTextX + nTextWidth, margin + nButtonsWidth) + margin;
    box.place.cy = nButtonsY + buttonHeight + margin;
    if (wIcon)
        box.controls.push_back(
            {WindowClass::Static, dwShown | SS_ICON, idIcon, {margin, margin, iconWidth, unitsPerLine}, {}, wIcon});
    const DialogUnits textPlace{nTextX, margin, nTextWidth, nTextHeight};
    box.controls.push_back({WindowClass::Static, dwShown | SS_NOPREFIX, idText, textPlace, std::u16string(text), {}});
    const UINT uDefault = (uType & defaultButtonMask) >> 8;
    int x = (box.place.cx - nButtonsWidth) / 2;
    for (UINT i = 0; i < type.cButtons; ++i, x += buttonWidth + margin)
        box.controls.push_back({WindowClass::Button,
                                dwShown | WS_TABSTOP | (i == uDefault ? BS_DEFPUSHBUTTON | WS_GROUP : BS_PUSHBUTTON),
                                type.buttons[i].nId,
                                {x, nButtonsY, buttonWidth, buttonHeight},
                                std::u16string(type.buttons[i].text),
                                {}});
    return box;
}
} // namespace
} // namespace platform::user32

using namespace platform::user32;

int WINAPI MessageBoxW(HWND hwndOwner, LPCWSTR szText, LPCWSTR szCaption, UINT uType)
{
    if (FailsAsPlanned("MessageBoxW", ERROR_NOT_ENOUGH_MEMORY))
        return 0;
    const UINT uButtons = uType & typeMask;
    if (uButtons >= std::size(boxTypes) || (uType & modalityMask) != 0)
    {
        SetLastError(ERROR_INVALID_MSGBOX_STYLE);
        return 0;
    }
    const auto box = LayOut(szText ? szText : u"", szCaption ? szCaption : u"Error", boxTypes[uButtons], uType);
    return static_cast<int>(RunDialog(box, hwndOwner, BoxProcedure, static_cast<LPARAM>(uButtons)).value_or(0));
}
