// Tables of what is shown, of values that may come from outside.
#pragma once

#include <string>
#include <string_view>
#include <vector>

// A title and a value.
std::string Row(std::string_view title, const std::string& strValue);

// Rows of as many cells each, aligned.
std::string Columns(const std::vector<std::vector<std::string>>& rows);
