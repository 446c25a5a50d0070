// The connection options of an IHV profile.
#pragma once

#include "profile/SsidText.h"
#include "values/Bstr.h"

struct CCXConnectionSettings
{
    // Values that stand for what was not there, or could not be read.
    static constexpr LONG NotSet = -1;
    static constexpr LONG Invalid = -2;

    LONG radioMeasurement;      // 1 enabled, 0 disabled
    LONG locationBasedServices; // 1 allowed, 0 disabled; counts while Radio Measurement is enabled
    LONG clientReporting;       // 1 true, 0 false
    LONG authorizedProfile;     // 1 true, 0 false
    LONG rapido;                // 1 true, 0 false
    LONG advancedRoaming;       // 1 enabled, 0 disabled
    LONG roamingOption = 0;     // 0 Default to 5 Very High; Clear and SetDefaults leave it alone, so it starts as Default
    LONG maxOffChannelTimeMs;
    LONG minOnChannelTimeMs;
    LONG keepAliveEnabled; // 1 on, 0 off
    LONG keepAlivePeriod;
    LONG diagnosticSsidLength; // bytes, 0..32
    BYTE diagnosticSsid[maxSsidLength] = {};
    void* connectionContext = nullptr; // the host's, not owned; set before the dialog runs on the record

    CCXConnectionSettings()
    {
        Clear();
    }
    explicit CCXConnectionSettings(const WCHAR* szIHVProfile)
    {
        Parse(szIHVProfile);
    }

    // Everything to NotSet and the timer to off. roamingOption, the SSID bytes and connectionContext stay.
    void Clear();

    // The settings of a profile that says nothing. keepAliveEnabled, roamingOption and connectionContext stay.
    void SetDefaults();

    // Whether the ranges below hold, and the SSID did convert.
    bool IsValid() const;

    // Clears the record and fills it from a profile text, which may be null. A text that does not load leaves it cleared.
    void Parse(const WCHAR* szIHVProfile);

    // Writes a new profile of the root and the connection elements alone; the caller owns it. Null when no document
    // could be made. Throws CAtlException or std::bad_alloc.
    [[nodiscard]] BSTR Serialise() const;
};

// What is valid of a number, which counts only while its switch is 1.
struct ConnectionRange
{
    LONG CCXConnectionSettings::*pSwitch;
    LONG CCXConnectionSettings::*pValue;
    LONG lMin;
    LONG lMax;

    bool Holds(const CCXConnectionSettings& settings) const
    {
        const LONG lValue = settings.*pValue;
        return settings.*pSwitch != 1 || (lValue >= lMin && lValue <= lMax);
    }
};
inline constexpr ConnectionRange connectionRanges[] = {
    {&CCXConnectionSettings::radioMeasurement, &CCXConnectionSettings::maxOffChannelTimeMs, 10, 50},
    {&CCXConnectionSettings::radioMeasurement, &CCXConnectionSettings::minOnChannelTimeMs, 0, 500},
    {&CCXConnectionSettings::keepAliveEnabled, &CCXConnectionSettings::keepAlivePeriod, 0, 255},
};
