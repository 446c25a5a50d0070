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

// What is traced about the maker's adapter.
inline const std::vector<std::string> tracedCapable = {"Found Korvane interface\n", "Interface capable of RapidoAG\n"};

struct DialogOutcome
{
    HRESULT hr = E_FAIL;
    BOOL bModified = 0;
    std::string profile;             // the new IHV profile as a tree; "(kept)" when it was not written
    std::vector<std::string> shown;  // what the person saw
    std::vector<std::string> traced; // the messages, the text of the profile handed out left away
};

// The module on a simulated machine with one wireless profile, "Office", on the first of its adapters. What the module
// keeps until it is unloaded begins and ends with the object.
class CDialogScenario
{
public:
    // officeProfile: the file that holds the profile; "" for a machine without it.
    CDialogScenario(std::string_view adapters, std::string_view officeProfile);

    // Shows the dialog while a person acts by these words, one after the other:
    //   look            notes the dialog:  measure+ rapido-! roaming+ level=Low 5GHz+ 2.4GHz-   (+ checked, - not,
    //                   ! disabled, ? hidden)
    //   levels          notes what the list offers, each for itself
    //   box             waits for a message box, notes it and closes it:  caption|text|buttons|icon|owner
    //   measure rapido roaming 5GHz 2.4GHz ok cancel    clicks
    //   level:N         selects in the list; -1 selects nothing
    //   close           closes the window by its system command
    DialogOutcome Show(const char* szIhvProfile, std::string_view person, HWND hwndParent = nullptr);
    // The context that Show passes; null for none.
    void SetContext(void* pConnectionContext)
    {
        m_pConnectionContext = pConnectionContext;
    }

    CSimulatedService& Service()
    {
        return m_service;
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

    // What the outcome of a dialog on this profile has in common: the messages around those that are given, and whether
    // a profile was handed out.
    static void ExpectOutcome(const DialogOutcome& outcome, const char* szIhvProfile, bool bConfirmed,
                              const std::vector<std::string>& traced);

private:
    CSimulatedService m_service;
    CTraceLog m_log;
    CModuleUnderTest m_module{CModuleUnderTest::Registration::None};
    CComRef<ICCXExtUICon> m_property;
    CConnectionContext m_office{OLESTR("Office"), adapterGuid, 5};
    void* m_pConnectionContext = m_office.Get();
};
} // namespace tests
