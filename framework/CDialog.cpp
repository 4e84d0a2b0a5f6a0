#include "CDialog.h"

#include "CWinApp.h"

#include <commctrl.h>

IMPLEMENT_DYNAMIC(CDialog, CWnd)

BEGIN_MESSAGE_MAP(CDialog, CWnd)
    ON_COMMAND(IDOK, OnOK)
    ON_COMMAND(IDCANCEL, OnCancel)
END_MESSAGE_MAP()

namespace
{
// Templates may hold common controls (tree, tab): their classes must exist
// before the dialog manager creates them.
void RegisterCommonControls()
{
    static bool bDone = false;
    if (bDone)
        return;
    INITCOMMONCONTROLSEX icc = {sizeof(icc), ICC_WIN95_CLASSES};
    InitCommonControlsEx(&icc);
    bDone = true;
}

// Gives a modal dialog's owner its input back. Enabling a window of another
// thread waits until that thread has handled WM_ENABLE, so an owner in a
// program that no longer reads its messages (a hung host IDE under the
// Comment Editor) would hold this thread for good; it is enabled from a
// thread of its own, which waits for it. Wine: even enabling an owner that
// is enabled already waits for its process (seen: EnableWindow on a hung
// program's enabled window did not return); a hung owner is found quickly,
// SMTO_ABORTIFHUNG returning at once after 5 s without reading messages.
DWORD WINAPI EnableOwnerProc(LPVOID pParam)
{
    ::EnableWindow(static_cast<HWND>(pParam), TRUE);
    return 0;
}

void EnableOwner(HWND hWndOwner)
{
    DWORD_PTR dwResult = 0;
    if (::GetWindowThreadProcessId(hWndOwner, nullptr) == ::GetCurrentThreadId() ||
        ::SendMessageTimeoutA(hWndOwner, WM_NULL, 0, 0, SMTO_ABORTIFHUNG, 1000, &dwResult))
    {
        ::EnableWindow(hWndOwner, TRUE);
        return;
    }
    if (!::IsWindow(hWndOwner))
        return;
    if (HANDLE hThread = ::CreateThread(nullptr, 0, EnableOwnerProc, hWndOwner, 0, nullptr))
        ::CloseHandle(hThread);
}
} // namespace

CDialog::CDialog(UINT nIDTemplate, CWnd* pParentWnd)
    : CDialog(MAKEINTRESOURCEA(nIDTemplate), pParentWnd)
{
}

CDialog::CDialog(LPCSTR lpszTemplateName, CWnd* pParentWnd)
    : m_lpszTemplateName(lpszTemplateName), m_pParentWnd(pParentWnd),
      m_hWndParentGiven(pParentWnd ? pParentWnd->m_hWnd : nullptr)
{
}

HWND CDialog::GetParentHwnd() const
{
    // A parent object constructed before its window has its handle only now.
    if (m_hWndParentGiven)
        return m_hWndParentGiven;
    return m_pParentWnd ? m_pParentWnd->m_hWnd : nullptr;
}

INT_PTR CALLBACK AfxDlgProc(HWND hWnd, UINT nMessage, WPARAM /*wParam*/, LPARAM /*lParam*/)
{
    // The window procedure is AfxWndProc; the dialog manager calls this one
    // only for what the message map left to it, and only WM_INITDIALOG needs
    // the object.
    if (nMessage == WM_INITDIALOG)
    {
        CDialog* pDlg = DYNAMIC_DOWNCAST(CDialog, CWnd::FromHandlePermanent(hWnd));
        return pDlg ? pDlg->OnInitDialog() : TRUE;
    }
    return FALSE;
}

BOOL CDialog::CreateFromTemplate(LPCSTR lpszTemplateName, HWND hWndParent)
{
    HINSTANCE hInstance = GetModuleHandleA(nullptr);
    HRSRC hResource = FindResourceA(hInstance, lpszTemplateName, RT_DIALOG);
    HGLOBAL hTemplate = hResource ? LoadResource(hInstance, hResource) : nullptr;
    const DLGTEMPLATE* pTemplate = hTemplate ? static_cast<const DLGTEMPLATE*>(LockResource(hTemplate)) : nullptr;
    return pTemplate && CreateIndirect(pTemplate, hWndParent);
}

BOOL CDialog::CreateIndirect(const DLGTEMPLATE* pTemplate, HWND hWndParent)
{
    HINSTANCE hInstance = GetModuleHandleA(nullptr);
    RegisterCommonControls();

    m_nModalResult = -1;
    m_bContinueModal = TRUE;
    AfxHookWindowCreate(this);
    HWND hWnd = CreateDialogIndirectParamA(hInstance, pTemplate, hWndParent, AfxDlgProc, 0);
    if (!AfxUnhookWindowCreate())
        PostNcDestroy(); // the window was never bound: clean up as after a failed create

    // EndDialog during OnInitDialog means the dialog is not wanted after all.
    if (hWnd && !m_bContinueModal && ::IsWindow(hWnd))
    {
        ::DestroyWindow(hWnd);
        hWnd = nullptr;
    }
    return hWnd != nullptr;
}

BOOL CDialog::Create(LPCSTR lpszTemplateName, CWnd* pParentWnd)
{
    m_lpszTemplateName = lpszTemplateName;
    if (pParentWnd)
    {
        m_pParentWnd = pParentWnd;
        m_hWndParentGiven = pParentWnd->m_hWnd;
    }
    HWND hWndParent = GetParentHwnd();
    if (!hWndParent)
    {
        CWinApp* pApp = AfxGetApp();
        hWndParent = pApp && pApp->m_pMainWnd ? pApp->m_pMainWnd->m_hWnd : nullptr;
    }
    return CreateFromTemplate(lpszTemplateName, hWndParent);
}

BOOL CDialog::Create(UINT nIDTemplate, CWnd* pParentWnd)
{
    return Create(MAKEINTRESOURCEA(nIDTemplate), pParentWnd);
}

INT_PTR CDialog::DoModal()
{
    // The owner is the parent's top-level window, else the main window.
    HWND hWndParent = GetParentHwnd();
    if (!hWndParent)
    {
        CWinApp* pApp = AfxGetApp();
        hWndParent = pApp && pApp->m_pMainWnd ? pApp->m_pMainWnd->m_hWnd : nullptr;
    }
    while (hWndParent && (::GetWindowLongA(hWndParent, GWL_STYLE) & WS_CHILD))
        hWndParent = ::GetParent(hWndParent);

    // Disabled before the dialog exists, so no click reaches the parent
    // between the two; enabled again only if it was enabled before.
    BOOL bEnableParent = FALSE;
    if (hWndParent && ::IsWindowEnabled(hWndParent))
    {
        ::EnableWindow(hWndParent, FALSE);
        bEnableParent = TRUE;
    }

    m_bModalLoop = TRUE;
    if (CreateFromTemplate(m_lpszTemplateName, hWndParent) && m_bContinueModal)
    {
        // Shown once the queue is empty, that is once OnInitDialog's
        // consequences are painted; the template need not be visible.
        BOOL bShowIdle = !(GetStyle() & WS_VISIBLE);
        MSG msg;
        while (m_bContinueModal)
        {
            if (bShowIdle && !::PeekMessageA(&msg, nullptr, 0, 0, PM_NOREMOVE))
            {
                ShowWindow(SW_SHOWNORMAL);
                UpdateWindow();
                bShowIdle = FALSE;
            }
            if (!AfxPumpMessage())
            {
                // The program is ending: leave the quit for the outer loop.
                ::PostQuitMessage(0);
                m_nModalResult = -1;
                break;
            }
            if (!m_hWnd)
                break; // destroyed under the loop
        }
        if (m_hWnd)
            SetWindowPos(nullptr, 0, 0, 0, 0,
                         SWP_HIDEWINDOW | SWP_NOSIZE | SWP_NOMOVE | SWP_NOACTIVATE | SWP_NOZORDER);
    }
    m_bContinueModal = FALSE;
    m_bModalLoop = FALSE;

    if (bEnableParent)
        EnableOwner(hWndParent);
    if (hWndParent && m_hWnd && ::GetActiveWindow() == m_hWnd)
        ::SetActiveWindow(hWndParent);
    DestroyWindow();
    return m_nModalResult;
}

void CDialog::EndDialog(int nResult)
{
    if (m_bContinueModal)
    {
        m_nModalResult = nResult;
        m_bContinueModal = FALSE;
        PostMessage(WM_NULL); // wakes the modal loop
    }
    // Wine: the system's EndDialog enables the owner of any top-level
    // dialog, also one that was disabled before DoModal disabled it (seen: a
    // parent disabled beforehand came back enabled). A modal dialog is hidden
    // and its parent given back its state by DoModal instead.
    if (m_hWnd && !m_bModalLoop)
        ::EndDialog(m_hWnd, nResult);
}

BOOL CDialog::OnInitDialog()
{
    if (!UpdateData(FALSE))
    {
        EndDialog(-1);
        return FALSE;
    }
    return TRUE; // the dialog manager gives the first control the focus
}

void CDialog::OnOK()
{
    if (!UpdateData(TRUE))
        return; // the exchange put the focus on the offending control
    EndDialog(IDOK);
}

void CDialog::OnCancel()
{
    EndDialog(IDCANCEL);
}

BOOL CDialog::PreTranslateMessage(MSG* pMsg)
{
    // Only input goes through the dialog manager (Tab, Enter, Esc, mnemonics).
    const UINT nMessage = pMsg->message;
    if ((nMessage < WM_KEYFIRST || nMessage > WM_KEYLAST) && (nMessage < WM_MOUSEFIRST || nMessage > WM_MOUSELAST))
        return FALSE;
    return ::IsDialogMessageA(m_hWnd, pMsg);
}
