#include "host/check/ConnectionCheck.h"

#include "host/IhvElement.h"
#include "profile/CCXConnectionSettings.h"
#include "profile/ConnectionElements.h"
#include "profile/DecimalText.h"
#include "profile/RoamingLevels.h"
#include "values/Utf8Text.h"

#include <algorithm>

namespace
{
constexpr ProfilePart connectionPart = ProfilePart::Connection;
constexpr const char* toDefaults = "all settings become the defaults";
constexpr CWideView rootName = OLESTR("CCX");
constexpr CWideView enabledName = OLESTR("enabled");
constexpr CWideView disabledName = OLESTR("disabled");

// A number of the record and where it stands: below the group itself, or below the group's "enabled".
struct NumberElement
{
    LONG CCXConnectionSettings::*pValue;
    CWideView group;
    bool bBelowEnabled;
    CWideView name;
    CheckRule outOfRange;
};
constexpr NumberElement numberElements[] = {
    {&CCXConnectionSettings::maxOffChannelTimeMs, OLESTR("RadioMeasurement"), true, OLESTR("MaxOffChannelTimeMs"),
     CheckRule::OffChannelTime},
    {&CCXConnectionSettings::minOnChannelTimeMs, OLESTR("RadioMeasurement"), true, OLESTR("MinOnChannelTimeMs"),
     CheckRule::OnChannelTime},
    {&CCXConnectionSettings::keepAlivePeriod, OLESTR("KeepAliveTimer"), false, OLESTR("Period"), CheckRule::KeepAlivePeriod},
    {&CCXConnectionSettings::roamingOption, OLESTR("AdvancedRoaming"), true, OLESTR("RoamingOption"), CheckRule::RoamingLevel},
};

// A group that is either on or off, by an element for each.
struct StateGroup
{
    CWideView name;
    const char* szWithNeither;
};
constexpr StateGroup stateGroups[] = {
    {OLESTR("RadioMeasurement"), "it is left out at the next writing"},
    {OLESTR("AdvancedRoaming"), "it is written as disabled"},
};

// Whether anything of the text is lost or cut when it is read as a number.
bool ReadsAsWritten(CWideView text, LONG lRead)
{
    text = Trimmed(text);
    const bool bSigned = text.starts_with(OLESTR('-')) || text.starts_with(OLESTR('+'));
    const CWideView digits = text.substr(bSigned ? 1 : 0);
    if (digits.empty() || digits.find_first_not_of(OLESTR("0123456789")) != CWideView::npos)
        return false;
    const CWideView significant = digits.substr(std::min(digits.find_first_not_of(OLESTR('0')), digits.size() - 1));
    const CWideString strRead = FormatDecimal(lRead);
    const CWideView read = strRead;
    return significant == read.substr(read.starts_with(OLESTR('-')) ? 1 : 0);
}

class CConnectionCheck
{
public:
    CConnectionCheck(CVendorElements& elements, CFindings& findings) : m_elements(elements), m_findings(findings)
    {
        const CWideString strText = VendorText(elements.Map(), elements.Root());
        // Reading leaves it alone where the text has none.
        m_record.roamingOption = CCXConnectionSettings::NotSet;
        m_record.Parse(strText.c_str());
    }

    void Run()
    {
        for (const StateGroup& group : stateGroups)
            CheckStates(group);
        for (const NumberElement& number : numberElements)
            CheckNumber(number);
        CheckSsid();
        CheckFlag(m_elements.Anywhere({rootName, OLESTR("Rapido")}));
        CheckFlag(m_elements.Anywhere({rootName, OLESTR("Diagnostics"), OLESTR("AuthorizedProfile")}));
        CheckFlag(m_elements.Below(Channel(), {OLESTR("EnableClientReporting")}));
    }

private:
    CWideString TextOf(const XmlElement& element) const
    {
        return ::TextOf(m_elements.Map(), element);
    }
    const XmlElement* Channel()
    {
        return m_elements.Anywhere({rootName, OLESTR("Diagnostics"), OLESTR("Channel")});
    }

    void CheckStates(const StateGroup& group)
    {
        const XmlElement* pGroup = m_elements.Anywhere({rootName, group.name});
        const XmlElement* pEnabled = m_elements.Below(pGroup, {enabledName});
        const XmlElement* pDisabled = m_elements.Below(pGroup, {disabledName});
        if (pEnabled && pDisabled)
            m_findings.AddElement(CheckRule::EnabledAndDisabled, connectionPart, *pEnabled, {{}, {}, "disabled counts"});
        else if (pGroup && !pEnabled && !pDisabled)
            m_findings.AddElement(CheckRule::NeitherState, connectionPart, *pGroup, {{}, {}, group.szWithNeither});
        CheckContent(pDisabled, true);
        CheckContent(pEnabled, false);
        CheckContent(m_elements.Below(pEnabled, {OLESTR("disableLocationBasedServices")}), true);
    }

    // That the element is there is all that counts of it, but for the elements that some are for.
    void CheckContent(const XmlElement* pElement, bool bElementsToo)
    {
        if (!pElement)
            return;
        const CWideString strText = OwnTextOf(m_elements.Map(), *pElement);
        CWideView content = Trimmed(strText);
        if (content.empty() && bElementsToo && pElement->pFirstChild)
            content = pElement->pFirstChild->Name();
        if (!content.empty())
            m_findings.AddContent(CheckRule::StateContent, connectionPart, *pElement,
                                  {CWideString(content), {}, "not looked at; that the element is there is what counts"});
    }

    void CheckNumber(const NumberElement& number)
    {
        const XmlElement* pGroup = m_elements.Anywhere({rootName, number.group});
        const XmlElement* pDisabled = number.bBelowEnabled ? FindBelow(pGroup, {disabledName}) : nullptr;
        const XmlElement* pParent = number.bBelowEnabled ? m_elements.Below(pGroup, {enabledName}) : pGroup;
        const XmlElement* pElement = m_elements.Below(pParent, {number.name});
        CheckRange(number, pParent, pElement);
        // What is switched off is not read.
        if (!pParent || pDisabled)
            return;
        if (number.pValue == &CCXConnectionSettings::roamingOption)
            CheckRoamingLevel(*pParent, pElement);
        if (!pElement)
            return;
        const CWideString strText = TextOf(*pElement);
        if (const LONG lRead = m_record.*number.pValue; !ReadsAsWritten(strText, lRead))
            m_findings.AddContent(CheckRule::NumberText, connectionPart, *pElement,
                                  {CWideString(Trimmed(strText)), {}, "read as " + Utf8Of(FormatDecimal(lRead))});
    }

    void CheckRange(const NumberElement& number, const XmlElement* pParent, const XmlElement* pElement)
    {
        for (const ConnectionRange& range : connectionRanges)
        {
            if (range.pValue != number.pValue || range.Holds(m_record))
                continue;
            const std::string strAllowed = std::to_string(range.lMin) + " to " + std::to_string(range.lMax);
            if (pElement)
                m_findings.AddContent(number.outOfRange, connectionPart, *pElement,
                                      {CWideString(Trimmed(TextOf(*pElement))), strAllowed, toDefaults});
            else
                m_findings.AddMissing(number.outOfRange, connectionPart, Utf8Of(number.name),
                                      pParent ? *pParent : m_elements.Root(), {{}, strAllowed, toDefaults});
        }
    }

    void CheckRoamingLevel(const XmlElement& enabled, const XmlElement* pElement)
    {
        const auto [first, last] =
            std::minmax_element(std::begin(roamingLevels), std::end(roamingLevels),
                                [](const RoamingLevel& left, const RoamingLevel& right) { return left.lOption < right.lOption; });
        const std::string strAllowed = std::to_string(first->lOption) + " to " + std::to_string(last->lOption);
        const bool bKnown = std::any_of(std::begin(roamingLevels), std::end(roamingLevels),
                                        [this](const RoamingLevel& level) { return level.lOption == m_record.roamingOption; });
        const std::string strShown = std::string("shown as ") + roamingLevels[0].szName;
        if (!pElement)
            m_findings.AddMissing(CheckRule::RoamingLevelMissing, connectionPart, "RoamingOption", enabled,
                                  {{}, strAllowed, strShown});
        else if (!bKnown)
            m_findings.AddContent(CheckRule::RoamingLevel, connectionPart, *pElement,
                                  {CWideString(Trimmed(TextOf(*pElement))), strAllowed, strShown});
    }

    void CheckSsid()
    {
        const XmlElement* pHex = m_elements.Below(Channel(), {OLESTR("SSID"), OLESTR("Hex")});
        const XmlElement* pName = m_elements.Below(Channel(), {OLESTR("SSID"), OLESTR("Name")});
        const XmlElement* pSsid = pHex ? pHex : pName;
        if (pHex && pName)
            m_findings.AddElement(CheckRule::HexBesideName, connectionPart, *pName, {{}, {}, "Hex counts"});
        if (!pSsid)
            return;
        const CWideString strText = TextOf(*pSsid);
        const LONG lLength = m_record.diagnosticSsidLength;
        if (lLength == CCXConnectionSettings::Invalid)
            m_findings.AddContent(CheckRule::DiagnosticSsid, connectionPart, *pSsid,
                                  {strText,
                                   pHex ? "at most 32 pairs of hexadecimal digits" : "at most 32 characters of printable ASCII",
                                   toDefaults});
        else if (lLength == 0)
            m_findings.AddContent(CheckRule::SsidDropped, connectionPart, *pSsid, {{}, {}, "it is left out at the next writing"});
        else if (!IsDefaultSsid())
            m_findings.AddContent(
                CheckRule::SsidRenamed, connectionPart, *pSsid,
                {strText, {}, "it is written as \"" + Utf8Of(szDiagnosticChannelName) + "\" at the next writing"});
    }

    bool IsDefaultSsid() const
    {
        const CWideView name = szDiagnosticChannelName;
        const BYTE* const pBegin = m_record.diagnosticSsid;
        return std::equal(pBegin, pBegin + m_record.diagnosticSsidLength, name.begin(), name.end());
    }

    void CheckFlag(const XmlElement* pElement)
    {
        if (!pElement)
            return;
        const CWideString strText = TextOf(*pElement);
        if (strText != OLESTR("true") && strText != OLESTR("false"))
            m_findings.AddContent(CheckRule::FlagText, connectionPart, *pElement, {strText, "true or false", "read as false"});
    }

    CVendorElements& m_elements;
    CFindings& m_findings;
    CCXConnectionSettings m_record;
};
} // namespace

void CheckConnection(CVendorElements& elements, CFindings& findings)
{
    CConnectionCheck(elements, findings).Run();
}
