// Reading and writing back the connection options.
#include "fuzz/FuzzText.h"

#include "profile/CCXConnectionSettings.h"

namespace
{
CBstr Write(const CCXConnectionSettings& settings)
{
    CBstr bstrProfile;
    *bstrProfile.Put() = settings.Serialise();
    return bstrProfile;
}

// Flags that are written always come back as 0 or 1; one that was not set is not written where it may be left out.
LONG ReadBackFlag(LONG lFlag)
{
    return lFlag == 1 ? 1 : 0;
}

void RequireReadsBack(const CCXConnectionSettings& written, const CCXConnectionSettings& read)
{
    if (written.radioMeasurement == 1)
    {
        Require(read.radioMeasurement == 1 && read.maxOffChannelTimeMs == written.maxOffChannelTimeMs &&
                    read.minOnChannelTimeMs == written.minOnChannelTimeMs,
                "enabled Radio Measurement reads back");
        Require(read.locationBasedServices == (written.locationBasedServices == 0 ? 0 : 1), "location-based services read back");
    }
    else
    {
        Require(read.radioMeasurement == (written.radioMeasurement == CCXConnectionSettings::NotSet ? 1 : 0),
                "disabled Radio Measurement reads back");
    }
    Require(read.rapido == ReadBackFlag(written.rapido), "Rapido reads back");
    Require(read.advancedRoaming == ReadBackFlag(written.advancedRoaming), "Advanced Roaming reads back");
    Require(written.advancedRoaming != 1 || read.roamingOption == written.roamingOption, "the roaming option reads back");
    Require(read.keepAliveEnabled == ReadBackFlag(written.keepAliveEnabled), "the timer reads back");
    Require(read.keepAlivePeriod == (written.keepAliveEnabled == 1 ? written.keepAlivePeriod : 0), "the period reads back");
    const LONG lNotSet = CCXConnectionSettings::NotSet;
    Require(read.clientReporting == (written.clientReporting == lNotSet ? lNotSet : ReadBackFlag(written.clientReporting)),
            "client reporting reads back");
    Require(read.authorizedProfile == (written.authorizedProfile == lNotSet ? lNotSet : ReadBackFlag(written.authorizedProfile)),
            "the authorized-profile flag reads back");
    Require(read.diagnosticSsidLength == (written.diagnosticSsidLength > 0 ? 18 : lNotSet),
            "the SSID reads back by its one name");
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t cbData)
{
    PrepareProcess();
    CCXConnectionSettings settings(TextFrom(pData, cbData).c_str());
    const CBstr bstrFirst = Write(settings);
    Require(bstrFirst && IsWellFormed(bstrFirst.Get()), "what is written is well-formed");
    const CCXConnectionSettings readBack(bstrFirst.Get());
    RequireReadsBack(settings, readBack);

    const CBstr bstrSecond = Write(readBack);
    Require(Write(CCXConnectionSettings(bstrSecond.Get())).View() == bstrSecond.View(),
            "from the second writing on nothing changes");
    settings.SetDefaults();
    Require(settings.IsValid(), "the defaults are valid whatever was read");
    return 0;
}
