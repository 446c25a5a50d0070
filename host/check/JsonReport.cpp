// For programs: one object, written as it grows.
#include "host/KeyMask.h"
#include "host/check/CheckReport.h"
#include "host/check/TextLines.h"
#include "values/Utf8Text.h"

#include <nlohmann/json.hpp>

namespace
{
using Json = nlohmann::ordered_json;

Json TextOrNull(const std::string& strText)
{
    return strText.empty() ? Json() : Json(strText);
}

Json JsonOf(const Finding& finding, const CTextLines& lines)
{
    Json json = {{"rule", finding.pRule->szId},
                 {"severity", SeverityName(finding.pRule->severity)},
                 {"part", PartName(finding.part)},
                 {"element", TextOrNull(finding.strElement)},
                 {"line", nullptr},
                 {"column", nullptr},
                 {"value", finding.strValue ? Json(Utf8Of(*finding.strValue)) : Json()},
                 {"allowed", TextOrNull(finding.strAllowed)},
                 {"effect", TextOrNull(finding.strEffect)}};
    if (finding.place)
    {
        const TextPosition position = lines.PositionOf(finding.place->nBegin);
        json["line"] = position.nLine;
        json["column"] = position.nColumn;
    }
    return json;
}

// A file's name may be no UTF-8. The output may be a terminal's, which obeys characters that are no ASCII, too.
std::string Written(const Json& json)
{
    return json.dump(-1, ' ', true, Json::error_handler_t::replace);
}

std::string JsonHead(const CheckCounts&, const ReportOptions&)
{
    return "{\"profiles\":[\n";
}

std::string JsonEntry(const ProfileVerdict& verdict, const ReportOptions&)
{
    Json findings = Json::array();
    if (!verdict.findings.empty())
    {
        const CTextLines lines(verdict.strText);
        for (const Finding& finding : ToldFindings(verdict))
            findings.push_back(JsonOf(finding, lines));
    }
    return Written({{"file", Utf8Of(WithoutKeys(WideOf(verdict.strFile)))},
                    {"name", verdict.strName ? Json(Utf8Of(*verdict.strName)) : Json()},
                    {"state", StateName(verdict.State())},
                    {"findings", std::move(findings)},
                    {"more", UntoldFindings(verdict)}});
}

std::string JsonTail(const CheckCounts& counts)
{
    const Json json = {
        {"checked", counts.nChecked}, {"valid", counts.nValid}, {"invalid", counts.nInvalid}, {"unreadable", counts.nUnreadable}};
    return "\n]," + Written(json).substr(1) + "\n";
}
} // namespace

const CheckReport jsonReport = {"json", false, ",\n", JsonHead, JsonEntry, JsonTail};
