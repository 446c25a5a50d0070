// Takes what waits for a thread, one thing at a time: messages of other threads, posted messages, a person's input,
// timers.
#pragma once

#include "platform/user32/Desktop.h"

namespace platform::user32
{
// Answers one message that another thread has sent; false when none waits.
bool AnswerSentMessage(EngineLock& lock, CThreadQueue& queue);

// Brings a presenter up for the thread's outermost dialog; it stays for all that are stacked on it.
class CMessageLoop
{
public:
    CMessageLoop(EngineLock& lock, CThreadQueue& queue);
    ~CMessageLoop();
    CMessageLoop(const CMessageLoop&) = delete;
    CMessageLoop& operator=(const CMessageLoop&) = delete;

    // False, with a last error, when nobody could ever answer the dialog: the terminal that was asked for does not open,
    // or the system has no descriptor left to wait on.
    bool IsReady();

    // Deals with one thing, or waits until there is one.
    void Turn(HWND hwndDialog);

private:
    bool DeliverPosted();
    bool DeliverTimer();
    bool CloseForLostPresenter(HWND hwndDialog);
    void Wait();

    EngineLock& m_lock;
    CThreadQueue& m_queue;
    const bool m_bOutermost;
    bool m_bPresented = true;
    bool m_bClosed = false;
};
} // namespace platform::user32
