#include "CDataExchange.h"

#include "CUserException.h"
#include "CWnd.h"

CDataExchange::CDataExchange(CWnd* pDlgWnd, BOOL bSaveAndValidate)
    : m_bSaveAndValidate(bSaveAndValidate), m_pDlgWnd(pDlgWnd)
{
}

HWND CDataExchange::PrepareCtrl(int nIDC)
{
    HWND hWndCtrl = ::GetDlgItem(m_pDlgWnd->m_hWnd, nIDC);
    if (hWndCtrl)
    {
        m_idLastControl = nIDC;
        m_bEditLastControl = FALSE;
    }
    return hWndCtrl;
}

HWND CDataExchange::PrepareEditCtrl(int nIDC)
{
    HWND hWndCtrl = PrepareCtrl(nIDC);
    if (hWndCtrl)
        m_bEditLastControl = TRUE;
    return hWndCtrl;
}

void CDataExchange::Fail()
{
    if (m_bSaveAndValidate && m_idLastControl != 0)
    {
        if (HWND hWndCtrl = ::GetDlgItem(m_pDlgWnd->m_hWnd, m_idLastControl))
        {
            ::SetFocus(hWndCtrl);
            if (m_bEditLastControl)
                ::SendMessageA(hWndCtrl, EM_SETSEL, 0, -1);
        }
    }
    AfxThrowUserException();
}

void DDX_Control(CDataExchange* pDX, int nIDC, CWnd& rControl)
{
    // Prepared on every exchange, not only the first: a failing exchange then
    // puts the focus back on the last control the dialog names.
    HWND hWndCtrl = pDX->PrepareCtrl(nIDC);
    if (hWndCtrl && !rControl.m_hWnd)
        rControl.SubclassWindow(hWndCtrl);
}

void DDX_Text(CDataExchange* pDX, int nIDC, CString& value)
{
    HWND hWndCtrl = pDX->PrepareEditCtrl(nIDC);
    if (!hWndCtrl)
        return;
    if (pDX->m_bSaveAndValidate)
    {
        const int nLength = ::GetWindowTextLengthA(hWndCtrl);
        ::GetWindowTextA(hWndCtrl, value.GetBuffer(nLength), nLength + 1);
        value.ReleaseBuffer();
    }
    else
    {
        ::SetWindowTextA(hWndCtrl, value);
    }
}
