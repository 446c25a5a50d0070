#include "terminal/DialogPainter.h"

#include "platform/user32/ControlStyles.h"
#include "platform/user32/TextColumns.h"
#include "terminal/Canvas.h"
#include "terminal/Mnemonic.h"

#include <algorithm>

namespace terminal
{
namespace
{
// The next line that fits, taken off the text's front; lines break at blanks where they can.
std::u16string_view TakeLine(std::u16string_view& text, int cColumns)
{
    auto uLine = std::min(text.find(u'\n'), text.size());
    auto uNext = std::min(uLine + 1, text.size());
    if (const auto uFits = UnitsWithin(text.substr(0, uLine), cColumns); uFits < uLine)
    {
        const auto uBlank = text.rfind(u' ', uFits);
        const bool bBreaks = uBlank != std::u16string_view::npos && uBlank > 0;
        uLine = bBreaks ? uBlank : uFits;
        uNext = bBreaks ? uBlank + 1 : uFits;
    }
    const auto line = text.substr(0, uLine);
    text.remove_prefix(uNext);
    return line;
}

class CDialogPainter
{
public:
    CDialogPainter(const Window& dialog, bool bActive)
        : m_dialog(dialog), m_frame(FrameOf(dialog, getmaxy(stdscr), getmaxx(stdscr))), m_bActive(bActive)
    {
    }

    Touch Draw()
    {
        DrawFrame();
        // Group boxes first: they may come behind what they hold in the template. Open lists cover what is below them.
        for (const auto draw : {&CDialogPainter::DrawGroupBox, &CDialogPainter::DrawControl, &CDialogPainter::DrawOpenList})
            for (HWND hwnd : m_dialog.children)
                if (const Window& control = *CDesktop::Get().Find(hwnd); control.Has(WS_VISIBLE))
                    (this->*draw)(control, CellsOf(control, m_frame));
        return std::move(m_touch);
    }

private:
    bool HasFocus(const Window& control) const
    {
        return m_bActive && &control == FocusOf(m_dialog);
    }

    attr_t InkOf(const Window& control) const
    {
        const bool bDim = control.Has(WS_DISABLED) || m_dialog.Has(WS_DISABLED);
        return (bDim ? A_DIM : A_NORMAL) | (HasFocus(control) ? A_REVERSE : A_NORMAL);
    }

    void DrawFrame();
    void DrawGroupBox(const Window& control, const Cells& cells);
    void DrawControl(const Window& control, const Cells& cells);
    void DrawOpenList(const Window& control, const Cells& cells);
    void DrawButton(const Window& control, Cells cells);
    void DrawStatic(const Window& control, Cells cells);
    void DrawField(const Window& control, const Cells& cells);
    void DrawEntries(const Window& control, const Cells& cells, int nTop);

    const Window& m_dialog;
    const Cells m_frame;
    const bool m_bActive;
    Touch m_touch;
};

void CDialogPainter::DrawFrame()
{
    Fill(m_frame, A_NORMAL);
    Frame(m_frame, m_dialog.Has(WS_DISABLED) ? A_DIM : A_NORMAL);
    const Cells title{m_frame.nRow, m_frame.nColumn + 1, 1, m_frame.cColumns - 2};
    Text(title, u' ' + m_dialog.text + u' ', m_bActive ? A_REVERSE | A_BOLD : A_DIM);
}

void CDialogPainter::DrawGroupBox(const Window& control, const Cells& cells)
{
    if (!IsButton(control, BS_GROUPBOX))
        return;
    Frame(cells, InkOf(control));
    Text({cells.nRow, cells.nColumn + 2, 1, cells.cColumns - 4}, u' ' + control.text + u' ', InkOf(control));
}

void CDialogPainter::DrawControl(const Window& control, const Cells& cells)
{
    switch (control.windowClass)
    {
    case WindowClass::Button:
        return DrawButton(control, cells);
    case WindowClass::Static:
        return DrawStatic(control, cells);
    case WindowClass::ComboBox:
        return DrawField(control, cells);
    case WindowClass::ListBox:
        // As far down as the last page: no room is left empty while there are entries above.
        return DrawEntries(control, cells,
                           std::clamp(control.nTop, 0, std::max(0, static_cast<int>(control.entries.size()) - cells.cRows)));
    case WindowClass::Dialog:
        return;
    }
}

void CDialogPainter::DrawButton(const Window& control, Cells cells)
{
    if (IsButton(control, BS_GROUPBOX))
        return;
    auto label = ReadMnemonic(control.text);
    std::u16string before = control.uCheck == BST_CHECKED ? u"[x] " : u"[ ] ", after;
    if (IsPushButton(control))
    {
        const bool bDefault = &control == DefaultButton(m_dialog);
        before = bDefault ? u"< " : u"[ ";
        after = bDefault ? u" >" : u" ]";
        const int cSpare = cells.cColumns - ColumnsOf(before + label.text + after);
        if (cSpare < 0) // no room for the blanks
        {
            before.pop_back();
            after.erase(0, 1);
        }
        cells.nColumn += std::max(0, cSpare) / 2;
    }
    const int nMarked = label.nPosition < 0 ? -1 : label.nPosition + static_cast<int>(before.size());
    cells.cColumns = Text(cells, before + label.text + after, InkOf(control), nMarked);
    m_touch.targets.push_back({cells, control.hwnd, -1});
}

void CDialogPainter::DrawStatic(const Window& control, Cells cells)
{
    if (control.wIcon)
    {
        Text(cells, control.wIcon == IDI_ERROR ? u"(x)" : u"(!)", InkOf(control) | A_BOLD);
        return;
    }
    const auto label = control.Has(SS_NOPREFIX) ? Mnemonic{control.text, -1} : ReadMnemonic(control.text);
    std::u16string_view rest = label.text;
    for (const int nEnd = cells.nRow + cells.cRows; cells.nRow < nEnd; ++cells.nRow)
        Text(cells, TakeLine(rest, cells.cColumns), InkOf(control), label.nPosition);
    if (!rest.empty())
        Text({cells.nRow - 1, cells.nColumn + cells.cColumns - 1}, u"\u2026", InkOf(control)); // there is more of it
}

void CDialogPainter::DrawField(const Window& control, const Cells& cells)
{
    const int cInside = cells.cColumns - 4;
    const bool bCursor = HasField(control) && HasFocus(control);
    std::u16string_view text = control.text;
    // The cursor stays in sight behind a text that is longer than its field.
    while (bCursor && !text.empty() && ColumnsOf(text) >= cInside)
    {
        std::size_t uFirst = 0;
        NextCharacter(text, uFirst);
        text.remove_prefix(uFirst);
    }
    const attr_t ink = InkOf(control);
    Fill(cells, ink);
    Text(cells, u"[", ink);
    Text({cells.nRow, cells.nColumn + 1, 1, cInside}, text, ink);
    Text({cells.nRow, cells.nColumn + cells.cColumns - 2, 1, 2}, u"v]", ink);
    if (bCursor)
        m_touch.cursor = Cells{cells.nRow, cells.nColumn + 1 + ColumnsOf(text)};
    m_touch.targets.push_back({cells, control.hwnd, -1});
}

// Entries from nTop on between two edges, which tell when there are more.
void CDialogPainter::DrawEntries(const Window& control, const Cells& cells, int nTop)
{
    const int cEntries = static_cast<int>(control.entries.size());
    const attr_t edge = InkOf(control) & ~A_REVERSE;
    Sides(cells, edge);
    for (int nLine = 0; nLine < cells.cRows; ++nLine)
    {
        const int nEntry = nTop + nLine;
        const bool bSelected = nEntry == control.nSelected;
        const Cells inside{cells.nRow + nLine, cells.nColumn + 1, 1, cells.cColumns - 2};
        const attr_t ink = bSelected ? InkOf(control) | A_BOLD : edge;
        Fill(inside, ink);
        if (nEntry < cEntries)
            Text(inside, control.entries[static_cast<std::size_t>(nEntry)].text, ink);
        const bool bMore = (nLine == 0 && nTop > 0) || (nLine == cells.cRows - 1 && nEntry + 1 < cEntries);
        if (bMore)
            Text({inside.nRow, cells.nColumn + cells.cColumns - 1}, nLine == 0 ? u"^" : u"v", edge);
        m_touch.targets.push_back({inside, control.hwnd, nEntry < cEntries ? nEntry : -1});
    }
    // An empty list has no entry to show the focus on.
    if (HasFocus(control) && control.nSelected < 0)
        m_touch.cursor = Cells{cells.nRow, cells.nColumn + 1};
}

void CDialogPainter::DrawOpenList(const Window& control, const Cells& cells)
{
    if (!control.bDropped)
        return;
    const int cRows = static_cast<int>(control.entries.size());
    Frame({cells.nRow, cells.nColumn, cRows + 2, cells.cColumns}, A_NORMAL);
    DrawEntries(control, {cells.nRow + 1, cells.nColumn, cRows, cells.cColumns}, 0);
    DrawField(control, cells);
}
} // namespace

Touch DrawDialog(const Window& dialog, bool bActive)
{
    return CDialogPainter(dialog, bActive).Draw();
}
} // namespace terminal
