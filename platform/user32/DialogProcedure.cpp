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
    default:
        return TextMessage(dialog, message);
    }
}
} // namespace

LRESULT DialogMessage(EngineLock& lock, const Message& message)
{
    auto& desktop = CDesktop::Get();
    DialogState& before = *desktop.Find(message.hwnd)->pDialog;
    INT_PTR nAnswer = FALSE;
    if (const DLGPROC pProcedure = before.pProcedure)
    {
        const CUnlocked unlocked(lock);
        nAnswer = pProcedure(message.hwnd, message.uMessage, message.wParam, message.lParam);
    }
    Window* pDialog = desktop.Find(message.hwnd);
    // The initialisation answers with what the procedure returns, other messages that it has dealt with are answered with 0.
    if (!pDialog || message.uMessage == WM_INITDIALOG)
        return nAnswer;
    return nAnswer ? 0 : DefaultMessage(*pDialog, message);
}
} // namespace platform::user32
