#include "answers/DocumentGenerator.h"

#include <algorithm>

namespace answers
{
namespace
{
// Texts of the shapes hold characters, not markup.
CWideString Escaped(CWideView text)
{
    CWideString escaped;
    for (const WCHAR ch : text)
    {
        if (ch == '&')
            escaped += OLESTR("&amp;");
        else
            escaped += ch;
    }
    return escaped;
}

// How many of the rows belong to the first: it, and all that are deeper.
std::size_t SizeOfSubtree(std::span<const ShapeRow> rows)
{
    const auto next =
        std::find_if(rows.begin() + 1, rows.end(), [&](const ShapeRow& row) { return row.uDepth <= rows[0].uDepth; });
    return static_cast<std::size_t>(next - rows.begin());
}
} // namespace

Document CDocumentGenerator::Next()
{
    Document document{static_cast<DocumentKind>(Pick(3)), {}};
    CWideString& text = document.text;
    if (OneIn(4))
        text += PickFrom(Prologues());
    AppendElement(text, ShapeOf(document.kind));
    if (OneIn(30))
        AppendInterlude(text);
    if (OneIn(3))
        Break(text);
    return document;
}

void CDocumentGenerator::AppendInterlude(CWideString& text)
{
    text += PickFrom(Interludes());
}

void CDocumentGenerator::AppendElement(CWideString& text, std::span<const ShapeRow> rows)
{
    const CWideString name = OneIn(40) ? PickFrom(WrongNames()) : rows[0].szName;
    text += OLESTR("<") + name;
    if (OneIn(12))
        text += PickFrom(Attributes());
    const auto nStart = text.size();
    text += OLESTR(">");
    if (rows[0].texts.empty())
        AppendChildren(text, rows);
    else
        AppendText(text, rows[0].texts);
    if (text.size() == nStart + 1 && OneIn(2))
        text.replace(nStart, 1, OLESTR("/>"));
    else
        text += OLESTR("</") + name + OLESTR(">");
}

void CDocumentGenerator::AppendChildren(CWideString& text, std::span<const ShapeRow> rows)
{
    const bool bSeparated = OneIn(3);
    for (std::size_t i = 1; i < SizeOfSubtree(rows); i += SizeOfSubtree(rows.subspan(i)))
    {
        if (bSeparated)
            text += OLESTR("\r\n  ");
        if (OneIn(15))
            AppendInterlude(text);
        // Alternatives stand beside each other in the shapes, so that a third goes missing.
        if (OneIn(3))
            continue;
        for (bool bAgain = true; bAgain; bAgain = OneIn(25))
            AppendElement(text, rows.subspan(i));
    }
    if (OneIn(20))
        AppendInterlude(text);
}

void CDocumentGenerator::AppendText(CWideString& text, std::span<const WCHAR* const> texts)
{
    if (OneIn(8))
        text += PickFrom(TextMixtures());
    text += Escaped(PickFrom(texts));
    if (OneIn(8))
        text += PickFrom(TextMixtures());
}

void CDocumentGenerator::Break(CWideString& text)
{
    for (bool bAgain = true; bAgain && !text.empty(); bAgain = OneIn(3))
    {
        const auto nAt = Pick(text.size());
        switch (Pick(5))
        {
        case 0:
            text.resize(nAt);
            break;
        case 1:
            text.erase(nAt, 1 + Pick(8));
            break;
        case 2:
        {
            const CWideString part = text.substr(nAt, 1 + Pick(40));
            text.insert(Pick(text.size()), part);
            break;
        }
        default:
            text.insert(nAt, PickFrom(Splinters()));
            break;
        }
    }
}
} // namespace answers
