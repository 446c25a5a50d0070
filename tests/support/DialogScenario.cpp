#include "tests/support/DialogScenario.h"

#include "resources/resource.h"
#include "tests/support/Machine.h"
#include "tests/support/Pattern.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <sstream>

namespace tests
{
namespace
{
constexpr int nMessageText = 0xFFFF;
constexpr int nMessageIcon = 1088;
constexpr std::string_view title = "Korvane Connection Settings";

struct NamedControl
{
    std::string_view name;
    int nId;
    std::string_view usual; // empty for a button
};
constexpr NamedControl controls[] = {
    {"measure", IDC_RADIO_MEASUREMENT, "measure-"},
    {"rapido", IDC_RAPIDO, "rapido-"},
    {"roaming", IDC_ADVANCED_ROAMING, "roaming-"},
    {"5GHz", IDC_BAND_5_GHZ, "5GHz+"},
    {"2.4GHz", IDC_BAND_2_4_GHZ, "2.4GHz+"},
    {"ok", IDOK, ""},
    {"cancel", IDCANCEL, ""},
};

std::string Look(const CActedWindow& dialog)
{
    std::string seen = dialog.Title() == title ? "" : "title=" + dialog.Title() + " ";
    const auto note = [&](std::string state, int nId, std::string_view usual)
    {
        state += std::string(dialog.IsEnabled(nId) ? "" : "!") + (dialog.IsVisible(nId) ? "" : "?");
        seen += state == usual ? "" : state + " ";
    };
    for (const auto& control : controls)
    {
        if (!control.usual.empty())
            note(std::string(control.name) + (dialog.IsChecked(control.nId) ? "+" : "-"), control.nId, control.usual);
    }
    const auto levels = dialog.Items(IDC_ROAMING_OPTION);
    const auto nSelected = static_cast<std::size_t>(dialog.Selected(IDC_ROAMING_OPTION));
    note("level=" + (nSelected < levels.size() ? levels[nSelected] : "(none)"), IDC_ROAMING_OPTION, "level=Default!");
    return seen.empty() ? "as usual" : seen.substr(0, seen.size() - 1);
}

std::string LookAtBox(const CActedWindow& box)
{
    std::string seen = box.Title() + "|" + box.Text(nMessageText) + "|";
    constexpr int nLastButton = 11;
    for (int nId = IDOK; nId <= nLastButton; ++nId)
        seen += box.HasControl(nId) ? "button " : "";
    // Some platforms make the control for every box, and give it an icon only in those that have one.
    const LRESULT lIcon = CActedWindow::Send(box.Control(nMessageIcon), STM_GETICON);
    seen += lIcon == 0 ? "|no icon|" : lIcon == WarningIcon() ? "|warning|" : "|another icon|";
    const HWND hwndOwner = GetWindow(box.Get(), GW_OWNER);
    return seen + (!hwndOwner ? "no owner" : IsWindowEnabled(hwndOwner) ? "owner in use" : "owner held");
}

int IdOf(std::string_view name)
{
    const auto* const found = std::ranges::find(controls, name, &NamedControl::name);
    if (found == std::end(controls))
        ADD_FAILURE() << "nobody knows what " << name << " is";
    return found == std::end(controls) ? 0 : found->nId;
}

// The person: looks for the dialog when the first word needs it.
void Work(CDialogActor& actor, const DialogCase& row, std::vector<std::string>& shown)
{
    std::optional<CActedWindow> dialog;
    std::istringstream words(row.szPerson);
    for (std::string word; words >> word;)
    {
        if (word == "box")
        {
            const CActedWindow box = actor.WaitForMessageBox();
            shown.push_back(LookAtBox(box));
            box.Close();
            CDialogActor::WaitForEnd(box);
            continue;
        }
        if (!dialog)
            dialog = actor.WaitForDialog();
        if (word == "look")
            shown.push_back(Look(*dialog));
        else if (word == "levels")
            shown = dialog->Items(IDC_ROAMING_OPTION);
        else if (word == "close")
            dialog->Close();
        else if (word.starts_with("level:"))
            dialog->Select(IDC_ROAMING_OPTION, std::stoi(word.substr(6)));
        else if (word.starts_with("other:"))
            CActedWindow::Send(dialog->Get(), WM_COMMAND, MAKEWPARAM(static_cast<UINT>(IdOf(word.substr(6))), 1));
        else
            dialog->Click(IdOf(word));
    }
    if (!dialog)
        return;
    CDialogActor::WaitForEnd(*dialog);
    // A dialog that did not end would keep the case waiting for ever.
    dialog->Close();
}
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

CDialogScenario::CDialogScenario(std::string_view adapters, const std::string& officeProfile) : m_service(adapters)
{
    if (!officeProfile.empty())
        m_service.AddProfile(adapterGuid, "office.xml", officeProfile);
    m_property = m_module.Create<ICCXExtUICon>(IID_ICCXExtUICon);
    m_log.Take();
}

void CDialogScenario::Expect(const DialogCase& row, HWND hwndParent)
{
    const bool bConfirmed =
        row.szReturned ? row.szReturned != std::string_view(kept) : std::string_view(row.szPerson).ends_with("ok");
    const std::string returned = row.szReturned ? row.szReturned : bConfirmed ? szAllOff : kept;
    const CBstr profile = row.szProfile ? CBstr(Widen(row.szProfile).c_str()) : CBstr();
    CBstr untouched(OLESTR("kept"));
    BSTR bstrModified = untouched.Get();
    BOOL bIsModified = 77;
    std::vector<std::string> shown;
    {
        const CDialogActor actor([&](CDialogActor& self) { Work(self, row, shown); });
        EXPECT_EQ(S_OK, m_property->Dot11ExtUIPropertyShowDialog(hwndParent, profile.Get(), m_pConnectionContext, &bstrModified,
                                                                 &bIsModified));
    }
    EXPECT_EQ(bConfirmed ? row.bModified : FALSE, bIsModified);
    CBstr modified;
    if (bstrModified != untouched.Get())
        *modified.Put() = bstrModified;
    EXPECT_EQ(returned, bstrModified == untouched.Get() ? kept : ProfileTree(modified));
    EXPECT_EQ(row.shown, shown);

    std::vector<std::string> traced = {"\nCExtUICon::Dot11ExtUIPropertySetSelected\n",
                                       "bstrIHVProfile (IN): " + TextOf(profile) + "\n"};
    traced.insert(traced.end(), row.traced.begin(), row.traced.end());
    if (bConfirmed)
        traced.push_back("bstrModifiedIHVProfile (OUT): " + TextOf(modified) + "\n");
    EXPECT_EQ(traced, m_log.Take());
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
    std::vector<std::string> calls;
    for (const auto& line : m_service.Calls())
    {
        if (line.starts_with(std::string(function) + " "))
            calls.push_back(Replaced(line, R"( (handle|xml\.length)=\S+)", ""));
    }
    return calls;
}

void CDialogScenario::Unload()
{
    m_property = {};
    m_module.Unload();
}
} // namespace tests
