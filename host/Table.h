// Rows of what is shown: a title and a value, which may come from outside.
#pragma once

#include <string>
#include <string_view>

std::string Row(std::string_view title, const std::string& strValue);
