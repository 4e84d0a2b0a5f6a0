// The splitter edge and the gripper of the Assist Window: capture-based
// drags on its owner's window, with XOR feedback drawn on the screen.
// Dragging the splitter reports the new width, dragging the gripper reports
// the side the pointer chose; what follows (sizes, settings, the host's
// layout) is the owner's business. A drag ends when the capture goes, by
// the button's release or any other way (WM_CANCELMODE, another window
// taking it), and is applied where the tracker was.
#pragma once

#include "CRect.h"

class CWnd;

class CDockSplitter
{
public:
    class IOwner
    {
    public:
        virtual BOOL IsDockedLeft() const = 0;
        virtual void OnSplitterResized(int cx) = 0;
        virtual void OnGripperSideChosen(BOOL bLeft) = 0;

    protected:
        ~IOwner() = default;
    };

    // wnd is the Assist Window whose mouse messages are handed in here;
    // hWndHost the host frame it is docked in.
    CDockSplitter(CWnd& wnd, IOwner& owner, HWND hWndHost);
    CDockSplitter(const CDockSplitter&) = delete;
    CDockSplitter& operator=(const CDockSplitter&) = delete;

    // The gripper's hit rectangle in the window's client coordinates, as
    // the last paint drew it.
    void SetGripper(const CRect& rect) { m_rcGripper = rect; }

    void OnMouseMove(CPoint point);
    void OnLButtonDown(CPoint point);
    void OnLButtonUp(CPoint point);
    void OnCaptureChanged();
    // TRUE when it set the splitter's cursor.
    BOOL OnSetCursor();

private:
    enum class Drag
    {
        None,
        OverSplitter, // not a drag: the pointer rests on the splitter edge
        Resizing,
        Moving,
    };

    BOOL HitSplitter(CPoint point) const;
    BOOL InFrameBand() const;
    void DrawResizeTracker() const;
    void DrawMoveTracker(CPoint point);

    CWnd& m_wnd;
    IOwner& m_owner;
    HWND m_hWndHost;
    HCURSOR m_hcurSplit = nullptr;
    Drag m_drag = Drag::None;
    CPoint m_ptDrag;          // last tracked pointer position, client coordinates
    CRect m_rcGripper;
    BOOL m_bDropLeft = FALSE; // side chosen by the current move drag
};
