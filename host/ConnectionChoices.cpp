#include "host/ConnectionChoices.h"

#include "resources/resource.h"

#include <algorithm>
#include <stdexcept>

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

struct Setting
{
    const char* szName;
    const char* szValue;
    int nControl;
    long lWanted;
};
// A value that concerns two controls has two rows.
constexpr Setting settings[] = {
    {"radio-measurement", "on", IDC_RADIO_MEASUREMENT, 1},
    {"radio-measurement", "off", IDC_RADIO_MEASUREMENT, 0},
    {"rapido", "on", IDC_RAPIDO, 1},
    {"rapido", "off", IDC_RAPIDO, 0},
    {"advanced-roaming", "on", IDC_ADVANCED_ROAMING, 1},
    {"advanced-roaming", "off", IDC_ADVANCED_ROAMING, 0},
    {"roaming", "Default", IDC_ROAMING_OPTION, 0},
    {"roaming", "Very Low", IDC_ROAMING_OPTION, 1},
    {"roaming", "Low", IDC_ROAMING_OPTION, 2},
    {"roaming", "Normal", IDC_ROAMING_OPTION, 3},
    {"roaming", "High", IDC_ROAMING_OPTION, 4},
    {"roaming", "Very High", IDC_ROAMING_OPTION, 5},
    {"bands", "5", IDC_BAND_5_GHZ, 1},
    {"bands", "5", IDC_BAND_2_4_GHZ, 0},
    {"bands", "2.4", IDC_BAND_5_GHZ, 0},
    {"bands", "2.4", IDC_BAND_2_4_GHZ, 1},
    {"bands", "both", IDC_BAND_5_GHZ, 1},
    {"bands", "both", IDC_BAND_2_4_GHZ, 1},
};

std::vector<std::string> Names()
{
    std::vector<std::string> names;
    for (const Setting& row : settings)
        if (names.empty() || names.back() != row.szName)
            names.push_back(row.szName);
    return names;
}

std::vector<std::string> ValuesOf(const std::string& strName)
{
    std::vector<std::string> values;
    for (const Setting& row : settings)
        if (strName == row.szName && (values.empty() || values.back() != row.szValue))
            values.push_back(row.szValue);
    return values;
}

std::string Joined(const std::vector<std::string>& words, const char* szBetween)
{
    std::string strText;
    for (const std::string& strWord : words)
        strText += (strText.empty() ? "" : szBetween) + strWord;
    return strText;
}

const DialogControl& ControlOf(const Setting& setting)
{
    return *std::find_if(std::begin(dialogControls), std::end(dialogControls),
                         [&](const DialogControl& control) { return control.nId == setting.nControl; });
}

std::vector<WantedState> StatesOf(const std::string& strName, const std::string& strValue)
{
    const std::vector<std::string> values = ValuesOf(strName);
    if (values.empty())
        throw std::invalid_argument("there is no setting " + strName + "; there are " + Joined(Names(), ", "));
    std::vector<WantedState> states;
    for (const Setting& row : settings)
        if (strName == row.szName && strValue == row.szValue)
            states.push_back({row.nControl, ControlOf(row).bIsList, row.lWanted, ControlOf(row).szWhenOutOfUse});
    if (states.empty())
        throw std::invalid_argument(strName + " cannot be " + (strValue.empty() ? "empty" : strValue) + "; it can be " +
                                    Joined(values, ", "));
    return states;
}

std::ptrdiff_t Turn(const WantedState& state)
{
    return std::find_if(std::begin(dialogControls), std::end(dialogControls),
                        [&](const DialogControl& control) { return control.nId == state.nControl; }) -
           std::begin(dialogControls);
}
} // namespace

std::vector<WantedState> ChoicesOf(const std::vector<std::string>& arguments)
{
    std::vector<std::string> named;
    std::vector<WantedState> states;
    for (const std::string& strArgument : arguments)
    {
        const std::size_t nEquals = std::min(strArgument.find('='), strArgument.size());
        const std::string strName = strArgument.substr(0, nEquals);
        if (std::find(named.begin(), named.end(), strName) != named.end())
            throw std::invalid_argument(strName + " is set twice");
        named.push_back(strName);
        const std::string strValue = nEquals < strArgument.size() ? strArgument.substr(nEquals + 1) : std::string();
        for (const WantedState& state : StatesOf(strName, strValue))
            states.push_back(state);
    }
    std::stable_sort(states.begin(), states.end(),
                     [](const WantedState& left, const WantedState& right) { return Turn(left) < Turn(right); });
    return states;
}

std::string ChoicesHelp()
{
    std::string strHelp;
    for (const std::string& strName : Names())
        strHelp += "  " + strName + "=" + Joined(ValuesOf(strName), "|") + "\n";
    return strHelp;
}
