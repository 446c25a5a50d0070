// One scenario of the connection settings dialog: a machine, a profile on both sides, what a person does, and what was to
// be seen, returned, stored and traced.
#pragma once

#include "tests/support/DialogActor.h"
#include "tests/support/ModuleUnderTest.h"
#include "tests/support/SimulatedService.h"
#include "tests/support/TraceLog.h"

#include <string>
#include <string_view>
#include <vector>

namespace tests
{
// A wireless profile of the name "Office" with this text before its security section.
std::string OfficeProfile(std::string_view connectivity);

// An XML text as ProfileTree gives one.
std::string TreeOf(const std::string& text);

// An IHV profile whose elements all say no; as a tree.
inline constexpr const char* szAllOff = "<CCX><RadioMeasurement><disabled/></RadioMeasurement><Rapido>false</"
                                        "Rapido><AdvancedRoaming><disabled/></AdvancedRoaming></CCX>";
inline constexpr const char* kept = "(kept)";

// What is traced about the adapters.
inline const std::vector<std::string> tracedCapable = {"Found Korvane interface\n", "Interface capable of RapidoAG\n"};
inline const std::vector<std::string> tracedNotFound = {"Didnt find korvane interface\n",
                                                        "Interface is not capable of RapidoAG\n"};

// What a person does and gets, by default on a profile whose elements all say no.
struct DialogCase
{
    const char* name;
    // Words, one after the other:
    //   look            notes what is not as in a dialog with everything off and both bands: measure+ rapido-! roaming+
    //                   5GHz- 2.4GHz- level=Low   (+ checked, - not, ! disabled, ? hidden)
    //   levels          notes what the list offers, each for itself
    //   box             waits for a message box, notes it and closes it: caption|text|buttons|icon|owner
    //   measure rapido roaming 5GHz 2.4GHz ok cancel    clicks
    //   other:ok        tells the dialog that something else than a click happened to the control
    //   level:N         selects in the list; -1 selects nothing
    //   close           closes the window by its system command
    const char* szPerson;
    std::vector<std::string> shown = {};
    const char* szProfile = szAllOff; // null for none
    const char* szReturned = nullptr; // as a tree or "(kept)"; null for szAllOff where the last word is ok, else "(kept)"
    std::vector<std::string> traced = tracedCapable; // beside what every dialog traces
    BOOL bModified = TRUE;                           // of a dialog that returns a profile
};

// The module on a simulated machine with one wireless profile, "Office", on the first of its adapters. What the module
// keeps until it is unloaded begins and ends with the object.
class CDialogScenario
{
public:
    // officeProfile: the file that holds the profile; "" for a machine without it.
    explicit CDialogScenario(std::string_view adapters = makersMachine, const std::string& officeProfile = OfficeProfile(""));

    // Shows the dialog and holds everything that comes of it against the case.
    void Expect(const DialogCase& row, HWND hwndParent = nullptr);
    // The context that is passed; null for none.
    void SetContext(void* pConnectionContext)
    {
        m_pConnectionContext = pConnectionContext;
    }

    HMODULE Module() const
    {
        return m_module.Handle();
    }
    std::string StoredProfile() const
    {
        return m_service.Profile(adapterGuid, OLESTR("Office"));
    }
    // The service's log with handles and lengths left away: the functions alone, or the whole lines of one function.
    std::vector<std::string> CalledFunctions() const;
    std::vector<std::string> CallsOf(std::string_view function) const;

    // Unloads the module: what it leaves open is then to be counted.
    void Unload();

private:
    CSimulatedService m_service;
    CTraceLog m_log;
    CModuleUnderTest m_module{CModuleUnderTest::Registration::None};
    CComRef<ICCXExtUICon> m_property;
    CConnectionContext m_office{OLESTR("Office"), adapterGuid, 5};
    void* m_pConnectionContext = m_office.Get();
};
} // namespace tests
