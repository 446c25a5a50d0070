// The connection settings dialog, worked by a person who wants to be done with it.
#include "resources/resource.h"
#include "tests/module/Operation.h"
#include "tests/support/DialogScenario.h"

namespace tests::walk
{
namespace
{
constexpr int nTriesBeforeCancel = 2;

// Presses the button until the dialog ends, and Cancel when that does not help; closes every message box.
void Press(CDialogActor& actor, int nButton)
{
    int nTries = 0;
    while (const auto window = actor.WaitForAny())
    {
        if (!window->HasControl(IDC_RADIO_MEASUREMENT))
            window->Close();
        else
            window->Click(nTries++ < nTriesBeforeCancel ? nButton : IDCANCEL);
        actor.WaitForChange(*window);
    }
}

struct Scenario
{
    const WCHAR* szProfile;
    int nButton;
    const GUID& adapter;
};
constexpr Scenario ok = {OLESTR("<CCX><Rapido>true</Rapido></CCX>"), IDOK, adapterGuid};
constexpr Scenario cancel = {OLESTR("<CCX/>"), IDCANCEL, adapterGuid};
constexpr Scenario invalid = {OLESTR("<CCX><KeepAliveTimer/></CCX>"), IDOK, adapterGuid};
constexpr Scenario bandless = {OLESTR("<CCX/>"), IDOK, otherAdapterGuid};

template <const Scenario& scenario>
HRESULT ShowDialog(CWorld& world, Outputs& outputs)
{
    const auto property = world.Module().Create<ICCXExtUICon>(IID_ICCXExtUICon);
    const CBstr profile(scenario.szProfile);
    CConnectionContext office(OLESTR("Office"), scenario.adapter);
    world.service.AddProfile(scenario.adapter, "office.xml",
                             OfficeProfile("<connectivity><phyType>a</phyType><phyType>g</phyType></connectivity>"));
    HRESULT hr = E_UNEXPECTED;
    {
        CDialogActor actor([&](CDialogActor& self) { Press(self, scenario.nButton); });
        hr = world.Call(
            [&] {
                return property->Dot11ExtUIPropertyShowDialog(nullptr, profile.Get(), office.Get(), &outputs.bstrProfile,
                                                              &outputs.bFlag);
            });
    }
    const auto stored = world.service.Profile(scenario.adapter, OLESTR("Office"));
    const bool bWhole = stored.find("<WLANProfile") != std::string::npos && stored.find("</WLANProfile>") != std::string::npos;
    outputs.others = bWhole ? "" : " torn";
    return hr;
}

HRESULT CancelWithHiddenMeasurement(CWorld& world, Outputs& outputs)
{
    const CRegistryValue hidden(HKEY_LOCAL_MACHINE, OLESTR("SOFTWARE\\Korvane\\Fenn"), OLESTR("NoCCX"), DWORD{1});
    return ShowDialog<cancel>(world, outputs);
}

// The first dialog of the module's life makes what the later ones use.
HRESULT FirstDialog(CWorld& world, Outputs& outputs)
{
    world.Load();
    const HRESULT hr = ShowDialog<ok>(world, outputs);
    world.Unload();
    return hr;
}

// Cancelled because OK had no effect; -1 is a dialog that could not be made. On the stand-in the simulated service meets the
// faults of the functions that it shares with the module, so that any of them may change its answers.
#define ANSWERS "S_OK (0|-?1 \\(null\\)|-?1 <CCX.*>)( traced invalid)?"
#define MEMORY_RAN_OUT "E_OUTOFMEMORY( 0)?( traced invalid)? traced E_OUTOFMEMORY"
// A dialog that ran out of memory before it was whole ends; one that did later is confirmed by the next try.
const std::vector<Operation::Failure> anyFailure = {
    {"malloc", MEMORY_RAN_OUT}, {"SysAllocStringLen", MEMORY_RAN_OUT "|" ANSWERS}, {".*", ANSWERS}};

const Operation dialogOperations[] = {
    {"dialog_ok", ShowDialog<ok>, anyFailure},
    {"dialog_cancel", CancelWithHiddenMeasurement, anyFailure},
    {"dialog_invalid_profile", ShowDialog<invalid>, anyFailure},
    {"dialog_no_band", ShowDialog<bandless>, anyFailure},
    {"first_dialog", FirstDialog, anyFailure, true},
};
} // namespace

std::span<const Operation> DialogOperations()
{
    return dialogOperations;
}
} // namespace tests::walk
