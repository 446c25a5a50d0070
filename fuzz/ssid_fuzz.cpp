// The SSID's text forms and decimal texts, against a second formulation of each.
#include "fuzz/FuzzText.h"

#include "profile/DecimalText.h"
#include "profile/SsidText.h"

#include <cctype>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

namespace
{
using Bytes = std::vector<BYTE>;

template <class Convert>
std::optional<Bytes> Converted(const Convert& convert, const CWideString& text)
{
    BYTE rgbSsid[maxSsidLength] = {};
    LONG lLength = -7;
    if (!convert(text.c_str(), rgbSsid, &lLength))
    {
        Require(lLength == -7, "a failure leaves the length alone");
        return std::nullopt;
    }
    Require(lLength >= 0 && lLength <= static_cast<LONG>(maxSsidLength), "the length is within bounds");
    return Bytes(rgbSsid, rgbSsid + lLength);
}

std::optional<Bytes> HexByLibrary(const CWideString& text)
{
    if (text.size() % 2 != 0 || text.size() > 2 * maxSsidLength)
        return std::nullopt;
    Bytes bytes;
    for (std::size_t i = 0; i < text.size(); i += 2)
    {
        if (text[i] > 127 || text[i + 1] > 127 || !std::isxdigit(text[i]) || !std::isxdigit(text[i + 1]))
            return std::nullopt;
        const std::string pair = {static_cast<char>(text[i]), static_cast<char>(text[i + 1])};
        bytes.push_back(static_cast<BYTE>(std::stoi(pair, nullptr, 16)));
    }
    return bytes;
}

std::optional<Bytes> NameByLibrary(const CWideString& text)
{
    Bytes bytes;
    for (const WCHAR ch : text)
    {
        if (ch > 127 || !std::isprint(ch))
            return std::nullopt;
        bytes.push_back(static_cast<BYTE>(ch));
    }
    return bytes.size() > maxSsidLength ? std::nullopt : std::optional(bytes);
}

LONG DecimalByLibrary(const CWideString& text)
{
    std::string narrow;
    for (const WCHAR ch : text)
        narrow += ch < 128 ? static_cast<char>(ch) : 'x';
    const long long nValue = std::strtoll(narrow.c_str(), nullptr, 10); // saturates
    return static_cast<LONG>(nValue > INT32_MAX ? INT32_MAX : nValue < INT32_MIN ? INT32_MIN : nValue);
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t cbData)
{
    const CWideString text = TextFrom(pData, cbData);
    Require(Converted(HexToSsid, text) == HexByLibrary(text), "hexadecimal forms convert alike");
    Require(Converted(NameToSsid, text) == NameByLibrary(text), "names convert alike");
    Require(ParseDecimal(text) == DecimalByLibrary(text), "decimal texts read alike");
    Require(ParseDecimal(FormatDecimal(ParseDecimal(text))) == ParseDecimal(text), "numbers read back");
    return 0;
}
