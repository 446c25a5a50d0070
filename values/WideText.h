// The platform's UTF-16 text under one name each for a string and a view of it.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

using CWideString = std::basic_string<WCHAR>;
using CWideView = std::basic_string_view<WCHAR>;
