#include "host/PageWords.h"

#include "profile/CCXConnectionSettings.h"
#include "profile/RoamingLevels.h"
#include "values/Utf8Text.h"

namespace
{
std::string LevelName(LONG lOption)
{
    for (const RoamingLevel& level : roamingLevels)
        if (level.lOption == lOption)
            return level.szName;
    return roamingLevels[0].szName;
}
} // namespace

std::string SecurityWords(const CWideString& strAuthentication, const CWideString& strEncryption)
{
    return strAuthentication.empty() ? "none that the profile names"
                                     : Utf8Of(strAuthentication) + " with " + Utf8Of(strEncryption);
}

std::string OfferWords(const std::vector<CWideString>& names, std::optional<std::size_t> nDefault)
{
    std::string strText;
    for (std::size_t n = 0; n < names.size(); ++n)
        strText += (n ? ", " : "") + Utf8Of(names[n]) + (n == nDefault ? " (default)" : "");
    return strText.empty() ? "The extension offers nothing" : "The extension offers: " + strText;
}

std::string SettingsWords(const std::optional<CWideString>& strConnectivity)
{
    if (!strConnectivity)
        return "none, the dialog begins with its defaults";
    const CCXConnectionSettings settings(strConnectivity->c_str());
    if (!settings.IsValid())
        return "not valid, the dialog begins with its defaults";
    const auto onOrOff = [](LONG lValue) { return std::string(lValue == 1 ? "on" : "off"); };
    return "Radio Measurement " + onOrOff(settings.radioMeasurement) + ", Rapido " + onOrOff(settings.rapido) + ", roaming " +
           (settings.advancedRoaming == 1 ? LevelName(settings.roamingOption) : "off");
}
