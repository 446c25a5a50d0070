// The wireless-profile page, worked by a person on a second thread.
#include "host/Commands.h"
#include "host/Module.h"
#include "host/host_resource.h"
#include "resources/resource.h"
#include "tests/support/DialogActor.h"
#include "tests/support/HostWorld.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>

namespace
{
using namespace tests;
using Arguments = std::vector<std::string>;

template <class Condition>
bool Eventually(Condition condition)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    for (; std::chrono::steady_clock::now() < end; Sleep(5))
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

CActedWindow WaitForPage()
{
    HWND hwndPage = nullptr;
    EXPECT_TRUE(Eventually([&] { return EnumWindows(FindPage, reinterpret_cast<LPARAM>(&hwndPage)), hwndPage != nullptr; }))
        << "no page came up";
    CActedWindow::Send(hwndPage, WM_NULL); // answered once it waits for its user
    return CActedWindow(hwndPage);
}

// A choice in a list, as a hand makes it: with the list's word to the page.
void Choose(const CActedWindow& page, int nList, int nEntry)
{
    page.Select(nList, nEntry);
    CActedWindow::Send(page.Get(), WM_COMMAND, MAKEWPARAM(static_cast<UINT>(nList), CBN_SELCHANGE),
                       reinterpret_cast<LPARAM>(page.Control(nList)));
}

LRESULT TraceRows(const CActedWindow& page)
{
    return CActedWindow::Send(page.Control(IDC_TRACE), LB_GETCOUNT);
}

// What the page tells of questions and answers, without the ends of its rows.
std::string Words(const CActedWindow& page)
{
    std::string strWords;
    for (LRESULT n = 0; n < CActedWindow::Send(page.Control(IDC_ANSWERS), LB_GETCOUNT); ++n)
    {
        WCHAR szRow[128] = {};
        CActedWindow::Send(page.Control(IDC_ANSWERS), LB_GETTEXT, static_cast<WPARAM>(n), reinterpret_cast<LPARAM>(szRow));
        strWords += Narrow(szRow);
    }
    return strWords;
}

void AcceptMessageBox(CDialogActor& actor, const char* szPart)
{
    const CActedWindow box = actor.WaitForMessageBox();
    EXPECT_NE(std::string::npos, box.Text(0xFFFF).find(szPart)) << box.Text(0xFFFF);
    box.Click(box.HasControl(IDOK) ? IDOK : IDCANCEL);
    actor.WaitForEnd(box);
}

// Runs the command on this thread, with the person beside it; what it printed.
std::string RunPage(Arguments arguments, const std::function<void(CDialogActor&, const CActedWindow&)>& person)
{
    CLI::App app;
    app.allow_windows_style_options(false);
    CommandWork chosen;
    AddPageCommand(app, chosen);
    arguments.insert(arguments.begin(), "page");
    std::reverse(arguments.begin(), arguments.end());
    app.parse(arguments);
    const CComApartment apartment;
    const CDialogActor actor([&](CDialogActor& self) { person(self, WaitForPage()); });
    testing::internal::CaptureStdout();
    chosen();
    return testing::internal::GetCapturedStdout();
}

Arguments OnMachine(const CHostWorld& world, Arguments profile)
{
    profile.insert(profile.end(), {"--service", world.File(rapidoMachine).string(), "--adapter", rapidoAdapter});
    return profile;
}

// Through the settings dialog with Rapido off and 5 GHz alone.
void WorkSettings(CDialogActor& actor, const CActedWindow& page)
{
    const LRESULT cRows = TraceRows(page);
    page.Click(IDC_CONNECTION_SETTINGS);
    const CActedWindow dialog = actor.WaitForDialog();
    EXPECT_FALSE(IsWindowEnabled(page.Get())) << "the page stays out of reach below its dialog";
    EXPECT_TRUE(Eventually([&] { return TraceRows(page) > cRows; })) << "what the module traces meanwhile does not show";
    dialog.Click(IDC_RAPIDO);
    dialog.Click(IDC_BAND_2_4_GHZ);
    dialog.Click(IDOK);
    actor.WaitForEnd(dialog);
}

void ChooseEverything(CDialogActor& actor, const CActedWindow& page)
{
    EXPECT_EQ((std::vector<std::string>{"WPA2PSK", "CCKM"}), page.Items(IDC_AUTHENTICATION));
    EXPECT_EQ((std::vector<std::string>{"AES"}), page.Items(IDC_ENCRYPTION));
    EXPECT_FALSE(page.IsEnabled(IDC_ENCRYPTION));
    Choose(page, IDC_AUTHENTICATION, 1);
    EXPECT_EQ((std::vector<std::string>{"WEP", "TKIP", "AES"}), page.Items(IDC_ENCRYPTION));
    EXPECT_EQ(2, page.Selected(IDC_ENCRYPTION));
    Choose(page, IDC_ENCRYPTION, 1);
    EXPECT_EQ("Korvane Connection Settings", page.Text(IDC_CONNECTION_NAME));
    WorkSettings(actor, page);
    for (const char* szWords : {"offers: WEP, TKIP, AES (default)", "chosen: CCKM with TKIP", "Rapido off"})
        EXPECT_TRUE(Eventually([&] { return Words(page).find(szWords) != std::string::npos; })) << szWords << Words(page);
    EXPECT_FALSE(page.IsVisible(IDC_TRACE));
    page.Click(IDC_SWITCH_LIST);
    EXPECT_TRUE(Eventually([&] { return page.IsVisible(IDC_TRACE) && !page.IsVisible(IDC_ANSWERS); }));
    page.Click(IDC_HELP_BUTTON);
    AcceptMessageBox(actor, "Alt+letter");
}

TEST(PageTest, SavePutsWhatCameBackIntoTheProfileAndCancelDoesNot)
{
    for (const bool bStored : {false, true})
        for (const int nButton : {IDOK, IDCANCEL})
        {
            const CHostWorld world;
            const std::string strProfile = bStored ? officeStored : officeFile;
            const std::string strBefore = world.Condensed(strProfile);
            const std::string strPrinted =
                RunPage(OnMachine(world, bStored ? Arguments{"--name", "Office"} : Arguments{world.File(officeFile).string()}),
                        [&](CDialogActor& actor, const CActedWindow& page)
                        {
                            ChooseEverything(actor, page);
                            page.Click(nButton);
                        });
            const std::string strAfter = world.Condensed(strProfile);
            for (const char* szPart : {"<cckm><encryption>TKIP<", "<Rapido>false<"})
                for (const std::string& strText : {strAfter, strPrinted})
                    EXPECT_EQ(nButton == IDOK, strText.find(szPart) != std::string::npos) << szPart << "\n" << strText;
            EXPECT_NE(std::string::npos, strPrinted.find("+++ stored profile Office")) << strPrinted;
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
            [](CDialogActor&, const CActedWindow& page)
            {
                EXPECT_EQ((std::vector<std::string>{"CCKM"}), page.Items(IDC_AUTHENTICATION));
                EXPECT_EQ(1, page.Selected(IDC_ENCRYPTION));
                page.Click(IDOK);
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
            [](CDialogActor& actor, const CActedWindow& page)
            {
                WorkSettings(actor, page);
                page.Click(IDOK);
                AcceptMessageBox(actor, "belongs to another vendor");
                EXPECT_TRUE(page.Exists());
                page.Click(IDCANCEL);
            });
    EXPECT_EQ(strProfile, ReadBytes(world.File(officeFile)));
}
} // namespace
