// A push button, check box or radio button control. An owner-drawn button
// (BS_OWNERDRAW) draws itself in DrawItem: its parent's WM_DRAWITEM is
// offered back to it.
#pragma once

#include "CWnd.h"

class CButton : public CWnd
{
    DECLARE_DYNAMIC(CButton)
public:
    CButton() = default;

    BOOL Create(LPCSTR lpszCaption, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    UINT GetState() const { return static_cast<UINT>(SendMessage(BM_GETSTATE)); }
    void SetState(BOOL bHighlight) { SendMessage(BM_SETSTATE, static_cast<WPARAM>(bHighlight)); }
    int GetCheck() const { return static_cast<int>(SendMessage(BM_GETCHECK)); }
    void SetCheck(int nCheck) { SendMessage(BM_SETCHECK, static_cast<WPARAM>(nCheck)); }
    UINT GetButtonStyle() const { return GetStyle() & 0xFF; }
    void SetButtonStyle(UINT nStyle, BOOL bRedraw = TRUE)
    {
        SendMessage(BM_SETSTYLE, nStyle & 0xFFFF, static_cast<LPARAM>(bRedraw));
    }

    // Draws an owner-drawn button; the default draws nothing.
    virtual void DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct);

protected:
    BOOL OnChildNotify(UINT nMessage, WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;
};
