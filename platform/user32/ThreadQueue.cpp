#include "platform/user32/ThreadQueue.h"

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

std::optional<Timer> CThreadQueue::TakeDueTimer()
{
    const auto now = Timer::Clock::now();
    const auto first = std::min_element(timers.begin(), timers.end(),
                                        [](const Timer& left, const Timer& right) { return left.due < right.due; });
    if (first == timers.end() || first->due > now)
        return std::nullopt;
    // Missed periods are not made up for: a timer message says that time has passed, not how much.
    first->due = std::max(first->due + first->period, now);
    return *first;
}

int CThreadQueue::TimeToNextTimer() const
{
    if (timers.empty())
        return -1;
    const auto first = std::min_element(timers.begin(), timers.end(),
                                        [](const Timer& left, const Timer& right) { return left.due < right.due; });
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(first->due - Timer::Clock::now());
    return static_cast<int>(std::clamp<std::chrono::milliseconds::rep>(left.count(), 0, 60'000));
}
} // namespace platform::user32
