#include "host/DialogPerson.h"

#include "host/DialogSight.h"
#include "host/HostError.h"

namespace
{
constexpr auto patience = std::chrono::seconds(20);
constexpr DWORD pauseMs = 5;

// BM_CLICK and CB_SETCURSEL work on controls that no hand could reach, so their state is looked at first.
void RequireUsable(HWND hwndControl, const WantedState& state)
{
    const char* szFault = !IsWindowVisible(hwndControl) ? "hidden" : !IsWindowEnabled(hwndControl) ? "disabled" : nullptr;
    if (szFault)
        throw CHostError(ControlTitle(hwndControl) + " (control " + std::to_string(state.nControl) + ") is " + szFault + ": " +
                         state.szWhenOutOfUse);
}

void BringCheckBox(HWND hwndBox, const WantedState& state)
{
    if (Send(hwndBox, BM_GETCHECK) == state.lWanted)
        return;
    RequireUsable(hwndBox, state);
    Send(hwndBox, BM_CLICK);
    if (Send(hwndBox, BM_GETCHECK) != state.lWanted)
        throw CHostError(ControlTitle(hwndBox) + " does not change");
}

void BringList(HWND hwndList, const WantedState& state)
{
    RequireUsable(hwndList, state);
    const LRESULT cEntries = Send(hwndList, CB_GETCOUNT);
    for (LRESULT n = 0; n < cEntries; ++n)
    {
        if (Send(hwndList, CB_GETITEMDATA, static_cast<WPARAM>(n)) != state.lWanted)
            continue;
        if (Send(hwndList, CB_SETCURSEL, static_cast<WPARAM>(n)) != n)
            throw CHostError(ControlTitle(hwndList) + " does not change");
        return;
    }
    throw CHostError(ControlTitle(hwndList) + " has no such entry");
}

void Bring(HWND hwndDialog, const WantedState& state)
{
    const HWND hwndControl = GetDlgItem(hwndDialog, state.nControl);
    if (!hwndControl)
        throw CHostError("the dialog has no control " + std::to_string(state.nControl));
    if (state.bIsList)
        BringList(hwndControl, state);
    else
        BringCheckBox(hwndControl, state);
}

// Posted: a click that opens a message box would be answered only after the box is gone.
void Press(HWND hwndWindow, int nButton)
{
    PostMessageW(GetDlgItem(hwndWindow, nButton), BM_CLICK, 0, 0);
}
} // namespace

CDialogPerson::CDialogPerson(std::vector<WantedState> states)
    : m_states(std::move(states)), m_end(std::chrono::steady_clock::now() + patience),
      m_thread([this](const std::stop_token& stop) { Run(stop); })
{
}

PersonReport CDialogPerson::Finish()
{
    m_thread.request_stop();
    m_thread.join();
    return m_report;
}

void CDialogPerson::Run(const std::stop_token& stop)
{
    try
    {
        Work(stop);
    }
    catch (const std::exception& error)
    {
        m_report.strRefusal = error.what();
        Leave(stop);
    }
}

void CDialogPerson::Work(const std::stop_token& stop)
{
    HWND hwndDialog = nullptr;
    for (; !stop.stop_requested() && !(hwndDialog = FindSettingsDialog()); Pause())
        if (const HWND hwndBox = FindMessageBox())
            Answer(hwndBox);
    if (!hwndDialog)
        return;
    // An answered message shows that the dialog has finished its initialisation and waits for its user.
    Send(hwndDialog, WM_NULL);
    for (const WantedState& state : m_states)
        Bring(hwndDialog, state);

    Press(hwndDialog, IDOK);
    for (; !stop.stop_requested() && IsWindow(hwndDialog); Pause())
        if (const HWND hwndBox = FindMessageBox())
        {
            Answer(hwndBox);
            throw CHostError("the dialog does not take the settings: " + m_report.messages.back());
        }
}

void CDialogPerson::Leave(const std::stop_token& stop)
{
    for (bool bCancelled = false; !stop.stop_requested(); Sleep(pauseMs))
    {
        if (const HWND hwndBox = FindMessageBox())
            Press(hwndBox, AnswerButton(hwndBox));
        const HWND hwndDialog = FindSettingsDialog();
        if (hwndDialog && !bCancelled)
            Press(hwndDialog, IDCANCEL);
        bCancelled = bCancelled || hwndDialog;
    }
}

void CDialogPerson::Answer(HWND hwndBox)
{
    m_report.messages.push_back(MessageText(hwndBox));
    Press(hwndBox, AnswerButton(hwndBox));
    while (IsWindow(hwndBox))
        Pause();
}

void CDialogPerson::Pause() const
{
    if (std::chrono::steady_clock::now() >= m_end)
        throw CHostError("the dialog has not come to its end within " + std::to_string(patience.count()) + " seconds");
    Sleep(pauseMs);
}
