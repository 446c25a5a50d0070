// Reading and writing back the connection options.
#include "fuzz/FuzzText.h"

#include "profile/CCXConnectionSettings.h"

namespace
{
// Flags that are written always come back as 0 or 1; one that was not set is not written where it may be left out.
LONG ReadBackFlag(LONG lFlag)
{
    return lFlag == 1 ? 1 : 0;
}

void RequireReadsBack(const CCXConnectionSettings& written, const CCXConnectionSettings& read)
{
    constexpr LONG lNotSet = CCXConnectionSettings::NotSet;
    const auto leftOut = [](LONG lFlag) { return lFlag == lNotSet ? lNotSet : ReadBackFlag(lFlag); };
    const bool bMeasures = written.radioMeasurement == 1;
    const bool bRoams = written.advancedRoaming == 1;
    const struct
    {
        const char* szProperty;
        LONG lExpected;
        LONG lRead;
    } fields[] = {
        {"Radio Measurement", written.radioMeasurement == lNotSet ? 1 : ReadBackFlag(written.radioMeasurement),
         read.radioMeasurement},
        {"the longest time", bMeasures ? written.maxOffChannelTimeMs : read.maxOffChannelTimeMs, read.maxOffChannelTimeMs},
        {"the shortest time", bMeasures ? written.minOnChannelTimeMs : read.minOnChannelTimeMs, read.minOnChannelTimeMs},
        {"location-based services", bMeasures ? written.locationBasedServices != 0 : read.locationBasedServices,
         read.locationBasedServices},
        {"Rapido", ReadBackFlag(written.rapido), read.rapido},
        {"Advanced Roaming", ReadBackFlag(written.advancedRoaming), read.advancedRoaming},
        {"the roaming option", bRoams ? written.roamingOption : read.roamingOption, read.roamingOption},
        {"the timer", ReadBackFlag(written.keepAliveEnabled), read.keepAliveEnabled},
        {"the period", written.keepAliveEnabled == 1 ? written.keepAlivePeriod : 0, read.keepAlivePeriod},
        {"client reporting", leftOut(written.clientReporting), read.clientReporting},
        {"the authorized-profile flag", leftOut(written.authorizedProfile), read.authorizedProfile},
        {"the SSID, by its one name", written.diagnosticSsidLength > 0 ? 18 : lNotSet, read.diagnosticSsidLength},
    };
    for (const auto& field : fields)
        Require(field.lExpected == field.lRead, field.szProperty);
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t cbData)
{
    PrepareProcess();
    CCXConnectionSettings settings(TextFrom(pData, cbData).c_str());
    const CBstr bstrFirst = Written(settings);
    Require(bstrFirst && IsWellFormed(bstrFirst.Get()), "what is written is well-formed");
    const CCXConnectionSettings readBack(bstrFirst.Get());
    RequireReadsBack(settings, readBack);

    const CBstr bstrSecond = Written(readBack);
    Require(Written(CCXConnectionSettings(bstrSecond.Get())).View() == bstrSecond.View(),
            "from the second writing on nothing changes");
    settings.SetDefaults();
    Require(settings.IsValid(), "the defaults are valid whatever was read");
    return 0;
}
