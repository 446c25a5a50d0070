#include "terminal/DialogPainter.h"

#include "platform/user32/ControlStyles.h"
#include "platform/user32/Mnemonic.h"

#include <algorithm>
#include <iterator>

namespace platform::user32
{
namespace
{
struct IconMark
{
    WORD wIcon;
    std::u16string_view mark;
};
constexpr IconMark iconMarks[] = {
    {IDI_ERROR, u"(x)"},
    {IDI_QUESTION, u"(?)"},
    {IDI_WARNING, u"(!)"},
    {IDI_INFORMATION, u"(i)"},
};

// The next line that fits, taken off the text's front; lines break at blanks where they can.
std::u16string_view TakeLine(std::u16string_view& text, std::size_t cColumns, bool bWrap)
{
    const auto uEnd = std::min(text.find(u'\n'), text.size());
    auto uLine = uEnd;
    auto uNext = std::min(uEnd + 1, text.size());
    if (bWrap && uEnd > cColumns)
    {
        const auto uBlank = text.rfind(u' ', cColumns);
        const bool bBreaks = uBlank != std::u16string_view::npos && uBlank > 0;
        uLine = bBreaks ? uBlank : cColumns;
        uNext = bBreaks ? uBlank + 1 : cColumns;
    }
    auto line = text.substr(0, uLine);
    text.remove_prefix(uNext);
    if (!line.empty() && line.back() == u'\r')
        line.remove_suffix(1);
    return line;
}

class CDialogPainter
{
public:
    CDialogPainter(CTerminalCanvas& canvas, const DialogView& dialog, bool bActive, std::vector<ClickTarget>& targets)
        : m_canvas(canvas), m_dialog(dialog), m_layout(LayOutDialog(dialog, canvas.Rows(), canvas.Columns())), m_bActive(bActive),
          m_targets(targets)
    {
    }

    void Draw()
    {
        DrawFrame();
        // Frames first: a group box may come behind its controls in the template.
        ForEachControl([this](const ControlView& control, const Cells& cells) { DrawGroupBox(control, cells); });
        ForEachControl([this](const ControlView& control, const Cells& cells) { DrawControl(control, cells); });
        ForEachControl([this](const ControlView& control, const Cells& cells) { DrawOpenList(control, cells); });
    }

private:
    void ForEachControl(auto action)
    {
        for (std::size_t i = 0; i < m_dialog.controls.size(); ++i)
            action(m_dialog.controls[i], m_layout.controls[i]);
    }

    bool HasFocus(const ControlView& control) const
    {
        return m_bActive && control.hwnd == m_dialog.hwndFocus;
    }

    Ink InkOf(const ControlView& control) const
    {
        Ink ink;
        ink.bDim = (control.dwStyle & WS_DISABLED) != 0 || !m_dialog.bEnabled;
        ink.bReverse = HasFocus(control);
        return ink;
    }

    void DrawFrame();
    void DrawControl(const ControlView& control, const Cells& cells);
    void DrawGroupBox(const ControlView& control, const Cells& cells);
    void DrawButton(const ControlView& control, const Cells& cells);
    void DrawStatic(const ControlView& control, const Cells& cells);
    void DrawField(const ControlView& control, const Cells& cells);
    void DrawListBox(const ControlView& control, const Cells& cells);
    void DrawOpenList(const ControlView& control, const Cells& cells);
    void DrawEntries(const ControlView& control, const Cells& cells, int nTop);

    CTerminalCanvas& m_canvas;
    const DialogView& m_dialog;
    const DialogCells m_layout;
    const bool m_bActive;
    std::vector<ClickTarget>& m_targets;
};

void CDialogPainter::DrawFrame()
{
    const auto& frame = m_layout.frame;
    Ink ink;
    ink.bDim = !m_dialog.bEnabled;
    m_canvas.Fill(frame);
    m_canvas.Frame(frame, ink);
    ink.bReverse = m_bActive;
    ink.bBold = m_bActive;
    const std::u16string title = u' ' + m_dialog.title + u' ';
    m_canvas.Text(frame.nRow, frame.nColumn + 1, frame.cColumns - 2, title, ink);
    m_targets.push_back({frame, nullptr, -1});
}

void CDialogPainter::DrawGroupBox(const ControlView& control, const Cells& cells)
{
    if (control.windowClass != WindowClass::Button || ButtonType(control.dwStyle) != BS_GROUPBOX)
        return;
    const auto caption = ReadMnemonic(control.text);
    m_canvas.Frame(cells, InkOf(control));
    if (caption.text.empty() || cells.cColumns < 5)
        return;
    m_canvas.Text(cells.nRow, cells.nColumn + 2, cells.cColumns - 4, u' ' + caption.text + u' ', InkOf(control),
                  caption.nPosition < 0 ? -1 : caption.nPosition + 1);
}

void CDialogPainter::DrawControl(const ControlView& control, const Cells& cells)
{
    switch (control.windowClass)
    {
    case WindowClass::Button:
        return DrawButton(control, cells);
    case WindowClass::Static:
        return DrawStatic(control, cells);
    case WindowClass::Edit:
    case WindowClass::ComboBox:
        return DrawField(control, cells);
    case WindowClass::ListBox:
        return DrawListBox(control, cells);
    case WindowClass::Dialog:
        return;
    }
}

void CDialogPainter::DrawButton(const ControlView& control, const Cells& cells)
{
    if (ButtonType(control.dwStyle) == BS_GROUPBOX)
        return;
    auto label = ReadMnemonic(control.text);
    std::u16string before, after;
    int nColumn = cells.nColumn;
    if (IsPushButton(control.windowClass, control.dwStyle))
    {
        const bool bDefault = control.hwnd == m_dialog.hwndDefault;
        before = bDefault ? u"< " : u"[ ";
        after = bDefault ? u" >" : u" ]";
        nColumn += std::max(0, cells.cColumns - static_cast<int>(label.text.size()) - 4) / 2;
    }
    else if (IsRadioButton(control.dwStyle))
        before = control.uCheck ? u"(*) " : u"( ) ";
    else
        before = control.uCheck == 0 ? u"[ ] " : control.uCheck == BST_CHECKED ? u"[x] " : u"[-] ";
    const int nMarked = label.nPosition < 0 ? -1 : label.nPosition + static_cast<int>(before.size());
    const int cDrawn = m_canvas.Text(cells.nRow, nColumn, cells.cColumns, before + label.text + after, InkOf(control), nMarked);
    m_targets.push_back({{cells.nRow, nColumn, 1, cDrawn}, control.hwnd, -1});
}

void CDialogPainter::DrawStatic(const ControlView& control, const Cells& cells)
{
    if ((control.dwStyle & SS_TYPEMASK) == SS_ICON)
    {
        const auto* row = std::find_if(std::begin(iconMarks), std::end(iconMarks),
                                       [&](const IconMark& icon) { return icon.wIcon == control.wIcon; });
        Ink ink = InkOf(control);
        ink.bBold = true;
        if (row != std::end(iconMarks))
            m_canvas.Text(cells.nRow, cells.nColumn, cells.cColumns, row->mark, ink);
        return;
    }
    Mnemonic label{control.text, -1};
    if (HasMnemonic(control.windowClass, control.dwStyle))
        label = ReadMnemonic(control.text);
    const DWORD dwType = control.dwStyle & SS_TYPEMASK;
    const bool bWrap = dwType != SS_LEFTNOWORDWRAP && dwType != SS_SIMPLE && cells.cRows > 1;
    std::u16string_view rest = label.text;
    for (int nLine = 0; nLine < cells.cRows && !rest.empty(); ++nLine)
    {
        const auto line = TakeLine(rest, static_cast<std::size_t>(cells.cColumns), bWrap);
        const int nSlack = std::max(0, cells.cColumns - static_cast<int>(line.size()));
        const int nIndent = dwType == SS_CENTER ? nSlack / 2 : dwType == SS_RIGHT ? nSlack : 0;
        const int nMarked = label.nPosition < 0 ? -1 : label.nPosition - static_cast<int>(line.data() - label.text.data());
        m_canvas.Text(cells.nRow + nLine, cells.nColumn + nIndent, cells.cColumns, line, InkOf(control), nMarked);
    }
}

void CDialogPainter::DrawField(const ControlView& control, const Cells& cells)
{
    const bool bCombo = control.windowClass == WindowClass::ComboBox;
    const bool bPassword = !bCombo && (control.dwStyle & ES_PASSWORD);
    const std::u16string text = bPassword ? std::u16string(control.text.size(), u'*') : control.text;
    const int cInside = std::max(0, cells.cColumns - (bCombo ? 4 : 2));
    // The caret stays in sight of a text that is longer than its field.
    const auto uCaret = std::min(control.uCaret, text.size());
    const auto uRoom = static_cast<std::size_t>(std::max(0, cInside - 1));
    const auto uFirst =
        TakesText(control.windowClass, control.dwStyle) && HasFocus(control) && uCaret > uRoom ? uCaret - uRoom : 0;
    const Ink ink = InkOf(control);
    m_canvas.Fill({cells.nRow, cells.nColumn, 1, cells.cColumns}, ink);
    m_canvas.Text(cells.nRow, cells.nColumn, 1, u"[", ink);
    m_canvas.Text(cells.nRow, cells.nColumn + 1, cInside, std::u16string_view(text).substr(uFirst), ink);
    m_canvas.Text(cells.nRow, cells.nColumn + cells.cColumns - (bCombo ? 2 : 1), 2, bCombo ? u"v]" : u"]", ink);
    if (HasFocus(control) && TakesText(control.windowClass, control.dwStyle))
        m_canvas.ShowCursor(cells.nRow, cells.nColumn + 1 + static_cast<int>(uCaret - uFirst));
    m_targets.push_back({{cells.nRow, cells.nColumn, 1, cells.cColumns}, control.hwnd, -1});
}

// Entries from nTop on between two edges, which tell when there are more.
void CDialogPainter::DrawEntries(const ControlView& control, const Cells& cells, int nTop)
{
    const int cEntries = static_cast<int>(control.entries.size());
    Ink edge = InkOf(control);
    edge.bReverse = false;
    for (int nLine = 0; nLine < cells.cRows; ++nLine)
    {
        const int nRow = cells.nRow + nLine;
        const int nEntry = nTop + nLine;
        const int nRight = cells.nColumn + cells.cColumns - 1;
        const Cells inside{nRow, cells.nColumn + 1, 1, cells.cColumns - 2};
        Ink ink = edge;
        ink.bBold = nEntry == control.nSelected;
        ink.bReverse = ink.bBold && HasFocus(control);
        m_canvas.Edge(nRow, cells.nColumn, edge);
        m_canvas.Edge(nRow, nRight, edge);
        m_canvas.Fill(inside, ink);
        if (nEntry < cEntries)
            m_canvas.Text(nRow, inside.nColumn, inside.cColumns, control.entries[static_cast<std::size_t>(nEntry)], ink);
        if (nLine == 0 && nTop > 0)
            m_canvas.Text(nRow, nRight, 1, u"^", edge);
        if (nLine == cells.cRows - 1 && nEntry + 1 < cEntries)
            m_canvas.Text(nRow, nRight, 1, u"v", edge);
        m_targets.push_back({inside, control.hwnd, nEntry < cEntries ? nEntry : -1});
    }
}

void CDialogPainter::DrawListBox(const ControlView& control, const Cells& cells)
{
    // As far down as the last page: no room is left empty while there are entries above.
    const int nLastTop = std::max(0, static_cast<int>(control.entries.size()) - cells.cRows);
    DrawEntries(control, cells, std::clamp(control.nTop, 0, nLastTop));
    // An empty list has no entry to show the focus on.
    if (HasFocus(control) && control.nSelected < 0)
        m_canvas.ShowCursor(cells.nRow, cells.nColumn + 1);
}

void CDialogPainter::DrawOpenList(const ControlView& control, const Cells& cells)
{
    constexpr int mostRows = 10;
    if (control.windowClass != WindowClass::ComboBox || !control.bDropped)
        return;
    const int cEntries = static_cast<int>(control.entries.size());
    const int cRows = std::clamp(cEntries, 1, mostRows);
    const bool bBelow = cells.nRow + cRows + 1 < m_canvas.Rows();
    Cells list{bBelow ? cells.nRow + 1 : cells.nRow - cRows - 1, cells.nColumn, cRows + 1, cells.cColumns};
    const int nTop = std::clamp(control.nSelected - cRows + 1, 0, std::max(0, cEntries - cRows));
    // The line that closes the list lies on the side away from the field.
    m_canvas.Frame({list.nRow - (bBelow ? 1 : 0), list.nColumn, cRows + 2, list.cColumns});
    DrawField(control, cells);
    list.nRow += bBelow ? 0 : 1;
    list.cRows = cRows;
    DrawEntries(control, list, nTop);
}
} // namespace

std::vector<ClickTarget> DrawScene(CTerminalCanvas& canvas, const Scene& scene)
{
    std::vector<ClickTarget> targets;
    for (const auto& dialog : scene)
        CDialogPainter(canvas, dialog, &dialog == &scene.back(), targets).Draw();
    return targets;
}
} // namespace platform::user32
