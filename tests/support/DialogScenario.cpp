#include "tests/support/DialogScenario.h"

#include "resources/resource.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <regex>
#include <sstream>

namespace tests
{
namespace
{
constexpr int nMessageText = 0xFFFF;
constexpr int nMessageIcon = 1088;

struct NamedControl
{
    std::string_view name;
    int nId;
};
constexpr NamedControl checkBoxes[] = {
    {"measure", IDC_RADIO_MEASUREMENT}, {"rapido", IDC_RAPIDO},       {"roaming", IDC_ADVANCED_ROAMING},
    {"5GHz", IDC_BAND_5_GHZ},           {"2.4GHz", IDC_BAND_2_4_GHZ},
};
constexpr NamedControl buttons[] = {{"ok", IDOK}, {"cancel", IDCANCEL}};

std::string Look(const CActedWindow& dialog)
{
    const auto marks = [&](int nId)
    { return std::string(dialog.IsEnabled(nId) ? "" : "!") + (dialog.IsVisible(nId) ? "" : "?"); };
    std::string seen;
    for (const auto& control : checkBoxes)
    {
        seen += std::string(control.name) + (dialog.IsChecked(control.nId) ? "+" : "-") + marks(control.nId) + " ";
        if (control.nId != IDC_ADVANCED_ROAMING)
            continue;
        const auto levels = dialog.Items(IDC_ROAMING_OPTION);
        const int nSelected = dialog.Selected(IDC_ROAMING_OPTION);
        const bool bSelected = nSelected >= 0 && static_cast<std::size_t>(nSelected) < levels.size();
        seen += "level=" + (bSelected ? levels[static_cast<std::size_t>(nSelected)] : "(none)") + marks(IDC_ROAMING_OPTION) + " ";
    }
    seen.pop_back();
    return seen;
}

// Some platforms make the control for every box, and give it an icon only in those that have one.
bool HasIcon(HWND hwndBox)
{
    const HWND hwndIcon = GetDlgItem(hwndBox, nMessageIcon);
    DWORD_PTR dwIcon = 0;
    return hwndIcon && SendMessageTimeoutW(hwndIcon, STM_GETICON, 0, 0, SMTO_NORMAL, 1000, &dwIcon) != 0 && dwIcon != 0;
}

std::string LookAtBox(const CActedWindow& box)
{
    std::string seen = box.Title() + "|" + box.Text(nMessageText) + "|";
    for (int nId = IDOK; nId < nMessageIcon; ++nId)
        seen += box.HasControl(nId) ? "button " : "";
    seen += HasIcon(box.Get()) ? "|icon|" : "|no icon|";
    const HWND hwndOwner = GetWindow(box.Get(), GW_OWNER);
    return seen + (!hwndOwner ? "no owner" : IsWindowEnabled(hwndOwner) ? "owner in use" : "owner held");
}

// The person: finds the dialog when the first word needs it.
class CPerson
{
public:
    CPerson(CDialogActor& actor, std::vector<std::string>& shown) : m_actor(actor), m_shown(shown)
    {
    }

    void Do(const std::string& word)
    {
        if (word == "box")
            DismissBox();
        else if (word == "look")
            m_shown.push_back(Look(Dialog()));
        else if (word == "levels")
            NoteLevels();
        else if (word == "close")
            Dialog().Close();
        else if (word.starts_with("level:"))
            Dialog().Select(IDC_ROAMING_OPTION, std::stoi(word.substr(6)));
        else
            Click(word);
    }

    // A dialog that did not end would keep the case waiting for ever.
    void Leave()
    {
        if (!m_dialog)
            return;
        m_actor.WaitForEnd(*m_dialog);
        if (m_dialog->Exists())
            m_dialog->Close();
    }

private:
    const CActedWindow& Dialog()
    {
        if (!m_dialog)
            m_dialog = m_actor.WaitForDialog();
        return *m_dialog;
    }

    void NoteLevels()
    {
        for (const auto& level : Dialog().Items(IDC_ROAMING_OPTION))
            m_shown.push_back(level);
    }

    void DismissBox()
    {
        const CActedWindow box = m_actor.WaitForMessageBox();
        m_shown.push_back(LookAtBox(box));
        box.Close();
        m_actor.WaitForEnd(box);
    }

    void Click(const std::string& word)
    {
        for (const auto& controls :
             {std::vector(std::begin(checkBoxes), std::end(checkBoxes)), std::vector(std::begin(buttons), std::end(buttons))})
        {
            const auto found = std::ranges::find(controls, std::string_view(word), &NamedControl::name);
            if (found != controls.end())
                return Dialog().Click(found->nId);
        }
        ADD_FAILURE() << "nobody knows how to do " << word;
    }

    CDialogActor& m_actor;
    std::vector<std::string>& m_shown;
    std::optional<CActedWindow> m_dialog;
};
} // namespace

std::string OfficeProfile(std::string_view connectivity)
{
    return R"(<WLANProfile xmlns="http://www.microsoft.com/networking/WLAN/profile/v1"><name>Office</name>)"
           "<SSIDConfig><SSID><name>Office</name></SSID></SSIDConfig><MSM>" +
           std::string(connectivity) + "<security><authEncryption/></security></MSM></WLANProfile>";
}

std::string TreeOf(const std::string& text)
{
    return ProfileTree(CBstr(Widen(text).c_str()));
}

CDialogScenario::CDialogScenario(std::string_view adapters, std::string_view officeProfile) : m_service(adapters)
{
    if (!officeProfile.empty())
        m_service.AddProfile(adapterGuid, "office.xml", officeProfile);
    m_property = m_module.Create<ICCXExtUICon>(IID_ICCXExtUICon);
    m_log.Take();
}

DialogOutcome CDialogScenario::Show(const char* szIhvProfile, std::string_view person, HWND hwndParent)
{
    DialogOutcome outcome;
    const CBstr profile = szIhvProfile ? CBstr(Widen(szIhvProfile).c_str()) : CBstr();
    const CBstr kept(OLESTR("kept"));
    BSTR bstrModified = kept.Get();
    {
        CDialogActor actor(
            [&](CDialogActor& self)
            {
                CPerson acting(self, outcome.shown);
                std::istringstream words{std::string(person)};
                for (std::string word; words >> word;)
                    acting.Do(word);
                acting.Leave();
            });
        outcome.hr = m_property->Dot11ExtUIPropertyShowDialog(hwndParent, profile.Get(), m_pConnectionContext, &bstrModified,
                                                              &outcome.bModified);
    }
    static const std::regex handedOut(R"((bstrModifiedIHVProfile \(OUT\): )<CCX[^]*)");
    for (const auto& message : m_log.Take())
        outcome.traced.push_back(std::regex_replace(message, handedOut, "$1<CCX>"));
    if (bstrModified == kept.Get())
    {
        outcome.profile = "(kept)";
        return outcome;
    }
    CBstr modified;
    *modified.Put() = bstrModified;
    outcome.profile = ProfileTree(modified);
    return outcome;
}

void CDialogScenario::ExpectOutcome(const DialogOutcome& outcome, const char* szIhvProfile, bool bConfirmed,
                                    const std::vector<std::string>& traced)
{
    EXPECT_EQ(S_OK, outcome.hr);
    EXPECT_EQ(bConfirmed ? 1 : 0, outcome.bModified);
    EXPECT_EQ(bConfirmed, outcome.profile != "(kept)");
    std::vector<std::string> expected = {"\nCExtUICon::Dot11ExtUIPropertySetSelected\n",
                                         "bstrIHVProfile (IN): " + std::string(szIhvProfile ? szIhvProfile : "(null)") + "\n"};
    expected.insert(expected.end(), traced.begin(), traced.end());
    if (bConfirmed)
        expected.push_back("bstrModifiedIHVProfile (OUT): <CCX>");
    EXPECT_EQ(expected, outcome.traced);
}

std::vector<std::string> CDialogScenario::CalledFunctions() const
{
    std::vector<std::string> functions;
    for (const auto& line : m_service.Calls())
        functions.push_back(line.substr(0, line.find(' ')));
    return functions;
}

std::vector<std::string> CDialogScenario::CallsOf(std::string_view function) const
{
    static const std::regex changing(R"( (handle|xml\.length)=\S+)");
    std::vector<std::string> calls;
    for (const auto& line : m_service.Calls())
    {
        if (line.starts_with(std::string(function) + " "))
            calls.push_back(std::regex_replace(line, changing, ""));
    }
    return calls;
}

void CDialogScenario::Unload()
{
    m_property = {};
    m_module.Unload();
}
} // namespace tests
