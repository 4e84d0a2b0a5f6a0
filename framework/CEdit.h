// An edit control.
#pragma once

#include "CWnd.h"

class CEdit : public CWnd
{
    DECLARE_DYNAMIC(CEdit)
public:
    CEdit() = default;

    BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    // Selects from nStartChar to nEndChar (0, -1: everything) and, unless
    // bNoScroll, scrolls the caret into view.
    void SetSel(int nStartChar, int nEndChar, BOOL bNoScroll = FALSE);
    // Start in the low word, end in the high word.
    DWORD GetSel() const { return static_cast<DWORD>(SendMessage(EM_GETSEL)); }
    void GetSel(int& nStartChar, int& nEndChar) const;
    void ReplaceSel(LPCSTR lpszNewText, BOOL bCanUndo = FALSE)
    {
        SendMessage(EM_REPLACESEL, static_cast<WPARAM>(bCanUndo), reinterpret_cast<LPARAM>(lpszNewText));
    }
    void LimitText(int nChars = 0) { SendMessage(EM_LIMITTEXT, static_cast<WPARAM>(nChars)); }
    void Copy() { SendMessage(WM_COPY); }
    void Cut() { SendMessage(WM_CUT); }
    void Paste() { SendMessage(WM_PASTE); }
    void Clear() { SendMessage(WM_CLEAR); }
};
