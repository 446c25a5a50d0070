#include "host/Table.h"

#include "host/Shown.h"

#include <algorithm>

namespace
{
constexpr std::size_t cchTitle = 26;

// One endless cell would push the others out of sight in every row.
std::string CellOf(const std::string& strValue)
{
    constexpr std::size_t cchLongest = 64;
    const std::string strShown = Shown(strValue);
    const CWideString strText = WideOf(strShown);
    return strText.size() <= cchLongest ? strShown : Utf8Of(CWideView(strText).substr(0, cchLongest)) + "...";
}
} // namespace

std::string Row(std::string_view title, const std::string& strValue)
{
    std::string strRow(title);
    strRow.resize(std::max(cchTitle, title.size() + 1), ' ');
    return strRow + Shown(strValue) + "\n";
}

std::string Columns(const std::vector<std::vector<std::string>>& rows)
{
    std::vector<std::vector<std::string>> shown;
    std::vector<std::size_t> widths;
    for (const auto& row : rows)
    {
        auto& cells = shown.emplace_back();
        widths.resize(std::max(widths.size(), row.size()));
        for (const std::string& strCell : row)
        {
            std::size_t& nWidth = widths[cells.size()];
            const bool bLast = &strCell == &row.back();
            nWidth = std::max(nWidth, WidthOf(cells.emplace_back(bLast ? Shown(strCell) : CellOf(strCell))));
        }
    }
    std::string strTable;
    for (const auto& cells : shown)
    {
        for (std::size_t n = 0; n + 1 < cells.size(); ++n)
            strTable += cells[n] + std::string(widths[n] - WidthOf(cells[n]) + 2, ' ');
        strTable += cells.back() + "\n";
    }
    return strTable;
}
