#include "profile/ConnectionElements.h"

#include "profile/DecimalText.h"

namespace
{
const WCHAR* FlagText(LONG lFlag)
{
    return lFlag == 1 ? OLESTR("true") : OLESTR("false");
}

void AppendDecimal(const CIhvProfileWriter& writer, const CXmlNode& parent, const WCHAR* szName, LONG lValue)
{
    writer.Append(parent, szName, FormatDecimal(lValue).c_str());
}

// A missing number, or one that cannot be read, leaves the field as it is.
void ReadDecimal(const CXmlNode& element, LONG& lField)
{
    if (const auto text = element.Text())
        lField = ParseDecimal(*text);
}

// A missing flag leaves the field as it is.
void ReadFlag(const CXmlNode& element, LONG& lField)
{
    if (!element)
        return;
    const auto text = element.Text();
    if (!text)
        lField = CCXConnectionSettings::Invalid;
    else
        lField = *text == OLESTR("true") ? 1 : 0;
}

void ReadRadioMeasurement(const CXmlNode& root, CCXConnectionSettings& settings)
{
    const CXmlNode measurement = root.Select(OLESTR("//CCX/RadioMeasurement"));
    if (!measurement)
    {
        SetRadioMeasurementDefaults(settings);
        return;
    }
    if (measurement.Select(OLESTR("disabled")))
    {
        settings.radioMeasurement = 0;
        return;
    }
    const CXmlNode enabled = measurement.Select(OLESTR("enabled"));
    if (!enabled)
        return;
    settings.radioMeasurement = 1;
    settings.locationBasedServices = enabled.Select(OLESTR("disableLocationBasedServices")) ? 0 : 1;
    ReadDecimal(enabled.Select(OLESTR("MaxOffChannelTimeMs")), settings.maxOffChannelTimeMs);
    ReadDecimal(enabled.Select(OLESTR("MinOnChannelTimeMs")), settings.minOnChannelTimeMs);
}

void WriteRadioMeasurement(const CIhvProfileWriter& writer, const CCXConnectionSettings& settings)
{
    if (settings.radioMeasurement == CCXConnectionSettings::NotSet)
        return;
    const CXmlNode measurement = writer.Append(writer.Root(), OLESTR("RadioMeasurement"));
    if (settings.radioMeasurement != 1)
    {
        writer.Append(measurement, OLESTR("disabled"));
        return;
    }
    const CXmlNode enabled = writer.Append(measurement, OLESTR("enabled"));
    if (settings.locationBasedServices == 0)
        writer.Append(enabled, OLESTR("disableLocationBasedServices"));
    AppendDecimal(writer, enabled, OLESTR("MaxOffChannelTimeMs"), settings.maxOffChannelTimeMs);
    AppendDecimal(writer, enabled, OLESTR("MinOnChannelTimeMs"), settings.minOnChannelTimeMs);
}

void ReadKeepAliveTimer(const CXmlNode& root, CCXConnectionSettings& settings)
{
    const CXmlNode timer = root.Select(OLESTR("//CCX/KeepAliveTimer"));
    if (!timer)
    {
        settings.keepAliveEnabled = 0;
        settings.keepAlivePeriod = 0;
        return;
    }
    settings.keepAliveEnabled = 1;
    ReadDecimal(timer.Select(OLESTR("Period")), settings.keepAlivePeriod);
}

void WriteKeepAliveTimer(const CIhvProfileWriter& writer, const CCXConnectionSettings& settings)
{
    if (settings.keepAliveEnabled == 1)
        AppendDecimal(writer, writer.Append(writer.Root(), OLESTR("KeepAliveTimer")), OLESTR("Period"), settings.keepAlivePeriod);
}

// The hexadecimal form decides alone where it stands, even when it does not convert.
void ReadDiagnosticSsid(const CXmlNode& channel, CCXConnectionSettings& settings)
{
    const CXmlNode hex = channel.Select(OLESTR("SSID/Hex"));
    const auto text = hex ? hex.Text() : channel.Select(OLESTR("SSID/Name")).Text();
    if (!text)
        return;
    const auto convert = hex ? HexToSsid : NameToSsid;
    if (!convert(*text, settings.diagnosticSsid, &settings.diagnosticSsidLength))
        settings.diagnosticSsidLength = CCXConnectionSettings::Invalid;
}

void ReadDiagnostics(const CXmlNode& root, CCXConnectionSettings& settings)
{
    if (const CXmlNode channel = root.Select(OLESTR("//CCX/Diagnostics/Channel")))
    {
        ReadDiagnosticSsid(channel, settings);
        ReadFlag(channel.Select(OLESTR("EnableClientReporting")), settings.clientReporting);
    }
    ReadFlag(root.Select(OLESTR("//CCX/Diagnostics/AuthorizedProfile")), settings.authorizedProfile);
}

void WriteDiagnostics(const CIhvProfileWriter& writer, const CCXConnectionSettings& settings)
{
    const bool bHasSsid = settings.diagnosticSsidLength > 0;
    const bool bHasReporting = settings.clientReporting != CCXConnectionSettings::NotSet;
    const bool bHasAuthorization = settings.authorizedProfile != CCXConnectionSettings::NotSet;
    if (!bHasSsid && !bHasReporting && !bHasAuthorization)
        return;
    const CXmlNode diagnostics = writer.Append(writer.Root(), OLESTR("Diagnostics"));
    if (bHasAuthorization)
        writer.Append(diagnostics, OLESTR("AuthorizedProfile"), FlagText(settings.authorizedProfile));
    if (!bHasSsid && !bHasReporting)
        return;
    const CXmlNode channel = writer.Append(diagnostics, OLESTR("Channel"));
    if (bHasSsid)
        writer.Append(writer.Append(channel, OLESTR("SSID")), OLESTR("Name"), szDiagnosticChannelName);
    if (bHasReporting)
        writer.Append(channel, OLESTR("EnableClientReporting"), FlagText(settings.clientReporting));
}

void ReadRapido(const CXmlNode& root, CCXConnectionSettings& settings)
{
    ReadFlag(root.Select(OLESTR("//CCX/Rapido")), settings.rapido);
}

void WriteRapido(const CIhvProfileWriter& writer, const CCXConnectionSettings& settings)
{
    writer.Append(writer.Root(), OLESTR("Rapido"), FlagText(settings.rapido));
}

void ReadAdvancedRoaming(const CXmlNode& root, CCXConnectionSettings& settings)
{
    const CXmlNode roaming = root.Select(OLESTR("//CCX/AdvancedRoaming"));
    if (!roaming)
    {
        settings.advancedRoaming = 1;
        return;
    }
    if (roaming.Select(OLESTR("disabled")))
    {
        settings.advancedRoaming = 0;
        return;
    }
    const CXmlNode enabled = roaming.Select(OLESTR("enabled"));
    if (!enabled)
        return;
    settings.advancedRoaming = 1;
    ReadDecimal(enabled.Select(OLESTR("RoamingOption")), settings.roamingOption);
}

void WriteAdvancedRoaming(const CIhvProfileWriter& writer, const CCXConnectionSettings& settings)
{
    const CXmlNode roaming = writer.Append(writer.Root(), OLESTR("AdvancedRoaming"));
    if (settings.advancedRoaming == 1)
        AppendDecimal(writer, writer.Append(roaming, OLESTR("enabled")), OLESTR("RoamingOption"), settings.roamingOption);
    else
        writer.Append(roaming, OLESTR("disabled"));
}
} // namespace

void SetRadioMeasurementDefaults(CCXConnectionSettings& settings)
{
    settings.radioMeasurement = 1;
    settings.locationBasedServices = 1;
    settings.maxOffChannelTimeMs = 50;
    settings.minOnChannelTimeMs = 400;
}

void ReadConnectionElements(const CXmlNode& root, CCXConnectionSettings& settings)
{
    ReadRadioMeasurement(root, settings);
    ReadKeepAliveTimer(root, settings);
    ReadDiagnostics(root, settings);
    ReadRapido(root, settings);
    ReadAdvancedRoaming(root, settings);
}

void WriteConnectionElements(const CIhvProfileWriter& writer, const CCXConnectionSettings& settings)
{
    // In the order that the elements have in a profile.
    WriteRadioMeasurement(writer, settings);
    WriteRapido(writer, settings);
    WriteAdvancedRoaming(writer, settings);
    WriteKeepAliveTimer(writer, settings);
    WriteDiagnostics(writer, settings);
}
