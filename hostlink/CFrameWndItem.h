// The item of the host IDE's frame window ("PFE_Frame"). It announces itself
// to the host frame with WM_CREATEDOCKBAR, which the hook library reports back
// once the host has taken it: from then on the frame is ours to work with.
// It plants the Assist Window into the frame, appends the "&Assist" popup to
// the host's menu bar, and keeps the MDI client and the Assist Window side by
// side: the host lays its MDI client over the whole free client area on every
// WM_SIZE, and this item then narrows it by the Assist Window's width and puts
// the Assist Window into the strip so freed. On deletion it takes the popup
// away, closes the Assist Window and has the host lay out once more.
#pragma once

#include "CItem.h"
#include "CMenu.h"
#include "CRect.h"

class CDockBar;

class CFrameWndItem : public CItem
{
public:
    CFrameWndItem(HWND hWnd, CItems* pItems);
    ~CFrameWndItem() override;

    void OnHookMessage(const HookRecord* pRecord) override;
    void OnHookMessageDone(const HookRecord* pRecord) override;

private:
    // Takes the MDI client's place as the host left it and cuts the Assist
    // Window's strip off it.
    void MeasureLayout();
    // Moves the MDI client and the Assist Window to their places.
    void ApplyLayout();
    // The first visible "PFE_TBar" child's rectangle in the frame's client
    // coordinates, else the empty rectangle.
    void FindToolBarRect(CRect& rect) const;
    // TRUE when the tool bar moved to another edge or turned since the last
    // check; a tool bar that only grew along its edge does not count.
    BOOL ToolBarChanged();

    CDockBar* m_pDockBar = nullptr; // owns and deletes itself; see GetDockBar
    CMenu m_menuAssist;             // menu 101, loaded with the Assist Window
    CRect m_rectClient;             // the MDI client's place, frame client coordinates
    int m_nDockWidth = 0;           // the Assist Window's width at the last measure
    CRect m_rectToolBar;            // the tool bar at the last check
    BOOL m_bRedrawSuspended = FALSE;

    // The Assist Window while its window exists, else NULL: it deletes itself
    // with its window, which the host frame may take down first.
    CDockBar* GetDockBar();
    void CreateDockBar();
    void ToggleDockBar();

    HWND m_hWndDockBar = nullptr;
    BOOL m_bPopupAppended = FALSE;
    // The MDI client as the host laid it out at the last measure, and the
    // frame's client size then: a measure that finds the MDI client still
    // where ApplyLayout narrowed it starts again from this.
    CRect m_rectHostLayout;
    CSize m_sizeFrameMeasured;
};
