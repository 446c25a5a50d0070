#include "host/Table.h"

#include "host/Shown.h"

#include <algorithm>

namespace
{
constexpr std::size_t cchTitle = 26;
}

std::string Row(std::string_view title, const std::string& strValue)
{
    std::string strRow(title);
    strRow.resize(std::max(cchTitle, title.size() + 1), ' ');
    return strRow + Shown(strValue) + "\n";
}
