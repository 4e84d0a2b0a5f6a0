// The dialog base of everything that lives in the Assist Window. Run modal
// (DoModal) it is an ordinary dialog. Made modeless with Create it owns its
// lifetime: allocated with new by its creator, it deletes itself after its
// window is destroyed, however that happens (Close, OnOK, OnCancel, WM_CLOSE,
// or its parent going away), and nobody else deletes it.
//
// A modeless dialog without an IDOK button gets Enter, and one without an
// IDCANCEL button gets Esc, before the dialog manager does: OnReturnKey and
// OnEscapeKey decide, and by default both keys are swallowed, so they never
// close a page that has no button for it.
#pragma once

#include "CDialog.h"

class CModelessDialogEx : public CDialog
{
    DECLARE_DYNAMIC(CModelessDialogEx)
public:
    CModelessDialogEx(UINT nIDTemplate, CWnd* pParentWnd);
    ~CModelessDialogEx() override;

    UINT m_nIDTemplate;          // the template Create uses
    BOOL m_bAutoDelete = TRUE;   // delete the object after its modeless window is gone
    BOOL m_bModeless = FALSE;    // set by Create
    BOOL m_bHookReturn = TRUE;   // cleared by Create when there is an IDOK control
    BOOL m_bHookEscape = TRUE;   // cleared by Create when there is an IDCANCEL control
    BOOL m_bGrayClose = TRUE;    // gray the system menu's Close when there is no IDCANCEL control

    // Creates the modeless window under the parent given at construction,
    // shown or hidden. A failed creation is not reported.
    void Create(BOOL bShow);
    // Ends a modeless dialog: IDOK through OnOK (with data exchange), any
    // other value through OnCancel. Nothing happens to a dialog that is not
    // modeless. After it the object may no longer exist.
    void Close(int nResult);

    BOOL PreTranslateMessage(MSG* pMsg) override;

    // Enter in a modeless dialog without IDOK; TRUE swallows the key.
    virtual BOOL OnReturnKey();
    // Esc in a modeless dialog without IDCANCEL; TRUE swallows the key.
    virtual BOOL OnEscapeKey();

protected:
    void PostNcDestroy() override;
    void OnOK() override;
    void OnCancel() override;

    DECLARE_MESSAGE_MAP()
};
