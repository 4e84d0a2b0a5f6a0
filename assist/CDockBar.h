// The Assist Window: a modeless dialog planted into the host IDE's frame at
// the left or right edge of its client area, beside the MDI client. It paints
// a splitter edge on its inner side and a two-line gripper at its top, holds
// a flat button that hides it and a tab control (tabs at the bottom) with the
// Project page. Dragging the splitter changes its width, dragging the gripper
// moves it to the other side; width and side live in the settings
// ("DockRect", "DockLeft"). Every message record of the host frame is passed
// on to its pages.
//
// Created with new by the host frame item; deletes itself after its window is
// destroyed (by Close, or with the host frame). After a resize, a move to the
// other side and a hide it posts WM_SIZE (0, 0) to the host frame, whose item
// then lays out the dock bar and the MDI client again.
//
// On Windows the dock bar is a child of the host frame. Wine: a window of this
// process made a child of the host frame is created and takes input, but
// nothing it draws appears: seen on a screenshot, a child filled red showed
// the stale grey of the MDI client that had lain there, while a pop-up owned
// by the frame painted at once. Wine draws a child into the surface of its
// top-level window, which lives in the process that owns that window. So under
// Wine the dock bar is a pop-up owned by the host frame, kept exactly over the
// strip it would fill as a child (Place, FollowHost) and taking the
// activation no more than a child would.
#pragma once

#include "CFlatButton.h"
#include "CImages.h"
#include "CModelessDialogEx.h"
#include "CTabbedPageEx.h"

#include <memory>

struct HookRecord;

class CDockBar : public CModelessDialogEx
{
public:
    explicit CDockBar(HWND hWndHost);
    ~CDockBar() override;

    CFlatButton m_btnHide;  // control 1001
    CTabbedPageEx m_tab;    // control 1000
    HWND m_hWndHost;        // the host IDE frame ("PFE_Frame")
    int m_nDragMode = 0;    // 0 none, 1 over the splitter, 2 resizing, 3 moving
    CPoint m_ptDrag;        // last tracked pointer position, client coordinates
    CRect m_rcGripper;      // hit rectangle of the gripper, set by every paint
    BOOL m_bDropLeft = FALSE; // side chosen by the current move drag
    COLORREF m_clr3DLight = 0;
    COLORREF m_clrHighlight = 0;
    COLORREF m_clrShadow = 0;
    COLORREF m_clr3DDkShadow = 0;
    HCURSOR m_hcurSplit = nullptr;
    CImages m_images;

    // Creates the dock bar under the host frame, shown or hidden. It hides
    // the base's Create, which knows only the child window of the template.
    void Create(BOOL bShow);
    // Hands a host frame record to every page, in page order.
    void DispatchHostMessage(const HookRecord* pRecord);

    // Visibility and place as the host frame item sees them, the same on
    // both paths: shown means shown beside the MDI client (a pop-up may be
    // hidden for a while because the host frame is minimised).
    BOOL IsShown() const;
    void Show(BOOL bShow);
    // Puts the dock bar on a rectangle in the host frame's client coordinates.
    void Place(const CRect& rect);
    // Wine: the host frame moved, was minimised, restored or hidden; the
    // pop-up goes back over its strip, or out of sight with the frame.
    void FollowHost();

    BOOL m_bPopup;            // Wine: a pop-up owned by the host frame, not its child
    BOOL m_bShown = FALSE;    // Wine: the pop-up's visibility as the user chose it
    BOOL m_bPlaced = FALSE;   // Wine: m_rectPlaced holds a place
    CRect m_rectPlaced;       // Wine: the last place, in the host frame's client coordinates
    BOOL m_bTreeActivation = FALSE; // Wine: a click into the tree may activate the pop-up

protected:
    BOOL OnInitDialog() override;
    void DoDataExchange(CDataExchange* pDX) override;

    void OnDestroy();
    void OnSize(UINT nType, int cx, int cy);
    void OnPaint();
    void OnMouseMove(UINT nFlags, CPoint point);
    void OnLButtonDown(UINT nFlags, CPoint point);
    void OnLButtonUp(UINT nFlags, CPoint point);
    void OnCaptureChanged(CWnd* pWnd);
    BOOL OnSetCursor(CWnd* pWnd, UINT nHitTest, UINT nMessage);
    void OnSysColorChange();
    void OnTimer(UINT_PTR nIDEvent);
    void OnHide();
    LRESULT OnMouseActivate(WPARAM wParam, LPARAM lParam);
    LRESULT OnActivate(WPARAM wParam, LPARAM lParam);

    void ReadColors();
    BOOL HitSplitter(CPoint point) const;
    BOOL InFrameBand() const;
    void DrawResizeTracker();
    void DrawMoveTracker(CPoint point);
    // Sets the width (and height) without moving the dock bar; its creator
    // puts it in place afterwards.
    void SetSize(int cx, int cy);
    void CreatePopup();
    void SyncPopup();
    void KeepAboveHost();
    void RaiseAboveActiveHost();
    HWND m_hWndForegroundSeen = nullptr; // the foreground window at the last owner check

    // Wine: refuses the focus and the activation to the pop-up (see the source).
    class CPopupFocusGuard;
    std::unique_ptr<CPopupFocusGuard> m_pFocusGuard;

    DECLARE_MESSAGE_MAP()
};
