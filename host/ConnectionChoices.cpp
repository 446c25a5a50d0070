#include "host/ConnectionChoices.h"

#include "profile/RoamingLevels.h"
#include "resources/resource.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <string_view>

namespace
{
struct DialogControl
{
    int nId;
    bool bIsList;
    const char* szWhenOutOfUse;
};
// In the order of use: the list opens only once its check-box is checked.
constexpr DialogControl dialogControls[] = {
    {IDC_RADIO_MEASUREMENT, false, "this machine's configuration keeps it away"},
    {IDC_BAND_5_GHZ, false, "the interface does not support 5 GHz"},
    {IDC_BAND_2_4_GHZ, false, "the interface does not support 2.4 GHz"},
    {IDC_RAPIDO, false, "none of the maker's adapters has a driver that reports Rapido"},
    {IDC_ADVANCED_ROAMING, false, "the dialog does not offer it"},
    {IDC_ROAMING_OPTION, true, "Advanced Roaming is off"},
};

struct ControlState
{
    int nControl;
    long lWanted;
};
struct Choice
{
    std::string strName;
    std::vector<ControlState> states;
};
struct Setting
{
    std::string strName;
    std::vector<Choice> choices;
};

std::vector<Setting> Settings()
{
    const auto onOrOff = [](int nControl) { return std::vector<Choice>{{"on", {{nControl, 1}}}, {"off", {{nControl, 0}}}}; };
    std::vector<Choice> levels;
    for (const RoamingLevel& level : roamingLevels)
        levels.push_back({level.szName, {{IDC_ROAMING_OPTION, level.lOption}}});
    return {{"radio-measurement", onOrOff(IDC_RADIO_MEASUREMENT)},
            {"rapido", onOrOff(IDC_RAPIDO)},
            {"advanced-roaming", onOrOff(IDC_ADVANCED_ROAMING)},
            {"roaming", levels},
            {"bands",
             {{"5", {{IDC_BAND_5_GHZ, 1}, {IDC_BAND_2_4_GHZ, 0}}},
              {"2.4", {{IDC_BAND_5_GHZ, 0}, {IDC_BAND_2_4_GHZ, 1}}},
              {"both", {{IDC_BAND_5_GHZ, 1}, {IDC_BAND_2_4_GHZ, 1}}}}}};
}

template <class Row>
std::string Names(const std::vector<Row>& rows, const char* szBetween)
{
    std::string strText;
    for (const Row& row : rows)
        strText += (strText.empty() ? "" : szBetween) + row.strName;
    return strText;
}

// Whether two names differ in nothing but the case of letters, which are ASCII here.
bool IsSameName(std::string_view left, std::string_view right)
{
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    return std::equal(left.begin(), left.end(), right.begin(), right.end(), [&](char a, char b) { return lower(a) == lower(b); });
}

template <class Row>
const Row* Named(const std::vector<Row>& rows, const std::string& strName)
{
    const auto row =
        std::find_if(rows.begin(), rows.end(), [&](const Row& candidate) { return IsSameName(candidate.strName, strName); });
    return row == rows.end() ? nullptr : &*row;
}

const Choice& ChoiceOf(const std::vector<Setting>& settings, const std::string& strName, const std::string& strValue)
{
    const Setting* pSetting = Named(settings, strName);
    if (!pSetting)
        throw std::invalid_argument("there is no setting " + strName + "; there are " + Names(settings, ", "));
    if (const Choice* pChoice = Named(pSetting->choices, strValue))
        return *pChoice;
    throw std::invalid_argument(strName + " cannot be " + (strValue.empty() ? "empty" : strValue) + "; it can be " +
                                Names(pSetting->choices, ", "));
}
} // namespace

std::vector<WantedState> ChoicesOf(const std::vector<std::string>& arguments)
{
    const std::vector<Setting> settings = Settings();
    std::vector<std::string> named;
    std::vector<ControlState> chosen;
    for (const std::string& strArgument : arguments)
    {
        const std::size_t nEquals = std::min(strArgument.find('='), strArgument.size());
        const std::string strName = strArgument.substr(0, nEquals);
        if (std::any_of(named.begin(), named.end(), [&](const std::string& strOther) { return IsSameName(strOther, strName); }))
            throw std::invalid_argument(strName + " is set twice");
        named.push_back(strName);
        const std::string strValue = nEquals < strArgument.size() ? strArgument.substr(nEquals + 1) : std::string();
        const Choice& choice = ChoiceOf(settings, strName, strValue);
        chosen.insert(chosen.end(), choice.states.begin(), choice.states.end());
    }
    std::vector<WantedState> states;
    for (const DialogControl& control : dialogControls)
        for (const ControlState& state : chosen)
            if (state.nControl == control.nId)
                states.push_back({control.nId, control.bIsList, state.lWanted, control.szWhenOutOfUse});
    return states;
}

std::string ChoicesHelp()
{
    std::string strHelp;
    for (const Setting& setting : Settings())
        strHelp += "  " + setting.strName + "=" + Names(setting.choices, "|") + "\n";
    return strHelp;
}
