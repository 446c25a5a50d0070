#include "terminal/Scene.h"

#include "platform/user32/DialogNavigation.h"

#include <algorithm>

namespace platform::user32
{
namespace
{
ControlView CaptureControl(const Window& control)
{
    ControlView view;
    view.hwnd = control.hwnd;
    view.windowClass = control.windowClass;
    view.dwStyle = control.dwStyle;
    view.place = control.place;
    view.text = control.text;
    view.wIcon = control.wIcon;
    view.uCheck = control.uCheck;
    view.nSelected = control.nSelected;
    view.nTop = control.nTop;
    view.bDropped = control.bDropped;
    view.uCaret = control.uCaret;
    for (const auto& entry : control.entries)
        view.entries.push_back(entry.text);
    return view;
}

DialogView CaptureDialog(const Window& dialog)
{
    DialogView view;
    view.hwnd = dialog.hwnd;
    view.place = dialog.place;
    view.title = dialog.text;
    view.bEnabled = !dialog.Has(WS_DISABLED);
    view.hwndFocus = dialog.pDialog->hwndFocus;
    if (const Window* pDefault = DefaultButton(dialog))
        view.hwndDefault = pDefault->hwnd;
    for (HWND hwnd : dialog.children)
        if (const Window& control = *CDesktop::Get().Find(hwnd); control.Has(WS_VISIBLE))
            view.controls.push_back(CaptureControl(control));
    return view;
}
} // namespace

Scene CaptureScene(const CThreadQueue& queue)
{
    Scene scene;
    for (HWND hwnd : queue.modalWindows)
        if (const Window* pDialog = CDesktop::Get().Find(hwnd); pDialog && pDialog->Has(WS_VISIBLE))
            scene.push_back(CaptureDialog(*pDialog));
    const auto active =
        std::find_if(scene.begin(), scene.end(), [&queue](const DialogView& view) { return view.hwnd == queue.hwndActive; });
    if (active != scene.end())
        std::rotate(active, active + 1, scene.end());
    return scene;
}
} // namespace platform::user32
