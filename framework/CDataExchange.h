// One data exchange between a window object and its child controls, and the
// exchange routines a DoDataExchange calls for each control:
//
//   void CMyDlg::DoDataExchange(CDataExchange* pDX)
//   {
//       CDialog::DoDataExchange(pDX);
//       DDX_Control(pDX, IDC_EDIT, m_edit);   // binds m_edit to the control
//       DDX_Text(pDX, IDC_NAME, m_strName);   // window text <-> CString
//       if (pDX->m_bSaveAndValidate && m_strName.IsEmpty())
//           pDX->Fail();                      // UpdateData answers FALSE
//   }
//
// A control id that the window does not have is skipped silently: the value
// keeps what it had in either direction.
#pragma once

#include "CString.h"

#include <windows.h>

class CWnd;

class CDataExchange
{
public:
    CDataExchange(CWnd* pDlgWnd, BOOL bSaveAndValidate);
    CDataExchange(const CDataExchange&) = delete;
    CDataExchange& operator=(const CDataExchange&) = delete;

    BOOL m_bSaveAndValidate; // TRUE: controls to members, with validation
    CWnd* m_pDlgWnd;         // the window whose controls are exchanged

    // The control about to be exchanged, remembered so that Fail can put the
    // focus back on it; NULL when the window has no such control.
    HWND PrepareCtrl(int nIDC);
    HWND PrepareEditCtrl(int nIDC); // the same; Fail also selects its text

    // Ends the exchange as failed: when saving, the focus goes back to the
    // last prepared control; then UpdateData stops and answers FALSE.
    [[noreturn]] void Fail();

    int m_idLastControl = 0;
    BOOL m_bEditLastControl = FALSE;
};

// Binds rControl to the child control nIDC on the first exchange (subclassing
// it, so its messages reach rControl's message map).
void DDX_Control(CDataExchange* pDX, int nIDC, CWnd& rControl);
// The control's window text.
void DDX_Text(CDataExchange* pDX, int nIDC, CString& value);
