#include "platform/user32/Modal.h"

#include "platform/user32/MessageLoop.h"
#include "platform/user32/Procedures.h"

namespace platform::user32
{
namespace
{
// The windows of one dialog, gone when the scope ends, also by an exception of the dialog's procedure.
class CModalDialog
{
public:
    CModalDialog(EngineLock& lock, const DialogTemplate& dialogTemplate, HWND hwndOwner, DLGPROC pProcedure);
    ~CModalDialog();
    CModalDialog(const CModalDialog&) = delete;
    CModalDialog& operator=(const CModalDialog&) = delete;

    std::optional<INT_PTR> Run(LPARAM lInitParam);

private:
    void MakeControls(const DialogTemplate& dialogTemplate);
    Window* Find() const
    {
        return CDesktop::Get().Find(m_hwnd);
    }
    bool IsOpen() const
    {
        const Window* pDialog = Find();
        return pDialog && !pDialog->pDialog->bEnded;
    }
    void Initialise(LPARAM lInitParam);

    EngineLock& m_lock;
    const std::shared_ptr<CThreadQueue> m_pQueue = CThreadQueue::Current();
    HWND m_hwnd = nullptr;
};

CModalDialog::CModalDialog(EngineLock& lock, const DialogTemplate& dialogTemplate, HWND hwndOwner, DLGPROC pProcedure)
    : m_lock(lock)
{
    auto& desktop = CDesktop::Get();
    auto pDialog = std::make_unique<Window>();
    pDialog->dwStyle = dialogTemplate.dwStyle;
    pDialog->place = dialogTemplate.place;
    pDialog->text = dialogTemplate.title;
    pDialog->pDialog = std::make_unique<DialogState>();
    pDialog->pDialog->pProcedure = pProcedure;
    if (hwndOwner)
    {
        Window& owner = desktop.Root(*desktop.Find(hwndOwner));
        pDialog->hwndOwner = owner.hwnd;
        if (!owner.Has(WS_DISABLED))
            pDialog->pDialog->hwndReenable = owner.hwnd;
        owner.dwStyle |= WS_DISABLED;
    }
    m_pQueue->modalWindows.reserve(m_pQueue->modalWindows.size() + 1);
    m_hwnd = desktop.Add(std::move(pDialog)).hwnd;
    m_pQueue->modalWindows.push_back(m_hwnd);
    MakeControls(dialogTemplate);
}

void CModalDialog::MakeControls(const DialogTemplate& dialogTemplate)
{
    for (const auto& control : dialogTemplate.controls)
    {
        auto pControl = std::make_unique<Window>();
        pControl->windowClass = control.windowClass;
        pControl->hwndParent = m_hwnd;
        pControl->nId = control.nId;
        pControl->dwStyle = control.dwStyle | WS_CHILD;
        pControl->place = control.place;
        pControl->text = control.text;
        pControl->wIcon = control.wIcon;
        CDesktop::Get().Add(std::move(pControl));
    }
}

CModalDialog::~CModalDialog()
{
    if (Window* pDialog = Find())
        EndModal(*pDialog, pDialog->pDialog->nResult);
    std::erase(m_pQueue->modalWindows, m_hwnd);
    CDesktop::Get().Destroy(m_hwnd);
}

void CModalDialog::Initialise(LPARAM lInitParam)
{
    CallWindow(m_lock, {m_hwnd, WM_INITDIALOG, 0, lInitParam});
    if (IsOpen())
        Find()->dwStyle |= WS_VISIBLE;
}

std::optional<INT_PTR> CModalDialog::Run(LPARAM lInitParam)
{
    CMessageLoop loop(m_lock, *m_pQueue);
    if (!loop.IsReady())
        return std::nullopt;
    Initialise(lInitParam);
    while (IsOpen())
        loop.Turn(m_hwnd);
    const Window* pDialog = Find();
    const INT_PTR nResult = pDialog ? pDialog->pDialog->nResult : 0;
    CallWindow(m_lock, {m_hwnd, WM_DESTROY, 0, 0});
    return nResult;
}
} // namespace

void EndModal(Window& dialog, INT_PTR nResult)
{
    dialog.pDialog->nResult = nResult;
    dialog.pDialog->bEnded = true;
    dialog.dwStyle &= ~WS_VISIBLE;
    auto& desktop = CDesktop::Get();
    if (dialog.pDialog->hwndReenable)
        if (Window* pOwner = desktop.Find(dialog.pDialog->hwndReenable))
            pOwner->dwStyle &= ~WS_DISABLED;
    dialog.pDialog->hwndReenable = nullptr;
    dialog.pQueue->Wake();
}

std::optional<INT_PTR> RunDialog(const DialogTemplate& dialogTemplate, HWND hwndOwner, DLGPROC pProcedure, LPARAM lInitParam)
{
    auto lock = CDesktop::Get().Lock();
    // Asked under the lock that the dialog is made under: the owner may be another thread's.
    if (hwndOwner && !CDesktop::Get().Find(hwndOwner))
        return std::nullopt;
    CModalDialog dialog(lock, dialogTemplate, hwndOwner, pProcedure);
    return dialog.Run(lInitParam);
}
} // namespace platform::user32
