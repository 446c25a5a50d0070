#include "platform/user32/Presenter.h"

namespace platform::user32
{
std::unique_ptr<IPresenter> OpenPresenter()
{
    return nullptr;
}
} // namespace platform::user32
