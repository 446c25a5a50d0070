// The seam between dialogs and whatever a person sees and touches. Without a presenter dialogs are driven by messages
// of other threads alone.
#pragma once

#include "platform/user32/Desktop.h"

namespace platform::user32
{
// Used by one thread at a time, with the engine's lock held.
class IPresenter
{
public:
    virtual ~IPresenter() = default;

    // Becomes readable when there is input; the modal loop waits on it together with its messages.
    virtual int InputDescriptor() const = 0;
    // The dialogs that the thread has open.
    virtual void Show(const CThreadQueue& queue) = 0;
    // Does what the person has asked for since the last call. The lock is given up while the program's procedures run.
    virtual void TakeInput(EngineLock& lock, const CThreadQueue& queue) = 0;
    // The person is gone for good (a closed terminal): nothing will come in any more.
    virtual bool IsLost() const = 0;
};

// Made by whoever draws dialogs, as the environment variable PLATFORM_DIALOGS asks for: "terminal" opens the controlling
// terminal, "none" nothing; without the variable the terminal is taken when standard input is one. Null when there is
// to be none; false when the terminal that was asked for does not open.
bool OpenPresenter(std::unique_ptr<IPresenter>& pPresenter);
} // namespace platform::user32
