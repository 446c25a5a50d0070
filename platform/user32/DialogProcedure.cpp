#include "platform/user32/DialogNavigation.h"
#include "platform/user32/Procedures.h"

namespace platform::user32
{
namespace
{
LRESULT DefaultMessage(Window& dialog, const Message& message)
{
    switch (message.uMessage)
    {
    case WM_CLOSE:
    {
        // Closing is cancelling, unless the dialog does not let its Cancel button be pressed.
        const Window* pCancel = CDesktop::Get().FindItem(dialog, IDCANCEL);
        if (!pCancel || !pCancel->Has(WS_DISABLED))
            dialog.pQueue->posted.push_back({dialog.hwnd, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED),
                                             pCancel ? reinterpret_cast<LPARAM>(pCancel->hwnd) : 0});
        return 0;
    }
    case WM_NEXTDLGCTL:
    {
        const bool bHandle = LOWORD(message.lParam) != 0;
        Window* pControl = bHandle ? CDesktop::Get().Find(reinterpret_cast<HWND>(message.wParam))
                                   : NextTabStop(dialog, FocusOf(dialog), message.wParam != 0);
        if (pControl && pControl->hwndParent == dialog.hwnd)
            GiveFocus(*pControl);
        return 0;
    }
    default:
        return TextMessage(dialog, message);
    }
}
} // namespace

LRESULT DialogMessage(EngineLock& lock, const Message& message)
{
    auto& desktop = CDesktop::Get();
    DialogState& before = *desktop.Find(message.hwnd)->pDialog;
    before.lMessageResult = 0;
    INT_PTR nAnswer = FALSE;
    if (const DLGPROC pProcedure = before.pProcedure)
    {
        const CUnlocked unlocked(lock);
        nAnswer = pProcedure(message.hwnd, message.uMessage, message.wParam, message.lParam);
    }
    Window* pDialog = desktop.Find(message.hwnd);
    // The initialisation answers with what the procedure returns, other messages with what it has stored.
    if (!pDialog || message.uMessage == WM_INITDIALOG)
        return nAnswer;
    return nAnswer ? pDialog->pDialog->lMessageResult : DefaultMessage(*pDialog, message);
}
} // namespace platform::user32
