#include "CCommentDlg.h"

#include "CApp.h"
#include "CDataExchange.h"
#include "HostIde.h"
#include "CImages.h"
#include "resource.h"

#include <imm.h>

const UINT CCommentDlg::WM_RESTORECLIPBOARD = RegisterWindowMessageA("CCommentDlg::WM_RESTORECLIPBOARD");

namespace
{
// The host's paste command: it inserts the clipboard's text into the active
// editor before it returns.

// A healthy host pastes in a few milliseconds. One that takes longer than
// the system's own notion of hung (5 s without reading its messages) is not
// waited for: the tool's thread is the one that serves the tray icon and
// every host's hook records, and it must not stop for good behind one host.
const UINT kPasteTimeoutMs = 5000;
} // namespace

BEGIN_MESSAGE_MAP(CCommentDlg, CDialog)
    ON_WM_DESTROY()
    ON_BN_CLICKED(IDC_OPEN_IME, OnCheckOpenIME)
    ON_REGISTERED_MESSAGE(CCommentDlg::WM_RESTORECLIPBOARD, OnRestoreClipboard)
END_MESSAGE_MAP()

CCommentDlg::CCommentDlg(HWND hTarget)
    : CDialog(IDD_COMMENTDLG, CWnd::FromHandle(hTarget)),
      m_hTarget(hTarget),
      m_bOpenIME(GetApp()->m_bOpenIMEAutomatically),
      m_bIME(FALSE),
      m_bPrevOpen(FALSE),
      m_bRestored(FALSE)
{
    // Everything the clipboard holds comes back once the comment has passed
    // through it, whatever it is.
    m_clipboard.Save(m_hTarget);
}

BOOL CCommentDlg::OnInitDialog()
{
    CDialog::OnInitDialog();
    // The buttons copy their images; the list goes at the end of this scope.
    CImages images;
    m_btnPaste.SetImage(&images, CImages::kCheck);
    m_btnCancel.SetImage(&images, CImages::kCross);
    return TRUE;
}

BOOL CCommentDlg::PreTranslateMessage(MSG* pMsg)
{
    // A character typed into the field reaches this ANSI program as two
    // WM_CHAR messages in a double-byte code page, lead byte first; the
    // field is given the pair at once. Wine: its edit control turns each
    // byte into a character of its own (seen in code page 932: every kanji
    // typed came out as two wrong characters); Windows' edit control joins
    // the two itself, to the same effect as this.
    if (pMsg->message == WM_CHAR && pMsg->hwnd == m_edit.m_hWnd && pMsg->wParam <= 0xFF)
    {
        const BYTE nByte = static_cast<BYTE>(pMsg->wParam);
        if (m_nLeadByte)
        {
            const char szCharacter[3] = {static_cast<char>(m_nLeadByte), static_cast<char>(nByte), 0};
            m_nLeadByte = 0;
            m_edit.ReplaceSel(szCharacter, TRUE);
            return TRUE;
        }
        if (IsDBCSLeadByte(nByte))
        {
            m_nLeadByte = nByte;
            return TRUE;
        }
    }
    return CDialog::PreTranslateMessage(pMsg);
}

void CCommentDlg::DoDataExchange(CDataExchange* pDX)
{
    CDialog::DoDataExchange(pDX);
    DDX_Control(pDX, IDCANCEL, m_btnCancel);
    DDX_Control(pDX, IDOK, m_btnPaste);
    DDX_Control(pDX, IDC_COMMENT_TEXT, m_edit);
    if (!pDX->m_bSaveAndValidate)
        LoadIMEChoice();
    else if (!m_bRestored)
        PasteText(pDX);
}

void CCommentDlg::LoadIMEChoice()
{
    m_bIME = ImmIsIME(GetKeyboardLayout(0));
    if (m_bIME)
    {
        CheckDlgButton(m_hWnd, IDC_OPEN_IME, m_bOpenIME ? BST_CHECKED : BST_UNCHECKED);
        if (m_bOpenIME)
            m_bPrevOpen = SetIMEOpen(TRUE);
    }
    else
    {
        ::EnableWindow(::GetDlgItem(m_hWnd, IDC_OPEN_IME), FALSE);
    }
}

void CCommentDlg::PasteText(CDataExchange* pDX)
{
    m_edit.SetSel(0, -1);
    if (m_edit.GetSel() == 0)
        return; // nothing typed: the dialog ends with IDOK and nothing is pasted

    // Replaces the clipboard's whole content by the typed text.
    m_edit.Copy();

    DWORD_PTR dwResult = 0;
    const BOOL bAnswered = ::SendMessageTimeoutA(m_hTarget, WM_COMMAND, HostIde::kCmdPaste, 0, SMTO_ABORTIFHUNG,
                                                 kPasteTimeoutMs, &dwResult) != 0;
    // A host that did not answer may still paste when it comes back; it must
    // find the comment then, not the earlier text. A host that is gone will
    // paste nothing, so the earlier text may come back.
    if (!bAnswered && ::IsWindow(m_hTarget))
        m_clipboard.Forget();

    // Restored only after the paste: the message waits behind it.
    PostMessage(WM_RESTORECLIPBOARD);
    pDX->Fail(); // keeps the dialog open until then, the focus in the field
}

LRESULT CCommentDlg::OnRestoreClipboard(WPARAM /*wParam*/, LPARAM /*lParam*/)
{
    m_clipboard.Restore(m_hWnd);
    m_bRestored = TRUE;
    EndDialog(IDOK);
    return 0;
}

void CCommentDlg::OnCheckOpenIME()
{
    m_bOpenIME = IsDlgButtonChecked(m_hWnd, IDC_OPEN_IME) == BST_CHECKED;
    SetIMEOpen(m_bOpenIME);
}

void CCommentDlg::OnDestroy()
{
    CDialog::OnDestroy();
    // Without a status saved at the start (the box was ticked only now),
    // m_bPrevOpen is 0: the IME the user opened here is closed again.
    if (m_bIME && m_bOpenIME)
        SetIMEOpen(m_bPrevOpen);
    GetApp()->m_bOpenIMEAutomatically = m_bOpenIME;
}

BOOL CCommentDlg::SetIMEOpen(BOOL bOpen)
{
    HIMC hIMC = ImmGetContext(m_edit.m_hWnd);
    const BOOL bWasOpen = ImmGetOpenStatus(hIMC);
    ImmSetOpenStatus(hIMC, bOpen);
    ImmReleaseContext(m_edit.m_hWnd, hIMC);
    return bWasOpen;
}
