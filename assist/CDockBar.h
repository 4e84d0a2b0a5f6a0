// The Assist Window: a modeless dialog planted into the host IDE's frame at
// the left or right edge of its client area, beside the MDI client. It paints
// a splitter edge on its inner side and a two-line gripper at its top, holds
// a flat button that hides it and a tab control (tabs at the bottom) with the
// Project page. Dragging the splitter changes its width, dragging the gripper
// moves it to the other side (CDockSplitter); width and side live in the
// settings ("DockRect", "DockLeft"). Every message record of the host frame
// is passed on to its pages. How it is attached to the host frame differs
// between Windows and Wine (CDockAttachment).
//
// Created with new by the host frame item; deletes itself after its window is
// destroyed (by Close, or with the host frame). After a resize, a move to the
// other side and a hide it posts WM_SIZE to the host frame, whose item then
// lays out the dock bar and the MDI client again.
#pragma once

#include "CDockAttachment.h"
#include "CDockSplitter.h"
#include "CFlatButton.h"
#include "CImages.h"
#include "CModelessDialogEx.h"
#include "CTabbedPageEx.h"

#include <memory>

struct HookRecord;

class CDockBar : public CModelessDialogEx, private CDockSplitter::IOwner
{
public:
    explicit CDockBar(HWND hWndHost);
    ~CDockBar() override;

    // The width of "DockRect" as the settings have it now, when the user
    // changed it in the file since it was last applied: the bar takes it
    // (TRUE) and the frame's next layout places it.
    BOOL ApplySettingsWidth();

    // Creates the dock bar under the host frame, shown or hidden. It hides
    // the base's Create, which knows only the child window of the template.
    void Create(BOOL bShow);
    // Hands a host frame record to every page, in page order.
    void DispatchHostMessage(const HookRecord* pRecord);

    // Visibility and place as the host frame item sees them, the same
    // whichever way the dock bar is attached: shown means shown beside the
    // MDI client.
    BOOL IsShown() const { return m_pAttachment->IsShown(); }
    void Show(BOOL bShow) { m_pAttachment->Show(bShow); }
    // Puts the dock bar on a rectangle in the host frame's client coordinates.
    void Place(const CRect& rect) { m_pAttachment->Place(rect); }
    // The host frame moved, was minimised, restored, hidden or activated.
    void FollowHost() { m_pAttachment->FollowHost(); }

    BOOL PreTranslateMessage(MSG* pMsg) override;

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

    DECLARE_MESSAGE_MAP()

private:
    BOOL IsDockedLeft() const override;
    void OnSplitterResized(int cx) override;
    void OnGripperSideChosen(BOOL bLeft) override;

    void ReadColors();
    // Sets the width (and height) without moving the dock bar; the host
    // frame's item puts it in place afterwards.
    void SetSize(int cx, int cy);
    // Has the host frame lay out its MDI client and this dock bar again.
    void RelayoutHost();

    HWND m_hWndHost; // the host IDE frame
    CFlatButton m_btnHide;
    CTabbedPageEx m_tab;
    CImages m_images;
    COLORREF m_clr3DLight = 0;
    COLORREF m_clrHighlight = 0;
    COLORREF m_clrShadow = 0;
    COLORREF m_clr3DDkShadow = 0;
    CDockSplitter m_splitter;
    std::unique_ptr<CDockAttachment> m_pAttachment;
    int m_nSettingsWidth = 0; // the "DockRect" width applied last
};
