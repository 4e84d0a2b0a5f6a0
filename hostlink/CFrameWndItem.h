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
    // The user tools changed, or the popup could not be put up before (the
    // host had a menu open): the "&Assist" popup is put up with them.
    void ApplySettings() override;
    BOOL IsRefused() const override { return m_bPopupRefused; }

    // The host's process, and whether it runs 32 or 64 bits.
    DWORD m_dwHostProcessId = 0;
    int m_nHostBitness = 0;

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
    CRect m_rectClient;             // the MDI client's place, frame client coordinates
    int m_nDockWidth = 0;           // the Assist Window's width at the last measure
    CRect m_rectToolBar;            // the tool bar at the last check
    BOOL m_bRedrawSuspended = FALSE;

    // The Assist Window while its window exists, else NULL: it deletes itself
    // with its window, which the host frame may take down first.
    CDockBar* GetDockBar();
    void CreateDockBar();
    void ToggleDockBar();
    // Appends the "&Assist" popup, "&Assist Window" and the shown user tools,
    // to the host's menu bar; m_strToolCaptions says which tools it holds.
    BOOL AppendAssistPopup();
    // The file of the host's active editor, else empty.
    CString GetActiveFileName() const;
    // The user tool chosen in the "&Assist" popup runs for the active editor.
    void RunTool(UINT nCommand);

    CString m_strToolCaptions;
    BOOL m_bPopupRefused = FALSE; // the last request was refused (said once in the log)

    HWND m_hWndDockBar = nullptr;
    BOOL m_bPopupAppended = FALSE;
    // The MDI client as the host laid it out at the last measure, and the
    // frame's client size then: a measure that finds the MDI client still
    // where ApplyLayout narrowed it starts again from this.
    CRect m_rectHostLayout;
    CSize m_sizeFrameMeasured;
};
