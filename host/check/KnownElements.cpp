#include "host/check/KnownElements.h"

#include "profile/CCXSecurityTokens.h"

#include <algorithm>
#include <numeric>

namespace
{
struct KnownElement
{
    VendorPlace place;
    CWideView path;
    CWideView name;
};
constexpr KnownElement knownElements[] = {
    {VendorPlace::Connectivity, OLESTR(""), OLESTR("RadioMeasurement")},
    {VendorPlace::Connectivity, OLESTR(""), OLESTR("Rapido")},
    {VendorPlace::Connectivity, OLESTR(""), OLESTR("AdvancedRoaming")},
    {VendorPlace::Connectivity, OLESTR(""), OLESTR("KeepAliveTimer")},
    {VendorPlace::Connectivity, OLESTR(""), OLESTR("Diagnostics")},
    {VendorPlace::Connectivity, OLESTR("RadioMeasurement"), OLESTR("enabled")},
    {VendorPlace::Connectivity, OLESTR("RadioMeasurement"), OLESTR("disabled")},
    {VendorPlace::Connectivity, OLESTR("RadioMeasurement/enabled"), OLESTR("disableLocationBasedServices")},
    {VendorPlace::Connectivity, OLESTR("RadioMeasurement/enabled"), OLESTR("MaxOffChannelTimeMs")},
    {VendorPlace::Connectivity, OLESTR("RadioMeasurement/enabled"), OLESTR("MinOnChannelTimeMs")},
    {VendorPlace::Connectivity, OLESTR("AdvancedRoaming"), OLESTR("enabled")},
    {VendorPlace::Connectivity, OLESTR("AdvancedRoaming"), OLESTR("disabled")},
    {VendorPlace::Connectivity, OLESTR("AdvancedRoaming/enabled"), OLESTR("RoamingOption")},
    {VendorPlace::Connectivity, OLESTR("KeepAliveTimer"), OLESTR("Period")},
    {VendorPlace::Connectivity, OLESTR("Diagnostics"), OLESTR("AuthorizedProfile")},
    {VendorPlace::Connectivity, OLESTR("Diagnostics"), OLESTR("Channel")},
    {VendorPlace::Connectivity, OLESTR("Diagnostics/Channel"), OLESTR("SSID")},
    {VendorPlace::Connectivity, OLESTR("Diagnostics/Channel"), OLESTR("EnableClientReporting")},
    {VendorPlace::Connectivity, OLESTR("Diagnostics/Channel/SSID"), OLESTR("Hex")},
    {VendorPlace::Connectivity, OLESTR("Diagnostics/Channel/SSID"), OLESTR("Name")},
    {VendorPlace::Security, OLESTR(""), OLESTR("openNetwork")},
    {VendorPlace::Security, OLESTR(""), OLESTR("authenticatingNetwork")},
};
constexpr CWideView networkPath = OLESTR("authenticatingNetwork");
constexpr CWideView cipherName = OLESTR("encryption");

WCHAR Lower(WCHAR ch)
{
    return ch >= OLESTR('A') && ch <= OLESTR('Z') ? static_cast<WCHAR>(ch - OLESTR('A') + OLESTR('a')) : ch;
}

// How many characters have to be put in, taken out or exchanged to get from one name to the other.
std::size_t Distance(CWideView from, CWideView to)
{
    std::vector<std::size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), 0u);
    for (std::size_t i = 0; i < from.size(); ++i)
    {
        std::size_t nDiagonal = row[0]++;
        for (std::size_t j = 0; j < to.size(); ++j)
        {
            const std::size_t nExchanged = nDiagonal + (Lower(from[i]) == Lower(to[j]) ? 0 : 1);
            nDiagonal = row[j + 1];
            row[j + 1] = std::min({nExchanged, row[j] + 1, nDiagonal + 1});
        }
    }
    return row.back();
}
} // namespace

std::vector<CWideView> KnownBelow(VendorPlace place, CWideView path)
{
    std::vector<CWideView> names;
    for (const KnownElement& element : knownElements)
        if (element.place == place && element.path == path)
            names.push_back(element.name);
    if (place == VendorPlace::Security && path == networkPath)
        for (const auto& row : CCXSecurityTokens::authentication)
            names.push_back(row.szToken);
    else if (place == VendorPlace::Security && path.starts_with(networkPath) &&
             path.find(OLESTR('/')) == path.find_last_of(OLESTR('/')))
        names.push_back(cipherName);
    return names;
}

bool IsSameButCase(CWideView left, CWideView right)
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](WCHAR chLeft, WCHAR chRight) { return Lower(chLeft) == Lower(chRight); });
}

CWideView NearestName(CWideView name, const std::vector<CWideView>& known)
{
    CWideView nearest;
    // A longer name is no slip of anybody's, and comparing it takes long.
    constexpr std::size_t cchLongestName = 64;
    std::size_t nNearest = name.size() / 2 + 1;
    for (const CWideView candidate : known)
    {
        const std::size_t nDistance = name.size() <= cchLongestName ? Distance(name, candidate) : nNearest;
        if (nDistance < nNearest)
        {
            nNearest = nDistance;
            nearest = candidate;
        }
    }
    return nearest;
}
