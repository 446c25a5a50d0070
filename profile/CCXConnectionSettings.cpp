#include "profile/CCXConnectionSettings.h"

#include "profile/ConnectionElements.h"
#include "profile/IhvProfile.h"

#include <algorithm>
#include <iterator>

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
    const auto holds = [this](const ConnectionRange& range) { return range.Holds(*this); };
    return diagnosticSsidLength != Invalid && std::all_of(std::begin(connectionRanges), std::end(connectionRanges), holds);
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
