// A dialog box from a dialog template resource, bound to this object from
// its creation, so that its messages and its controls' notifications reach
// the message map.
//
// Modal: DoModal creates the window, disables the parent (its top-level
// window), runs a message loop of its own until EndDialog, and destroys the
// window; it returns EndDialog's value, or -1 when the template is missing.
// The object usually lives on the stack of the caller.
//
// Modeless: Create makes the window and returns. OnOK and OnCancel only
// end a modal dialog; a modeless one overrides them (CModelessDialogEx).
//
// Both call OnInitDialog when the window and its controls exist; its default
// loads the controls with UpdateData(FALSE). Enter and Esc reach IDOK and
// IDCANCEL through the dialog manager (PreTranslateMessage calls
// IsDialogMessage for keyboard and mouse input).
#pragma once

#include "CWnd.h"

class CDialog : public CWnd
{
    DECLARE_DYNAMIC(CDialog)
public:
    CDialog() = default;
    explicit CDialog(UINT nIDTemplate, CWnd* pParentWnd = nullptr);
    CDialog(LPCSTR lpszTemplateName, CWnd* pParentWnd);

    // Modeless creation. Without a parent, the application's main window owns it.
    BOOL Create(LPCSTR lpszTemplateName, CWnd* pParentWnd = nullptr);
    BOOL Create(UINT nIDTemplate, CWnd* pParentWnd = nullptr);
    // Modeless creation from a template in memory (a resource's template
    // with its styles changed, say) under hWndParent.
    BOOL CreateIndirect(const DLGTEMPLATE* pTemplate, HWND hWndParent);
    virtual INT_PTR DoModal();
    // Ends a modal dialog with nResult (hiding it); a modeless one is only hidden.
    void EndDialog(int nResult);

    virtual BOOL OnInitDialog();
    BOOL PreTranslateMessage(MSG* pMsg) override;

    LPCSTR m_lpszTemplateName = nullptr; // a resource id as MAKEINTRESOURCE
    CWnd* m_pParentWnd = nullptr;

protected:
    virtual void OnOK();
    virtual void OnCancel();

    BOOL CreateFromTemplate(LPCSTR lpszTemplateName, HWND hWndParent);
    HWND GetParentHwnd() const;

    int m_nModalResult = -1;
    BOOL m_bContinueModal = FALSE; // cleared by EndDialog
    BOOL m_bModalLoop = FALSE;     // DoModal is running

    DECLARE_MESSAGE_MAP()

private:
    // The parent's handle as it was given: a temporary wrapper of a foreign
    // window may be gone by the time the dialog is created.
    HWND m_hWndParentGiven = nullptr;

    friend INT_PTR CALLBACK AfxDlgProc(HWND, UINT, WPARAM, LPARAM);
};

INT_PTR CALLBACK AfxDlgProc(HWND hWnd, UINT nMessage, WPARAM wParam, LPARAM lParam);
