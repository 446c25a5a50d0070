#include "answers/Documents.h"
#include "answers/Question.h"

#include <algorithm>
#include <fstream>

namespace answers
{
namespace
{
// How many of the rows belong to the first: it, and all that are deeper.
std::size_t SizeOfSubtree(std::span<const ShapeRow> rows)
{
    const auto next =
        std::find_if(rows.begin() + 1, rows.end(), [&](const ShapeRow& row) { return row.uDepth <= rows[0].uDepth; });
    return static_cast<std::size_t>(next - rows.begin());
}
} // namespace

DocumentShapes ReadDocumentShapes(const std::filesystem::path& file)
{
    DocumentShapes shapes;
    std::vector<ShapeRow>* pDocument = nullptr;
    std::ifstream text(file);
    for (std::string line; std::getline(text, line);)
    {
        if (line.empty() || line.starts_with('#'))
            continue;
        const std::size_t uDepth = line.find_first_not_of(' ') / 2;
        CQuestion words(line);
        const std::string name = words.Word();
        if (uDepth > 0)
            pDocument->push_back(
                {uDepth - 1, CWideString(name.begin(), name.end()), words.HasMore() ? &shapes.lists.at(words.Word()) : nullptr});
        else if (name == "document")
            pDocument = &shapes.documents[words.Word()];
        else
        {
            while (words.HasMore())
                shapes.lists[name].emplace_back(words.Text());
        }
    }
    return shapes;
}

Document CDocumentGenerator::Next()
{
    static constexpr const char* kinds[] = {"security", "connection", "wireless"};
    Document document{kinds[Pick(std::size(kinds))], {}};
    CWideString& text = document.text;
    if (OneIn(4))
        text += PickFrom("prologues");
    AppendElement(text, m_shapes.documents.at(document.kind));
    if (OneIn(30))
        text += PickFrom("interludes");
    if (OneIn(3))
        Break(text);
    return document;
}

void CDocumentGenerator::AppendElement(CWideString& text, std::span<const ShapeRow> rows)
{
    const CWideString name = OneIn(40) ? PickFrom("wrong-names") : rows[0].name;
    text += OLESTR("<") + name;
    if (OneIn(12))
        text += PickFrom("attributes");
    const auto nStart = text.size();
    text += OLESTR(">");
    if (!rows[0].pTexts)
        AppendChildren(text, rows);
    else
    {
        text += OneIn(8) ? PickFrom("text-mixtures") : CWideString();
        text += PickFrom(*rows[0].pTexts);
        text += OneIn(8) ? PickFrom("text-mixtures") : CWideString();
    }
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
            text += PickFrom("interludes");
        // Alternatives stand beside each other in the shapes, so that a third goes missing.
        if (OneIn(3))
            continue;
        for (bool bAgain = true; bAgain; bAgain = OneIn(25))
            AppendElement(text, rows.subspan(i));
    }
    if (OneIn(20))
        text += PickFrom("interludes");
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
            text.insert(nAt, PickFrom("splinters"));
            break;
        }
    }
}
} // namespace answers
