// The SSID's text forms and decimal texts, against the run-time's view of each.
#include "fuzz/FuzzText.h"

#include "profile/DecimalText.h"
#include "profile/SsidText.h"

#include <algorithm>
#include <cctype>
#include <optional>

namespace
{
template <class Convert>
std::optional<std::string> Converted(const Convert& convert, CWideView text)
{
    BYTE rgbSsid[maxSsidLength] = {};
    LONG lLength = -7;
    const bool bConverted = convert(text, rgbSsid, &lLength);
    Require(bConverted ? lLength >= 0 && lLength <= LONG{maxSsidLength} : lLength == -7, "a length within bounds, or none");
    return bConverted ? std::optional(std::string(rgbSsid, rgbSsid + lLength)) : std::nullopt;
}

bool IsAll(const std::string& text, int (*pfnKind)(int))
{
    return std::ranges::all_of(text, [&](char ch) { return ch > 0 && pfnKind(ch) != 0; });
}

std::string InHex(const std::string& bytes)
{
    std::string digits;
    for (const char ch : bytes)
        digits += {"0123456789abcdef"[(ch >> 4) & 15], "0123456789abcdef"[ch & 15]};
    return digits;
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t cbData)
{
    const CWideString text = TextFrom(pData, cbData);
    std::string narrow;
    for (const WCHAR ch : text)
        narrow += ch < 128 ? static_cast<char>(ch) : '\xFF';

    const auto name = Converted(NameToSsid, text);
    Require(name.has_value() == (narrow.size() <= maxSsidLength && IsAll(narrow, std::isprint)), "names are printable");
    Require(!name || *name == narrow, "a name's bytes are its characters");
    const auto bytes = Converted(HexToSsid, text);
    const bool bIsHex = narrow.size() % 2 == 0 && narrow.size() <= 2 * maxSsidLength && IsAll(narrow, std::isxdigit);
    Require(bytes.has_value() == bIsHex, "bytes are pairs of digits");
    std::ranges::transform(narrow, narrow.begin(), [](char ch) { return ch < 0 ? ch : static_cast<char>(std::tolower(ch)); });
    Require(!bytes || InHex(*bytes) == narrow, "bytes read back");

    const long long nValue = std::clamp<long long>(std::strtoll(narrow.c_str(), nullptr, 10), INT32_MIN, INT32_MAX);
    Require(ParseDecimal(text) == nValue, "decimal texts read alike");
    Require(ParseDecimal(FormatDecimal(ParseDecimal(text))) == nValue, "numbers read back");
    return 0;
}
