// What waits for one thread: messages sent by other threads, posted messages and timers.
//
// Every member is guarded by the engine's lock (Desktop.h).
#pragma once

#include <windows.h>

#include <chrono>
#include <condition_variable>
#include <deque>
#include <memory>
#include <optional>
#include <vector>

namespace platform::user32
{
class CThreadQueue;
class IPresenter;

struct Message
{
    HWND hwnd = nullptr;
    UINT uMessage = WM_NULL;
    WPARAM wParam = 0;
    LPARAM lParam = 0;
};

// A message on its way to another thread; the sender waits until it is answered.
struct SentMessage
{
    Message message;
    std::shared_ptr<CThreadQueue> pSender;
    LRESULT lResult = 0;
    bool bAnswered = false;
};

struct Timer
{
    using Clock = std::chrono::steady_clock;

    HWND hwnd;
    UINT_PTR uId;
    std::chrono::milliseconds period;
    Clock::time_point due;
};

class CThreadQueue
{
public:
    CThreadQueue();
    ~CThreadQueue();
    CThreadQueue(const CThreadQueue&) = delete;
    CThreadQueue& operator=(const CThreadQueue&) = delete;

    // The calling thread's.
    static const std::shared_ptr<CThreadQueue>& Current();

    // Ready for being polled; -1 when the system has no descriptor left.
    int WakeDescriptor();
    void Wake();
    void DrainWakes();

    // Answers what is still on its way to the window with 0, and forgets its posted messages and timers.
    void Forget(HWND hwnd);
    static void Answer(SentMessage& sent, LRESULT lResult);

    std::optional<Timer> TakeDueTimer();
    // In milliseconds, -1 when there is none.
    int TimeToNextTimer();

    std::deque<std::shared_ptr<SentMessage>> sent;
    std::deque<Message> posted;
    std::vector<Timer> timers;
    std::condition_variable woken;
    std::vector<HWND> modalWindows;         // open ones, the latest last
    std::unique_ptr<IPresenter> pPresenter; // as long as a dialog is open, if a person is to see it

private:
    // The one that is due first; the end when there is none.
    std::vector<Timer>::iterator NextTimer();

    int m_fdWake = -1;
};
} // namespace platform::user32
