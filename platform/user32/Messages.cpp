// Messages to windows of this and of other threads, and timers.
#include "platform/user32/MessageLoop.h"
#include "platform/user32/PlannedFailure.h"
#include "platform/user32/Procedures.h"

#include <algorithm>

using namespace platform::user32;

namespace
{
using Deadline = std::optional<std::chrono::steady_clock::time_point>;

// What the window's thread answers; nothing when the deadline comes first. While it waits, the calling thread answers
// what is sent to its own windows, so that two threads that talk to each other do not stand still.
std::optional<LRESULT> SendToThread(EngineLock& lock, const Window& window, const Message& message, const Deadline& deadline)
{
    const auto pQueue = window.pQueue;
    const auto& pOwn = CThreadQueue::Current();
    const auto pSent = std::make_shared<SentMessage>(SentMessage{message, pOwn});
    pQueue->sent.push_back(pSent);
    pQueue->Wake();
    while (!pSent->bAnswered)
    {
        if (AnswerSentMessage(lock, *pOwn))
            continue;
        if (!deadline)
            pOwn->woken.wait(lock);
        else if (pOwn->woken.wait_until(lock, *deadline) == std::cv_status::timeout && !pSent->bAnswered)
        {
            // Not to be delivered later: the sender's buffers may be gone by then.
            std::erase(pQueue->sent, pSent);
            return std::nullopt;
        }
    }
    return pSent->lResult;
}

// Nothing, with a last error, for a window that is not there or does not answer in time.
std::optional<LRESULT> Send(const Message& message, const Deadline& deadline)
{
    auto lock = CDesktop::Get().Lock();
    const Window* pWindow = CDesktop::Get().Find(message.hwnd);
    if (!pWindow)
        return std::nullopt;
    if (pWindow->pQueue == CThreadQueue::Current())
        return CallWindow(lock, message);
    const auto answer = SendToThread(lock, *pWindow, message, deadline);
    if (!answer)
        SetLastError(ERROR_TIMEOUT);
    return answer;
}
} // namespace

LRESULT WINAPI SendMessageW(HWND hwnd, UINT uMessage, WPARAM wParam, LPARAM lParam)
{
    if (FailsAsPlanned("SendMessageW", ERROR_INVALID_WINDOW_HANDLE))
        return 0;
    return Send({hwnd, uMessage, wParam, lParam}, std::nullopt).value_or(0);
}

LRESULT WINAPI SendMessageTimeoutW(HWND hwnd, UINT uMessage, WPARAM wParam, LPARAM lParam, UINT uFlags, UINT uTimeoutMs,
                                   DWORD_PTR* pdwResult)
{
    if (FailsAsPlanned("SendMessageTimeoutW", ERROR_TIMEOUT))
        return 0;
    if (uFlags != SMTO_NORMAL)
    {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(uTimeoutMs);
    const auto answer = Send({hwnd, uMessage, wParam, lParam}, deadline);
    if (pdwResult)
        *pdwResult = static_cast<DWORD_PTR>(answer.value_or(0));
    return answer ? TRUE : FALSE;
}

BOOL WINAPI PostMessageW(HWND hwnd, UINT uMessage, WPARAM wParam, LPARAM lParam)
{
    if (FailsAsPlanned("PostMessageW", ERROR_NOT_ENOUGH_MEMORY))
        return FALSE;
    const auto lock = CDesktop::Get().Lock();
    const Window* pWindow = CDesktop::Get().Find(hwnd);
    if (!pWindow)
        return FALSE;
    pWindow->pQueue->posted.push_back({hwnd, uMessage, wParam, lParam});
    pWindow->pQueue->Wake();
    return TRUE;
}

UINT_PTR WINAPI SetTimer(HWND hwnd, UINT_PTR uId, UINT uElapseMs, TIMERPROC pTimerProc)
{
    if (FailsAsPlanned("SetTimer", ERROR_NOT_ENOUGH_MEMORY))
        return 0;
    const auto lock = CDesktop::Get().Lock();
    auto& queue = *CThreadQueue::Current();
    // Timers of dialogs alone, told by message; another thread's dialog is none of the caller's.
    const Window* pWindow = CDesktop::Get().Find(hwnd);
    if (!pWindow || pWindow->pQueue.get() != &queue || pTimerProc)
    {
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return 0;
    }
    constexpr UINT shortestPeriod = 10;
    const std::chrono::milliseconds period(std::max(uElapseMs, shortestPeriod));
    std::erase_if(queue.timers, [=](const Timer& timer) { return timer.hwnd == hwnd && timer.uId == uId; });
    queue.timers.push_back({hwnd, uId, period, Timer::Clock::now() + period});
    return uId;
}
