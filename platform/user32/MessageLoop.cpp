#include "platform/user32/MessageLoop.h"

#include "platform/user32/Presenter.h"
#include "platform/user32/Procedures.h"

#include <poll.h>

namespace platform::user32
{
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

CMessageLoop::CMessageLoop(EngineLock& lock, CThreadQueue& queue)
    : m_lock(lock), m_queue(queue), m_bOutermost(queue.modalWindows.size() == 1)
{
    if (m_bOutermost)
        m_bPresented = OpenPresenter(m_queue.pPresenter);
}

CMessageLoop::~CMessageLoop()
{
    if (m_bOutermost)
        m_queue.pPresenter.reset();
}

bool CMessageLoop::IsReady()
{
    const bool bWakes = m_queue.WakeDescriptor() >= 0;
    if (!bWakes || !m_bPresented)
        SetLastError(bWakes ? ERROR_GEN_FAILURE : ERROR_TOO_MANY_OPEN_FILES);
    return bWakes && m_bPresented;
}

bool CMessageLoop::DeliverPosted()
{
    if (m_queue.posted.empty())
        return false;
    const Message message = m_queue.posted.front();
    m_queue.posted.pop_front();
    CallWindow(m_lock, message);
    return true;
}

bool CMessageLoop::DeliverTimer()
{
    const auto timer = m_queue.TakeDueTimer();
    if (timer)
        CallWindow(m_lock, {timer->hwnd, WM_TIMER, timer->uId, 0});
    return timer.has_value();
}

// Nobody is left to close the dialog, so it is closed, once, as by its title bar.
bool CMessageLoop::CloseForLostPresenter(HWND hwndDialog)
{
    if (m_bClosed || !m_queue.pPresenter || !m_queue.pPresenter->IsLost())
        return false;
    m_bClosed = true;
    CallWindow(m_lock, {hwndDialog, WM_CLOSE, 0, 0});
    return true;
}

void CMessageLoop::Wait()
{
    IPresenter* const pPresenter = m_queue.pPresenter.get();
    const bool bWatchInput = pPresenter && !pPresenter->IsLost();
    pollfd watched[] = {{m_queue.WakeDescriptor(), POLLIN, 0}, {bWatchInput ? pPresenter->InputDescriptor() : -1, POLLIN, 0}};
    const int nTimeout = m_queue.TimeToNextTimer();
    {
        const CUnlocked unlocked(m_lock);
        // A signal ends the wait too: a terminal that has changed its size tells so in its input.
        poll(watched, std::size(watched), nTimeout);
    }
    m_queue.DrainWakes();
    if (bWatchInput)
        pPresenter->TakeInput(m_lock, m_queue);
}

void CMessageLoop::Turn(HWND hwndDialog)
{
    if (AnswerSentMessage(m_lock, m_queue) || DeliverPosted() || DeliverTimer() || CloseForLostPresenter(hwndDialog))
        return;
    if (m_queue.pPresenter)
        m_queue.pPresenter->Show(m_queue);
    Wait();
}
} // namespace platform::user32
