// The connection settings dialog, worked by a person who wants to be done with it.
#include "resources/resource.h"
#include "tests/module/Operation.h"
#include "tests/support/DialogActor.h"
#include "tests/support/RegistryValue.h"

namespace tests::walk
{
namespace
{
using Kind = Operation::Kind;

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
    bool bBandless;
    bool bMeasurementHidden;
};

std::string Show(CWorld& world, CFault* pFault, const Scenario& scenario)
{
    const auto property = world.Module().Create<ICCXExtUICon>(IID_ICCXExtUICon);
    const CBstr profile(scenario.szProfile);
    void* const pContext = (scenario.bBandless ? world.Bandless() : world.Office()).Get();
    CProfileOutputs outputs;
    HRESULT hr = E_UNEXPECTED;
    world.ResetProfiles();
    std::optional<CRegistryValue> hidden;
    if (scenario.bMeasurementHidden)
        hidden.emplace(HKEY_LOCAL_MACHINE, OLESTR("SOFTWARE\\Korvane\\Fenn"), OLESTR("NoCCX"), DWORD{1});
    {
        CDialogActor actor([&](CDialogActor& self) { Press(self, scenario.nButton); });
        hr = Call(
            pFault, [&]
            { return property->Dot11ExtUIPropertyShowDialog(nullptr, profile.Get(), pContext, outputs.Text(), outputs.Flag()); });
    }
    const auto stored = world.Service().Profile(adapterGuid, OLESTR("Office"));
    const bool bWhole = stored.find("<WLANProfile") != std::string::npos && stored.find("</WLANProfile>") != std::string::npos;
    return outputs.Describe(hr) + (bWhole ? "" : " torn");
}

constexpr Scenario ok = {OLESTR("<CCX><Rapido>true</Rapido></CCX>"), IDOK, false, false};
constexpr Scenario cancel = {OLESTR("<CCX/>"), IDCANCEL, false, true};
constexpr Scenario invalid = {OLESTR("<CCX><KeepAliveTimer/></CCX>"), IDOK, false, false};
constexpr Scenario bandless = {OLESTR("<CCX/>"), IDOK, true, false};

template <const Scenario& scenario>
std::string ShowDialog(CWorld& world, CFault* pFault)
{
    return Show(world, pFault, scenario);
}

// The first dialog of the module's life makes what the later ones use.
std::string FirstDialog(CWorld& world, CFault* pFault)
{
    world.Load();
    auto outcome = Show(world, pFault, ok);
    world.Unload();
    return outcome;
}

// Cancelled because OK had no effect; -1 is a dialog that could not be made. On the stand-in the simulated service meets the
// faults of the functions that it shares with the module, so that any of them may change its answers.
#define ANSWERS "S_OK (0 kept|-?1 \\(null\\)|-?1 <CCX.*>)( traced invalid)?"
#define MEMORY_RAN_OUT OUT_OF_MEMORY("0 kept( traced invalid)?")
// A dialog that ran out of memory before it was whole ends; one that did later is confirmed by the next try.
const std::vector<Operation::Failure> anyFailure = {
    {"operator new", MEMORY_RAN_OUT}, {"SysAllocStringLen", MEMORY_RAN_OUT "|" ANSWERS}, {".*", ANSWERS}};

const Operation dialogOperations[] = {
    {"dialog_ok", Kind::Dialog, ShowDialog<ok>, anyFailure},
    {"dialog_cancel", Kind::Dialog, ShowDialog<cancel>, anyFailure},
    {"dialog_invalid_profile", Kind::Dialog, ShowDialog<invalid>, anyFailure},
    {"dialog_no_band", Kind::Dialog, ShowDialog<bandless>, anyFailure},
    {"first_dialog", Kind::LoadsDialog, FirstDialog, anyFailure},
};
} // namespace

std::span<const Operation> DialogOperations()
{
    return dialogOperations;
}
} // namespace tests::walk
