// Wine: the Assist Window as a pop-up owned by the host frame, kept by hand
// exactly over the strip it would fill as a child, and taking the
// activation no more than a child would.
//
// Why: a window of this process made a child of the host frame is created
// and takes input under Wine, but nothing it draws appears. Seen on a
// screenshot, a child filled red showed the stale grey of the MDI client
// that had lain there, while a pop-up owned by the frame painted at once.
// Wine draws a child into the surface of its top-level window, which lives
// in the process that owns that window.
#pragma once

#include "CDockAttachment.h"

class CPopupAttachment : public CDockAttachment
{
public:
    CPopupAttachment(CModelessDialogEx& bar, HWND hWndHost);
    ~CPopupAttachment() override;

    void Create(BOOL bShow) override;
    BOOL IsShown() const override { return m_bShown; }
    void Show(BOOL bShow) override;
    void Place(const CRect& rect) override;
    void FollowHost() override;
    LRESULT OnMouseActivate() override;
    void OnActivate(WPARAM wParam) override;
    BOOL OnTimer(UINT_PTR nIDEvent) override;
    void OnDestroy() override;

private:
    class CFocusGuard;

    void Sync();
    void KeepAboveHost();
    void RaiseAboveActiveHost();

    CModelessDialogEx& m_bar;
    HWND m_hWndHost;
    BOOL m_bShown = FALSE;          // visibility as the user chose it
    BOOL m_bPlaced = FALSE;         // m_rectPlaced holds a place
    CRect m_rectPlaced;             // the last place, in the host frame's client coordinates
    BOOL m_bTreeActivation = FALSE; // a click into the tree may activate the pop-up
    HWND m_hWndForegroundSeen = nullptr; // the foreground window at the last owner check
    std::unique_ptr<CFocusGuard> m_pFocusGuard;
};
