// Message boxes: dialogs that are laid out for their text. All have one button, OK.
#include "platform/user32/ControlStyles.h"
#include "platform/user32/Modal.h"
#include "platform/user32/PlannedFailure.h"
#include "platform/user32/TextColumns.h"

#include <algorithm>

namespace platform::user32
{
namespace
{
constexpr int idText = 0xFFFF;
constexpr int idIcon = 1088;

// The title bar and Esc press Cancel, which here means the only button.
INT_PTR CALLBACK BoxProcedure(HWND hwnd, UINT uMessage, WPARAM, LPARAM)
{
    if (uMessage == WM_COMMAND)
        EndDialog(hwnd, IDOK);
    return uMessage == WM_COMMAND;
}

// The longest line in a terminal's columns, and how many lines.
struct TextExtent
{
    int nColumns = 0;
    int nLines = 1;
};

TextExtent Measure(std::u16string_view text)
{
    TextExtent extent;
    for (;; ++extent.nLines)
    {
        const auto uLine = std::min(text.find(u'\n'), text.size());
        extent.nColumns = std::max(extent.nColumns, ColumnsOf(text.substr(0, uLine)));
        if (uLine == text.size())
            return extent;
        text.remove_prefix(uLine + 1);
    }
}

// Without an icon when its number is 0.
DialogTemplate LayOut(std::u16string_view text, std::u16string_view caption, WORD wIcon)
{
    constexpr int margin = 7, unitsPerColumn = 4, unitsPerLine = 8, iconWidth = 20, buttonWidth = 50, buttonHeight = 14;
    constexpr int widestText = 240;
    const DWORD dwShown = WS_CHILD | WS_VISIBLE;
    const auto extent = Measure(text);
    const int nTextX = margin + (wIcon ? iconWidth + margin : 0);
    const int nTextWidth = std::min((extent.nColumns + 1) * unitsPerColumn, widestText);
    // Long lines are wrapped; a line that breaks at a blank wastes some room, hence one more.
    const int nWrapped = extent.nColumns * unitsPerColumn / widestText * 2;
    const int nTextHeight = (extent.nLines + nWrapped) * unitsPerLine;
    const int nButtonY = margin + nTextHeight + unitsPerLine;

    DialogTemplate box;
    box.dwStyle = WS_POPUP;
    box.title = caption;
    box.place.cx = std::max(nTextX + nTextWidth, margin + buttonWidth) + margin;
    box.place.cy = nButtonY + buttonHeight + margin;
    if (wIcon)
        box.controls.push_back(
            {WindowClass::Static, dwShown | SS_ICON, idIcon, {margin, margin, iconWidth, unitsPerLine}, {}, wIcon});
    const DialogUnits textPlace{nTextX, margin, nTextWidth, nTextHeight};
    box.controls.push_back({WindowClass::Static, dwShown | SS_NOPREFIX, idText, textPlace, std::u16string(text), {}});
    const DialogUnits buttonPlace{(box.place.cx - buttonWidth) / 2, nButtonY, buttonWidth, buttonHeight};
    box.controls.push_back({WindowClass::Button, dwShown | WS_TABSTOP | BS_DEFPUSHBUTTON, IDOK, buttonPlace, u"OK", {}});
    return box;
}
} // namespace
} // namespace platform::user32

using namespace platform::user32;

int WINAPI MessageBoxW(HWND hwndOwner, LPCWSTR szText, LPCWSTR szCaption, UINT uType)
{
    if (FailsAsPlanned("MessageBoxW", ERROR_NOT_ENOUGH_MEMORY))
        return 0;
    if (uType != MB_OK && uType != MB_ICONERROR && uType != MB_ICONWARNING)
    {
        SetLastError(ERROR_INVALID_MSGBOX_STYLE);
        return 0;
    }
    const WORD wIcon = uType == MB_ICONERROR ? IDI_ERROR : uType == MB_ICONWARNING ? IDI_WARNING : WORD();
    return static_cast<int>(RunDialog(LayOut(szText, szCaption, wIcon), hwndOwner, BoxProcedure, 0).value_or(0));
}
