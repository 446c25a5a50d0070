// The seam between dialogs and whatever a person sees and touches. Without a presenter dialogs are driven by messages
// of other threads alone.
#pragma once

#include "terminal/Keyboard.h"
#include "terminal/Scene.h"

#include <memory>
#include <vector>

namespace platform::user32
{
// Used by one thread at a time, without the engine's lock.
class IPresenter
{
public:
    virtual ~IPresenter() = default;

    // Becomes readable when there is input; the modal loop waits on it together with its messages.
    virtual int InputDescriptor() const = 0;
    virtual void Show(const Scene& scene) = 0;
    // What has come in since the last call; empty when nothing has.
    virtual std::vector<Input> ReadInput() = 0;
    // The person is gone for good (a closed terminal): nothing will come in any more.
    virtual bool IsLost() const = 0;
};

// As the environment variable PLATFORM_DIALOGS asks for: "terminal" opens the controlling terminal, "none" nothing;
// without the variable the terminal is taken when standard input is one. Null when there is to be none; false when the
// terminal that was asked for does not open.
bool OpenPresenter(std::unique_ptr<IPresenter>& pPresenter);
} // namespace platform::user32
