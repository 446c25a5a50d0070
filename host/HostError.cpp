#include "host/HostError.h"

#include <algorithm>
#include <iterator>

namespace
{
struct ErrorMeaning
{
    DWORD dwError;
    const char* szMeaning;
};
constexpr ErrorMeaning errorMeanings[] = {
    {ERROR_PATH_NOT_FOUND, " (there is no such folder)"},
    {ERROR_ACCESS_DENIED, " (access is denied)"},
    {ERROR_DISK_FULL, " (the disk is full)"},
    {ERROR_MOD_NOT_FOUND, " (there is no such file, or a library that it needs is not there)"},
    {ERROR_BAD_EXE_FORMAT, " (it is no module that this program can load)"},
    {ERROR_INVALID_DATA, " (invalid data; a simulated service's call log says what is wrong with its adapters.json)"},
};
} // namespace

std::string ErrorText(DWORD dwError)
{
    const auto* const pFound = std::find_if(std::begin(errorMeanings), std::end(errorMeanings),
                                            [&](const ErrorMeaning& row) { return row.dwError == dwError; });
    return "error " + std::to_string(dwError) + (pFound != std::end(errorMeanings) ? pFound->szMeaning : "");
}
