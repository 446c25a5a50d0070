#include "host/ConnectionRecord.h"

#include "host/Utf8.h"
#include "host/XmlQuery.h"

#include <algorithm>
#include <cstdlib>

namespace
{
constexpr long radioMeasurementDefaults[] = {1, 1, 50, 400};
constexpr std::size_t cbMostSsid = 32;

CWideString Below(CWideView parent, CWideView path)
{
    return CWideString(parent) + OLESTR("/") + CWideString(path);
}

// "true" and nothing else is 1.
long Flag(const CXmlQuery& query, CWideView path)
{
    const auto strText = query.Text(path);
    return strText ? (*strText == OLESTR("true") ? 1 : 0) : fieldNotSet;
}

long Number(const CXmlQuery& query, CWideView path)
{
    const auto strText = query.Text(path);
    return strText ? std::strtol(Utf8Of(*strText).c_str(), nullptr, 10) : fieldNotSet;
}

// "disabled" outweighs "enabled".
long Switch(const CXmlQuery& query, CWideView group)
{
    if (query.Has(Below(group, OLESTR("disabled"))))
        return 0;
    return query.Has(Below(group, OLESTR("enabled"))) ? 1 : fieldNotSet;
}

long HexSsidLength(const CWideString& strHex)
{
    const bool bDigits = strHex.find_first_not_of(OLESTR("0123456789abcdefABCDEF")) == CWideString::npos;
    return bDigits && strHex.size() % 2 == 0 && strHex.size() / 2 <= cbMostSsid ? static_cast<long>(strHex.size() / 2)
                                                                                : fieldInvalid;
}

long NameSsidLength(const CWideString& strName)
{
    const bool bPrintable =
        std::all_of(strName.begin(), strName.end(), [](WCHAR wch) { return wch >= OLESTR(' ') && wch <= OLESTR('~'); });
    return bPrintable && strName.size() <= cbMostSsid ? static_cast<long>(strName.size()) : fieldInvalid;
}

// The hexadecimal form outweighs the name, also where it is wrong.
long SsidLength(const CXmlQuery& query, CWideView channel)
{
    if (const auto strHex = query.Text(Below(channel, OLESTR("SSID/Hex"))))
        return HexSsidLength(*strHex);
    const auto strName = query.Text(Below(channel, OLESTR("SSID/Name")));
    return strName ? NameSsidLength(*strName) : fieldNotSet;
}

void AddRadioMeasurement(const CXmlQuery& query, std::vector<RecordField>& fields)
{
    constexpr CWideView group = OLESTR("//CCX/RadioMeasurement");
    const bool bPresent = query.Has(group);
    const long lSwitch = bPresent ? Switch(query, group) : radioMeasurementDefaults[0];
    const CWideString strEnabled = Below(group, OLESTR("enabled"));
    const bool bRead = bPresent && lSwitch == 1;
    const long values[] = {
        lSwitch,
        bRead ? (query.Has(Below(strEnabled, OLESTR("disableLocationBasedServices"))) ? 0 : 1) : fieldNotSet,
        bRead ? Number(query, Below(strEnabled, OLESTR("MaxOffChannelTimeMs"))) : fieldNotSet,
        bRead ? Number(query, Below(strEnabled, OLESTR("MinOnChannelTimeMs"))) : fieldNotSet,
    };
    const long* pValues = bPresent ? values : radioMeasurementDefaults;
    fields.push_back({"radioMeasurement", pValues[0]});
    fields.push_back({"locationBasedServices", pValues[1]});
    fields.push_back({"maxOffChannelTimeMs", pValues[2]});
    fields.push_back({"minOnChannelTimeMs", pValues[3]});
}
} // namespace

std::vector<RecordField> ReadConnectionRecord(CWideView vendorText)
{
    const CXmlQuery query(vendorText);
    constexpr CWideView roaming = OLESTR("//CCX/AdvancedRoaming");
    constexpr CWideView timer = OLESTR("//CCX/KeepAliveTimer");
    constexpr CWideView channel = OLESTR("//CCX/Diagnostics/Channel");
    std::vector<RecordField> fields;
    AddRadioMeasurement(query, fields);
    fields.push_back({"rapido", Flag(query, OLESTR("//CCX/Rapido"))});
    const long lRoaming = query.Has(roaming) ? Switch(query, roaming) : 1;
    fields.push_back({"advancedRoaming", lRoaming});
    fields.push_back(
        {"roamingOption", lRoaming == 1 ? Number(query, Below(roaming, OLESTR("enabled/RoamingOption"))) : fieldNotSet});
    const bool bTimer = query.Has(timer);
    fields.push_back({"keepAliveEnabled", bTimer ? 1 : 0});
    fields.push_back({"keepAlivePeriod", bTimer ? Number(query, Below(timer, OLESTR("Period"))) : 0});
    fields.push_back({"authorizedProfile", Flag(query, OLESTR("//CCX/Diagnostics/AuthorizedProfile"))});
    fields.push_back({"clientReporting", Flag(query, Below(channel, OLESTR("EnableClientReporting")))});
    fields.push_back({"diagnosticSsidLength", SsidLength(query, channel)});
    return fields;
}

std::string ValueText(long lValue)
{
    if (lValue == fieldNotSet)
        return "not set";
    return lValue == fieldInvalid ? "invalid" : std::to_string(lValue);
}
