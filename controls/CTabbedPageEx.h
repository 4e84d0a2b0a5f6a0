// A tab control that holds dialog pages: each page is created inside the
// display area and its tab is named after the page's caption; the first page
// is shown, and the pages are kept sized to the display area. UpdateData on
// the control runs every page's data exchange: FALSE refreshes them all,
// TRUE validates them all and fails at the first page that fails, whose tab
// is left selected.
//
// The control does not own its pages: each deletes itself when its window
// goes, which is when the control's window goes (the pages are its children).
#pragma once

#include "CModelessDialogEx.h"
#include "CTabCtrlEx.h"

#include <vector>

class CTabbedPageEx : public CTabCtrlEx
{
    DECLARE_DYNAMIC(CTabbedPageEx)
public:
    struct PAGE
    {
        int nItem;                   // the tab given to the page
        CModelessDialogEx* pPage;    // not owned
        HWND hWnd;                   // the page's window, to tell whether the object still exists
    };
    std::vector<PAGE> m_pages;       // entry i belongs to tab i

    bool m_bResizePages = false; // on WM_SIZE, fit every page to the display area

    // Creates pPage (constructed with this control as parent) hidden, adds
    // a tab with its caption and image nImage, and fits it to the display area.
    void AddPage(CModelessDialogEx* pPage, int nImage);
    int GetPageCount() const { return static_cast<int>(m_pages.size()); }
    // The page of entry i (i below GetPageCount); NULL once its window is
    // gone, since the page deleted itself with it.
    CModelessDialogEx* GetPage(int i) const;

protected:
    void DoDataExchange(CDataExchange* pDX) override;
    void OnSize(UINT nType, int cx, int cy);

    CRect GetDisplayRect() const;

    DECLARE_MESSAGE_MAP()
};
