#include "platform/user32/MessageLoop.h"

#include "platform/user32/Procedures.h"

#include <poll.h>

namespace platform::user32
{
namespace
{
// A presenter stays for all dialogs that a thread stacks. It is the thread's own: others do without.
struct Stage
{
    std::unique_ptr<IPresenter> pPresenter;
    unsigned cLoops = 0;
};
thread_local Stage stage;

std::optional<Input> KeyInput(const Message& message)
{
    Input input;
    if (message.uMessage == WM_KEYDOWN)
        input.uKey = static_cast<UINT>(message.wParam);
    else if (message.uMessage == WM_CHAR)
        input.ch = static_cast<WCHAR>(message.wParam);
    else
        return std::nullopt;
    input.hwnd = message.hwnd;
    input.kind = message.uMessage == WM_CHAR ? Input::Kind::Character : Input::Kind::Key;
    return input;
}
} // namespace

bool AnswerSentMessage(EngineLock& lock, CThreadQueue& queue)
{
    if (queue.sent.empty())
        return false;
    const auto pSent = queue.sent.front();
    queue.sent.pop_front();
    // The sender is answered even when the procedure throws: it must not wait for ever.
    struct Answer
    {
        SentMessage& sent;
        LRESULT lResult = 0;
        ~Answer()
        {
            CThreadQueue::Answer(sent, lResult);
        }
    } answer{*pSent};
    answer.lResult = CallWindow(lock, pSent->message);
    return true;
}

CMessageLoop::CMessageLoop(EngineLock& lock, CThreadQueue& queue) : m_lock(lock), m_queue(queue)
{
    if (stage.cLoops == 0)
    {
        const CUnlocked unlocked(m_lock);
        m_bPresented = OpenPresenter(stage.pPresenter);
    }
    ++stage.cLoops;
}

CMessageLoop::~CMessageLoop()
{
    if (--stage.cLoops > 0)
        return;
    const CUnlocked unlocked(m_lock);
    stage.pPresenter.reset();
}

bool CMessageLoop::IsReady()
{
    const bool bWakes = m_queue.WakeDescriptor() >= 0;
    if (!bWakes || !m_bPresented)
        SetLastError(bWakes ? ERROR_GEN_FAILURE : ERROR_TOO_MANY_OPEN_FILES);
    return bWakes && m_bPresented;
}

bool CMessageLoop::DeliverPosted(HWND hwndDialog)
{
    if (m_queue.posted.empty())
        return false;
    const Message message = m_queue.posted.front();
    m_queue.posted.pop_front();
    Window* pWindow = CDesktop::Get().Find(message.hwnd);
    const bool bOfDialog = pWindow && CDesktop::Get().Root(*pWindow).hwnd == hwndDialog;
    if (const auto input = KeyInput(message); input && bOfDialog)
        HandleInput(m_lock, hwndDialog, *input);
    else
        CallWindow(m_lock, message);
    return true;
}

bool CMessageLoop::DeliverTimer()
{
    const auto timer = m_queue.TakeDueTimer();
    if (!timer)
        return false;
    if (!timer->pProcedure)
    {
        CallWindow(m_lock, {timer->hwnd, WM_TIMER, timer->uId, 0});
        return true;
    }
    const CUnlocked unlocked(m_lock);
    timer->pProcedure(timer->hwnd, WM_TIMER, timer->uId, GetTickCount());
    return true;
}

void CMessageLoop::Show()
{
    if (!stage.pPresenter)
        return;
    const Scene scene = CaptureScene(m_queue);
    const CUnlocked unlocked(m_lock);
    stage.pPresenter->Show(scene);
}

void CMessageLoop::Wait()
{
    IPresenter* const pPresenter = stage.pPresenter.get();
    const int nTimeout = m_queue.TimeToNextTimer();
    const bool bWatchInput = pPresenter && !pPresenter->IsLost();
    pollfd watched[] = {{m_queue.WakeDescriptor(), POLLIN, 0}, {bWatchInput ? pPresenter->InputDescriptor() : -1, POLLIN, 0}};
    std::vector<Input> inputs;
    {
        const CUnlocked unlocked(m_lock);
        // A signal ends the wait too: a terminal that has changed its size tells so in its input.
        poll(watched, std::size(watched), nTimeout);
        if (bWatchInput)
            inputs = pPresenter->ReadInput();
    }
    m_queue.DrainWakes();
    for (const auto& input : inputs)
        HandleInput(m_lock, m_queue.hwndActive, input);
}

// Nobody is left to close the dialog, so it is closed, once, as by its title bar.
bool CMessageLoop::CloseForLostPresenter(HWND hwndDialog)
{
    if (m_bClosed || !stage.pPresenter || !stage.pPresenter->IsLost())
        return false;
    m_bClosed = true;
    CallWindow(m_lock, {hwndDialog, WM_CLOSE, 0, 0});
    return true;
}

void CMessageLoop::Turn(HWND hwndDialog)
{
    if (AnswerSentMessage(m_lock, m_queue) || DeliverPosted(hwndDialog) || DeliverTimer() || CloseForLostPresenter(hwndDialog))
        return;
    Show();
    Wait();
}
} // namespace platform::user32
