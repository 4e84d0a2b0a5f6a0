// The Comment Editor: a one-line modal dialog over the host IDE's frame. The
// typed text goes into the host's active editor through the clipboard (the
// host's paste command), and the clipboard's earlier text is put back
// afterwards. A check box chooses whether the input method editor opens by
// itself; its state is the setting "OpenIMEAutomatically".
//
// Opened by the main frame on WM_OPENCOMMENTEDITOR; the object lives on the
// main frame's stack for the time of DoModal.
#pragma once

#include "CClipboardContent.h"
#include "CDialog.h"
#include "CEdit.h"
#include "CLBitmapButton.h"
#include "CString.h"

class CCommentDlg : public CDialog
{
public:
    // hTarget: the host frame, the dialog's parent and the paste's target.
    // The clipboard's text is saved here, before anything is typed.
    explicit CCommentDlg(HWND hTarget);

    // Posted by the dialog to itself once the host has pasted.
    static const UINT WM_RESTORECLIPBOARD;

    CEdit m_edit;
    CLBitmapButton m_btnPaste;
    CLBitmapButton m_btnCancel;
    HWND m_hTarget;
    CClipboardContent m_clipboard; // what the clipboard held when the dialog was made
    BOOL m_bOpenIME;        // open the IME by itself; the setting's value
    BOOL m_bIME;            // the thread's keyboard layout has an IME
    BOOL m_bPrevOpen;       // the IME's status before the dialog opened it
    BOOL m_bRestored;       // the clipboard has been put back

protected:
    // Loading: binds the controls and opens the IME as chosen. Saving (Paste
    // or Enter): sends the text to the host and fails on purpose, so that
    // the dialog ends only once the clipboard is restored.
    void DoDataExchange(CDataExchange* pDX) override;
    BOOL OnInitDialog() override;
    BOOL PreTranslateMessage(MSG* pMsg) override;

    void OnCheckOpenIME();
    LRESULT OnRestoreClipboard(WPARAM wParam, LPARAM lParam);
    void OnDestroy();

    // Opens or closes the IME of the text field; returns the status before.
    BOOL SetIMEOpen(BOOL bOpen);

    DECLARE_MESSAGE_MAP()

private:
    // The check box and the IME as the setting wants them, where there is an IME.
    void LoadIMEChoice();
    void PasteText(CDataExchange* pDX);

    BYTE m_nLeadByte = 0; // the first byte of a double-byte character typed
};
