// The wireless-profile page, worked by a person on a second thread.
#include "host/Commands.h"
#include "host/Module.h"
#include "host/host_resource.h"
#include "resources/resource.h"
#include "tests/support/DialogActor.h"
#include "tests/support/HostWorld.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace
{
using namespace tests;
using Arguments = std::vector<std::string>;

// Everything that is asked of a person ends within this time, or the case fails.
constexpr int cPatienceSteps = 2000;
constexpr DWORD patienceStepMs = 5;

template <class Condition>
bool Eventually(Condition condition)
{
    for (int n = 0; n < cPatienceSteps; ++n, Sleep(patienceStepMs))
        if (condition())
            return true;
    return false;
}

BOOL CALLBACK FindPage(HWND hwnd, LPARAM lParam)
{
    DWORD dwProcess = 0;
    GetWindowThreadProcessId(hwnd, &dwProcess);
    if (dwProcess != GetCurrentProcessId() || !IsWindowVisible(hwnd) || !GetDlgItem(hwnd, IDC_TRACE))
        return TRUE;
    *reinterpret_cast<HWND*>(lParam) = hwnd;
    return FALSE;
}

// The page as a person sees it.
class CPage
{
public:
    CPage() : m_window(Wait())
    {
    }
    const CActedWindow& Window() const
    {
        return m_window;
    }
    // A choice in a list, as a hand makes it: with the list's word to the page.
    void Choose(int nList, int nEntry) const
    {
        m_window.Select(nList, nEntry);
        SendMessageW(m_window.Get(), WM_COMMAND, MAKEWPARAM(static_cast<UINT>(nList), CBN_SELCHANGE),
                     reinterpret_cast<LPARAM>(GetDlgItem(m_window.Get(), nList)));
    }
    // How many lines of the trace it shows.
    LRESULT TraceRows() const
    {
        return SendMessageW(GetDlgItem(m_window.Get(), IDC_TRACE), LB_GETCOUNT, 0, 0);
    }

private:
    static HWND Wait()
    {
        HWND hwndPage = nullptr;
        EXPECT_TRUE(Eventually(
            [&]
            {
                EnumWindows(FindPage, reinterpret_cast<LPARAM>(&hwndPage));
                return hwndPage != nullptr;
            }))
            << "no page came up";
        SendMessageW(hwndPage, WM_NULL, 0, 0);
        return hwndPage;
    }

    CActedWindow m_window;
};

// Runs the command on this thread, with the person beside it.
void RunPage(Arguments arguments, const std::function<void(CDialogActor&, const CPage&)>& person)
{
    CLI::App app;
    app.allow_windows_style_options(false);
    CommandWork chosen;
    AddPageCommand(app, chosen);
    arguments.insert(arguments.begin(), "page");
    std::reverse(arguments.begin(), arguments.end());
    app.parse(arguments);
    const CComApartment apartment;
    const CDialogActor actor([&](CDialogActor& self) { person(self, CPage()); });
    chosen();
}

Arguments OnMachine(const CHostWorld& world, Arguments profile)
{
    profile.insert(profile.end(), {"--service", world.File(rapidoMachine).string(), "--adapter", rapidoAdapter});
    return profile;
}

// Through the settings dialog with Rapido off and 5 GHz alone.
void WorkSettings(CDialogActor& actor, const CPage& page)
{
    const LRESULT cRows = page.TraceRows();
    page.Window().Click(IDC_CONNECTION_SETTINGS);
    const CActedWindow dialog = actor.WaitForDialog();
    EXPECT_FALSE(IsWindowEnabled(page.Window().Get())) << "the page stays out of reach below its dialog";
    EXPECT_TRUE(Eventually([&] { return page.TraceRows() > cRows; })) << "what the module traces meanwhile does not show";
    dialog.Click(IDC_RAPIDO);
    dialog.Click(IDC_BAND_2_4_GHZ);
    EXPECT_TRUE(Eventually([&] { return !dialog.IsChecked(IDC_RAPIDO) && !dialog.IsChecked(IDC_BAND_2_4_GHZ); }));
    dialog.Click(IDOK);
    actor.WaitForEnd(dialog);
}

void ChooseEverything(CDialogActor& actor, const CPage& page)
{
    EXPECT_EQ((std::vector<std::string>{"WPA2PSK", "CCKM"}), page.Window().Items(IDC_AUTHENTICATION));
    EXPECT_EQ((std::vector<std::string>{"AES"}), page.Window().Items(IDC_ENCRYPTION));
    EXPECT_FALSE(page.Window().IsEnabled(IDC_ENCRYPTION));
    page.Choose(IDC_AUTHENTICATION, 1);
    EXPECT_EQ((std::vector<std::string>{"WEP", "TKIP", "AES"}), page.Window().Items(IDC_ENCRYPTION));
    EXPECT_EQ(2, page.Window().Selected(IDC_ENCRYPTION));
    page.Choose(IDC_ENCRYPTION, 1);
    EXPECT_EQ("Korvane Connection Settings", page.Window().Text(IDC_CONNECTION_NAME));
    WorkSettings(actor, page);
}

TEST(PageTest, SavePutsWhatCameBackIntoTheProfileAndCancelDoesNot)
{
    for (const bool bStored : {false, true})
        for (const int nButton : {IDOK, IDCANCEL})
        {
            const CHostWorld world;
            const std::string strProfile = bStored ? officeStored : officeFile;
            const std::string strBefore = world.Condensed(strProfile);
            RunPage(OnMachine(world, bStored ? Arguments{"--name", "Office"} : Arguments{world.File(officeFile).string()}),
                    [&](CDialogActor& actor, const CPage& page)
                    {
                        ChooseEverything(actor, page);
                        page.Window().Click(nButton);
                    });
            const std::string strAfter = world.Condensed(strProfile);
            for (const char* szPart : {"<cckm><encryption>TKIP<", "<Rapido>false<"})
                EXPECT_EQ(nButton == IDOK, strAfter.find(szPart) != std::string::npos) << szPart << "\n" << strAfter;
            EXPECT_TRUE(bStored || nButton == IDOK || strBefore == strAfter);
            // The bands are stored as soon as the settings dialog is confirmed.
            EXPECT_NE(std::string::npos, world.Condensed(officeStored).find("<connectivity><phyType>a</phyType></connectivity>"));
        }
}

TEST(PageTest, SavingAnUntouchedPageChangesNothing)
{
    const CHostWorld world;
    const auto before = world.Snapshot();
    RunPage(OnMachine(world, {world.File("warehouse-ccx.xml").string()}),
            [](CDialogActor&, const CPage& page)
            {
                EXPECT_EQ((std::vector<std::string>{"CCKM"}), page.Window().Items(IDC_AUTHENTICATION));
                EXPECT_EQ(1, page.Window().Selected(IDC_ENCRYPTION));
                page.Window().Click(IDOK);
            });
    EXPECT_EQ(before, world.Snapshot());
}

TEST(PageTest, WhatCannotBeSavedIsToldAndThePageStays)
{
    const CHostWorld world;
    std::string strProfile = ReadBytes(world.File(officeFile));
    const std::size_t nFirst = strProfile.find("<CCX");
    strProfile.replace(nFirst, strProfile.find("</CCX>") + 6 - nFirst, "<Other/>");
    WriteBytes(world.File(officeFile), strProfile);
    RunPage(OnMachine(world, {world.File(officeFile).string()}),
            [](CDialogActor& actor, const CPage& page)
            {
                WorkSettings(actor, page);
                page.Window().Click(IDOK);
                const CActedWindow box = actor.WaitForMessageBox();
                EXPECT_NE(std::string::npos, box.Text(0xFFFF).find("belongs to another vendor")) << box.Text(0xFFFF);
                box.Click(box.HasControl(IDOK) ? IDOK : IDCANCEL);
                actor.WaitForEnd(box);
                EXPECT_TRUE(page.Window().Exists());
                page.Window().Click(IDCANCEL);
            });
    EXPECT_EQ(strProfile, ReadBytes(world.File(officeFile)));
}
} // namespace
