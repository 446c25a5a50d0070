#include "platform/user32/ThreadQueue.h"

#include "platform/user32/Presenter.h"

#include <algorithm>
#include <cstdint>
#include <sys/eventfd.h>
#include <unistd.h>

namespace platform::user32
{
CThreadQueue::CThreadQueue() = default;

CThreadQueue::~CThreadQueue()
{
    if (m_fdWake >= 0)
        close(m_fdWake);
}

const std::shared_ptr<CThreadQueue>& CThreadQueue::Current()
{
    thread_local const auto pQueue = std::make_shared<CThreadQueue>();
    return pQueue;
}

int CThreadQueue::WakeDescriptor()
{
    if (m_fdWake < 0)
        m_fdWake = eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC);
    return m_fdWake;
}

void CThreadQueue::Wake()
{
    woken.notify_all();
    // A full counter is as good a wake-up as one more.
    const std::uint64_t uOne = 1;
    if (m_fdWake >= 0) [[maybe_unused]]
        const auto nWritten = write(m_fdWake, &uOne, sizeof(uOne));
}

void CThreadQueue::DrainWakes()
{
    std::uint64_t uCount = 0;
    [[maybe_unused]] const auto nRead = read(m_fdWake, &uCount, sizeof(uCount));
}

void CThreadQueue::Answer(SentMessage& sent, LRESULT lResult)
{
    sent.lResult = lResult;
    sent.bAnswered = true;
    sent.pSender->Wake();
}

void CThreadQueue::Forget(HWND hwnd)
{
    std::erase_if(sent,
                  [hwnd](const auto& pSent)
                  {
                      if (pSent->message.hwnd != hwnd)
                          return false;
                      Answer(*pSent, 0);
                      return true;
                  });
    std::erase_if(posted, [hwnd](const Message& message) { return message.hwnd == hwnd; });
    std::erase_if(timers, [hwnd](const Timer& timer) { return timer.hwnd == hwnd; });
}

std::vector<Timer>::iterator CThreadQueue::NextTimer()
{
    return std::ranges::min_element(timers, {}, &Timer::due);
}

std::optional<Timer> CThreadQueue::TakeDueTimer()
{
    const auto now = Timer::Clock::now();
    const auto next = NextTimer();
    if (next == timers.end() || next->due > now)
        return std::nullopt;
    // Missed periods are not made up for: a timer message says that time has passed, not how much.
    next->due = std::max(next->due + next->period, now);
    return *next;
}

int CThreadQueue::TimeToNextTimer()
{
    const auto next = NextTimer();
    if (next == timers.end())
        return -1;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(next->due - Timer::Clock::now());
    return static_cast<int>(std::clamp<std::chrono::milliseconds::rep>(left.count(), 0, 60'000));
}
} // namespace platform::user32
