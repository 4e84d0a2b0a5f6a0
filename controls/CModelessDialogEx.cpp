#include "CModelessDialogEx.h"

IMPLEMENT_DYNAMIC(CModelessDialogEx, CDialog)

BEGIN_MESSAGE_MAP(CModelessDialogEx, CDialog)
END_MESSAGE_MAP()

CModelessDialogEx::CModelessDialogEx(UINT nIDTemplate, CWnd* pParentWnd)
    : CDialog(nIDTemplate, pParentWnd), m_nIDTemplate(nIDTemplate)
{
}

CModelessDialogEx::~CModelessDialogEx() = default;

void CModelessDialogEx::Create(BOOL bShow)
{
    CDialog::Create(m_nIDTemplate, m_pParentWnd);
    m_bModeless = TRUE;

    // Only direct children count: an OK button of a page inside this dialog
    // is that page's business.
    for (HWND hWndChild = ::GetWindow(m_hWnd, GW_CHILD); hWndChild; hWndChild = ::GetWindow(hWndChild, GW_HWNDNEXT))
    {
        const int nID = ::GetDlgCtrlID(hWndChild);
        if (nID == IDOK)
            m_bHookReturn = FALSE;
        else if (nID == IDCANCEL)
            m_bHookEscape = FALSE;
    }

    if (m_bHookEscape && m_bGrayClose)
    {
        if (HMENU hSysMenu = m_hWnd ? ::GetSystemMenu(m_hWnd, FALSE) : nullptr)
            ::EnableMenuItem(hSysMenu, SC_CLOSE, MF_BYCOMMAND | MF_GRAYED);
    }

    if (bShow && m_hWnd)
    {
        ShowWindow(SW_SHOW);
        UpdateWindow();
    }
}

void CModelessDialogEx::Close(int nResult)
{
    if (!m_bModeless)
        return;
    if (nResult == IDOK)
        OnOK();
    else
        OnCancel();
}

BOOL CModelessDialogEx::PreTranslateMessage(MSG* pMsg)
{
    if (m_bModeless && pMsg->message == WM_KEYDOWN)
    {
        if (m_bHookReturn && pMsg->wParam == VK_RETURN && OnReturnKey())
            return TRUE;
        if (m_bHookEscape && pMsg->wParam == VK_ESCAPE && OnEscapeKey())
            return TRUE;
    }
    return CDialog::PreTranslateMessage(pMsg);
}

BOOL CModelessDialogEx::OnReturnKey()
{
    return TRUE;
}

BOOL CModelessDialogEx::OnEscapeKey()
{
    return TRUE;
}

void CModelessDialogEx::PostNcDestroy()
{
    CDialog::PostNcDestroy();
    if (m_bModeless && m_bAutoDelete)
        delete this;
}

void CModelessDialogEx::OnOK()
{
    if (!m_bModeless)
    {
        CDialog::OnOK();
        return;
    }
    if (UpdateData(TRUE))
        DestroyWindow(); // the object is gone after this
}

void CModelessDialogEx::OnCancel()
{
    if (!m_bModeless)
    {
        CDialog::OnCancel();
        return;
    }
    DestroyWindow(); // the object is gone after this
}
