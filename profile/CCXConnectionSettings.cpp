#include "profile/CCXConnectionSettings.h"

#include "profile/ConnectionElements.h"
#include "profile/IhvProfile.h"

namespace
{
struct Range
{
    LONG lMin;
    LONG lMax;

    bool Contains(LONG lValue) const
    {
        return lValue >= lMin && lValue <= lMax;
    }
};
constexpr Range offChannelTimeMs = {10, 50};
constexpr Range onChannelTimeMs = {0, 500};
constexpr Range keepAlivePeriods = {0, 255};
} // namespace

void CCXConnectionSettings::Clear()
{
    radioMeasurement = NotSet;
    locationBasedServices = NotSet;
    clientReporting = NotSet;
    authorizedProfile = NotSet;
    rapido = NotSet;
    advancedRoaming = NotSet;
    maxOffChannelTimeMs = NotSet;
    minOnChannelTimeMs = NotSet;
    keepAliveEnabled = 0;
    keepAlivePeriod = NotSet;
    diagnosticSsidLength = NotSet;
}

void CCXConnectionSettings::SetDefaults()
{
    SetRadioMeasurementDefaults(*this);
    clientReporting = 1;
    authorizedProfile = 1;
    rapido = 1;
    advancedRoaming = 1;
    keepAlivePeriod = 0;
    NameToSsid(szDiagnosticChannelName, diagnosticSsid, &diagnosticSsidLength);
}

bool CCXConnectionSettings::IsValid() const
{
    if (radioMeasurement == 1 &&
        (!offChannelTimeMs.Contains(maxOffChannelTimeMs) || !onChannelTimeMs.Contains(minOnChannelTimeMs)))
        return false;
    if (keepAliveEnabled == 1 && !keepAlivePeriods.Contains(keepAlivePeriod))
        return false;
    return diagnosticSsidLength != Invalid;
}

void CCXConnectionSettings::Parse(const WCHAR* szIHVProfile)
{
    Clear();
    const CXmlNode root = OpenIhvProfile(szIHVProfile);
    if (root)
        ReadConnectionElements(root, *this);
}

BSTR CCXConnectionSettings::Serialise() const
{
    const CIhvProfileWriter writer;
    if (!writer)
        return nullptr;
    WriteConnectionElements(writer, *this);
    return writer.Finish().Detach();
}
