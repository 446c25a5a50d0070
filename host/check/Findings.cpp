#include "host/check/Findings.h"

#include "host/KeyMask.h"
#include "values/Utf8Text.h"

#include <algorithm>

namespace
{
constexpr const char* partNames[] = {"profile", "security", "connection", "bands"};
constexpr const char* severityNames[] = {"error", "warning", "error"};
constexpr const char* stateNames[] = {"valid", "invalid", "unreadable"};

// A value that is a text of a whole file helps nobody.
constexpr std::size_t cchLongestValue = 64;

TextRange TagOf(const XmlElement& element)
{
    return {element.openingTag.nBegin, element.openingTag.nEnd};
}

bool IsInKey(const XmlElement* pElement)
{
    while (pElement && !IsKeyName(pElement->Name()))
        pElement = pElement->pParent;
    return pElement != nullptr;
}
} // namespace

CWideString ValueWithoutKeys(const CElementMap& map, const XmlElement& element, const CWideString& strValue)
{
    const CWideString strContent = WithoutKeys(map.Content(element));
    CWideString strMasked = WithoutKeys(strValue);
    if (IsInKey(&element))
        return CWideString(keyMask);
    if (strContent == map.Content(element))
        return strMasked;
    // Where each of them has a key, either may show what the other hides.
    return strMasked == strValue ? strContent : CWideString(keyMask);
}

CWideString Shortened(CWideString strText, std::size_t cchLongest)
{
    if (strText.size() <= cchLongest)
        return strText;
    strText.resize(cchLongest);
    // Not half of a character.
    if ((strText.back() & 0xFC00) == 0xD800)
        strText.pop_back();
    return strText;
}

void CFindings::AddContent(CheckRule rule, ProfilePart part, const XmlElement& element, Said said)
{
    if (said.strValue)
        said.strValue = ValueWithoutKeys(m_map, element, *said.strValue);
    const CWideView content = m_map.Content(element);
    const std::size_t nFirst = content.find_first_not_of(xmlWhiteSpace);
    const TextRange place =
        nFirst == CWideView::npos
            ? TagOf(element)
            : TextRange{element.ContentBegin() + nFirst, element.ContentBegin() + content.find_last_not_of(xmlWhiteSpace) + 1};
    Add(rule, part, Utf8Of(element.Name()), place, std::move(said));
}

void CFindings::AddElement(CheckRule rule, ProfilePart part, const XmlElement& element, Said said)
{
    Add(rule, part, Utf8Of(element.Name()), TagOf(element), std::move(said));
}

void CFindings::AddMissing(CheckRule rule, ProfilePart part, std::string_view name, const XmlElement& parent, Said said)
{
    Add(rule, part, name, TagOf(parent), std::move(said));
}

void CFindings::Add(CheckRule rule, ProfilePart part, std::string_view element, TextRange place, Said said)
{
    if (said.strValue)
        said.strValue = Shortened(std::move(*said.strValue), cchLongestValue);
    m_findings.push_back({&RowOf(rule), part, std::string(element), place, std::move(said.strValue), std::move(said.strAllowed),
                          std::move(said.strEffect)});
}

std::vector<Finding> CFindings::Take()
{
    std::stable_sort(m_findings.begin(), m_findings.end(),
                     [](const Finding& left, const Finding& right) { return left.place->nBegin < right.place->nBegin; });
    return std::move(m_findings);
}

ProfileState ProfileVerdict::State() const
{
    if (Count(Severity::Unreadable) != 0)
        return ProfileState::Unreadable;
    return Count(Severity::Error) != 0 ? ProfileState::Invalid : ProfileState::Valid;
}

std::size_t ProfileVerdict::Count(Severity severity) const
{
    return static_cast<std::size_t>(std::count_if(
        findings.begin(), findings.end(), [severity](const Finding& finding) { return finding.pRule->severity == severity; }));
}

std::string Sentence(const Finding& finding)
{
    constexpr std::string_view valueMark = "{}";
    std::string strSays = finding.pRule->szSays;
    if (const std::size_t nMark = strSays.find(valueMark); nMark != std::string::npos)
    {
        if (finding.strValue)
            strSays.replace(nMark, valueMark.size(), Utf8Of(*finding.strValue));
        else
            strSays = "is missing";
    }
    if (!finding.strElement.empty())
        strSays.insert(0, finding.strElement + " ");
    if (!finding.strAllowed.empty())
        strSays += ", allowed " + finding.strAllowed;
    return finding.strEffect.empty() ? strSays : strSays + ": " + finding.strEffect;
}

const char* PartName(ProfilePart part)
{
    return partNames[static_cast<int>(part)];
}

const char* SeverityName(Severity severity)
{
    return severityNames[static_cast<int>(severity)];
}

const char* StateName(ProfileState state)
{
    return stateNames[static_cast<int>(state)];
}
