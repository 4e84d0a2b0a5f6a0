#include "CDockSplitter.h"

#include "CScreenPatternDC.h"
#include "CWnd.h"
#include "resource.h"

namespace
{
// The splitter edge is this wide, one pixel in from the window's inner side.
const int kSplitterWidth = 4;
// A resize drag follows the pointer only this far inside the host frame.
const int kFrameBandMargin = 32;
// Thickness of the frame drawn while moving.
const int kMoveFrame = 4;
} // namespace

CDockSplitter::CDockSplitter(CWnd& wnd, IOwner& owner, HWND hWndHost)
    : m_wnd(wnd), m_owner(owner), m_hWndHost(hWndHost)
{
    HINSTANCE hInstance = GetModuleHandleA(nullptr);
    if (FindResourceA(hInstance, MAKEINTRESOURCEA(IDC_SPLIT), RT_GROUP_CURSOR))
        m_hcurSplit = LoadCursorA(hInstance, MAKEINTRESOURCEA(IDC_SPLIT));
}

BOOL CDockSplitter::HitSplitter(CPoint point) const
{
    CRect rc;
    m_wnd.GetClientRect(&rc);
    if (m_owner.IsDockedLeft())
    {
        rc.left = rc.right - 1 - kSplitterWidth;
        rc.right = rc.right - 1;
    }
    else
    {
        rc.right = rc.left + 1 + kSplitterWidth;
        rc.left = rc.left + 1;
    }
    return rc.PtInRect(point);
}

BOOL CDockSplitter::InFrameBand() const
{
    CRect rcBand;
    ::GetClientRect(m_hWndHost, &rcBand);
    InflateRect(&rcBand, -kFrameBandMargin, -kFrameBandMargin);
    POINT pt;
    GetCursorPos(&pt);
    ::ScreenToClient(m_hWndHost, &pt);
    return pt.x > rcBand.left && pt.x < rcBand.right;
}

void CDockSplitter::DrawResizeTracker() const
{
    CRect rc;
    m_wnd.GetWindowRect(&rc);
    rc.left += m_ptDrag.x;
    rc.right = rc.left;
    InflateRect(&rc, 2, -2);
    CScreenPatternDC dc;
    dc.Invert(rc);
}

void CDockSplitter::DrawMoveTracker(CPoint point)
{
    CRect f;
    ::GetWindowRect(m_hWndHost, &f);
    m_wnd.ClientToScreen(&point);
    CRect d;
    m_wnd.GetWindowRect(&d);
    const int w = d.Width();
    const CRect rectLeft(f.left, f.top, f.left + w, f.bottom);
    const CRect rectRight(f.right - w, f.top, f.right, f.bottom);
    const BOOL bDockLeft = m_owner.IsDockedLeft();
    if (!bDockLeft && rectLeft.PtInRect(point))
    {
        d.left = f.left;
        d.right = f.left + w;
        m_bDropLeft = TRUE;
    }
    else if (bDockLeft && rectRight.PtInRect(point))
    {
        d.right = f.right;
        d.left = f.right - w;
        m_bDropLeft = FALSE;
    }
    CScreenPatternDC dc;
    dc.Invert(CRect(d.left, d.top, d.right, d.top + kMoveFrame));
    dc.Invert(CRect(d.left, d.bottom - kMoveFrame, d.right, d.bottom));
    dc.Invert(CRect(d.left, d.top + kMoveFrame, d.left + kMoveFrame, d.bottom - kMoveFrame));
    dc.Invert(CRect(d.right - kMoveFrame, d.top + kMoveFrame, d.right, d.bottom - kMoveFrame));
}

void CDockSplitter::OnMouseMove(CPoint point)
{
    switch (m_drag)
    {
    case Drag::None:
    case Drag::OverSplitter:
        m_drag = HitSplitter(point) ? Drag::OverSplitter : Drag::None;
        if (m_drag == Drag::OverSplitter && m_hcurSplit)
            SetCursor(m_hcurSplit);
        break;
    case Drag::Resizing:
        if (InFrameBand())
        {
            DrawResizeTracker();
            m_ptDrag = point;
            DrawResizeTracker();
        }
        break;
    case Drag::Moving:
        // The side chosen is kept even when the pointer leaves the zone again.
        DrawMoveTracker(m_ptDrag);
        m_ptDrag = point;
        DrawMoveTracker(m_ptDrag);
        break;
    }
}

void CDockSplitter::OnLButtonDown(CPoint point)
{
    if (HitSplitter(point))
    {
        m_drag = Drag::Resizing;
        m_ptDrag = point;
        DrawResizeTracker();
    }
    else if (m_rcGripper.PtInRect(point))
    {
        m_drag = Drag::Moving;
        m_ptDrag = point;
        m_bDropLeft = m_owner.IsDockedLeft();
        DrawMoveTracker(m_ptDrag);
    }
    else
        return;
    m_wnd.SetCapture();
}

void CDockSplitter::OnLButtonUp(CPoint point)
{
    // The release's own position counts: the pointer may have got there with
    // no move reported on the way (a quick drag, a busy machine). Releasing
    // the capture ends the drag in OnCaptureChanged.
    if (m_drag == Drag::Resizing || m_drag == Drag::Moving)
    {
        OnMouseMove(point);
        ReleaseCapture();
    }
}

void CDockSplitter::OnCaptureChanged()
{
    const Drag drag = m_drag;
    if (drag == Drag::Resizing)
        DrawResizeTracker();
    else if (drag == Drag::Moving)
        DrawMoveTracker(m_ptDrag);
    else
        return;
    m_drag = Drag::None;

    if (drag == Drag::Resizing)
    {
        CRect rc;
        m_wnd.GetClientRect(&rc);
        if (m_owner.IsDockedLeft())
            rc.right = m_ptDrag.x;
        else
            rc.left = m_ptDrag.x;
        if (rc.Width() > 0)
            m_owner.OnSplitterResized(rc.Width());
    }
    else if (m_bDropLeft != m_owner.IsDockedLeft())
        m_owner.OnGripperSideChosen(m_bDropLeft);
}

BOOL CDockSplitter::OnSetCursor()
{
    if ((m_drag == Drag::OverSplitter || m_drag == Drag::Resizing) && m_hcurSplit)
    {
        SetCursor(m_hcurSplit);
        return TRUE;
    }
    return FALSE;
}
