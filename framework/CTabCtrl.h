// A tab control ("SysTabControl32").
#pragma once

#include "CImageList.h"
#include "CWnd.h"

#include <commctrl.h>

class CTabCtrl : public CWnd
{
    DECLARE_DYNAMIC(CTabCtrl)
public:
    CTabCtrl() = default;

    BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    int GetItemCount() const { return static_cast<int>(SendMessage(TCM_GETITEMCOUNT)); }
    int GetCurSel() const { return static_cast<int>(SendMessage(TCM_GETCURSEL)); }
    // The previously selected tab, or -1. Sends no notification.
    int SetCurSel(int nItem) { return static_cast<int>(SendMessage(TCM_SETCURSEL, static_cast<WPARAM>(nItem))); }
    int GetCurFocus() const { return static_cast<int>(SendMessage(TCM_GETCURFOCUS)); }
    void SetCurFocus(int nItem) { SendMessage(TCM_SETCURFOCUS, static_cast<WPARAM>(nItem)); }

    // The new tab's index, or -1.
    LONG InsertItem(int nItem, TCITEMA* pTabCtrlItem)
    {
        return static_cast<LONG>(SendMessage(TCM_INSERTITEMA, static_cast<WPARAM>(nItem),
                                             reinterpret_cast<LPARAM>(pTabCtrlItem)));
    }
    LONG InsertItem(int nItem, LPCSTR lpszItem);
    BOOL GetItem(int nItem, TCITEMA* pTabCtrlItem) const
    {
        return static_cast<BOOL>(SendMessage(TCM_GETITEMA, static_cast<WPARAM>(nItem),
                                             reinterpret_cast<LPARAM>(pTabCtrlItem)));
    }
    BOOL SetItem(int nItem, TCITEMA* pTabCtrlItem)
    {
        return static_cast<BOOL>(SendMessage(TCM_SETITEMA, static_cast<WPARAM>(nItem),
                                             reinterpret_cast<LPARAM>(pTabCtrlItem)));
    }
    BOOL DeleteItem(int nItem) { return static_cast<BOOL>(SendMessage(TCM_DELETEITEM, static_cast<WPARAM>(nItem))); }
    BOOL DeleteAllItems() { return static_cast<BOOL>(SendMessage(TCM_DELETEALLITEMS)); }
    BOOL GetItemRect(int nItem, LPRECT lpRect) const
    {
        return static_cast<BOOL>(SendMessage(TCM_GETITEMRECT, static_cast<WPARAM>(nItem),
                                             reinterpret_cast<LPARAM>(lpRect)));
    }
    // The previous size of a fixed-width tab.
    CSize SetItemSize(CSize size);
    // bLarger FALSE: from the window rectangle to the display area; TRUE: back.
    void AdjustRect(BOOL bLarger, LPRECT lpRect)
    {
        SendMessage(TCM_ADJUSTRECT, static_cast<WPARAM>(bLarger), reinterpret_cast<LPARAM>(lpRect));
    }
    int HitTest(TCHITTESTINFO* pHitTestInfo) const
    {
        return static_cast<int>(SendMessage(TCM_HITTEST, 0, reinterpret_cast<LPARAM>(pHitTestInfo)));
    }
    // The control's own tool tip window (TCS_TOOLTIPS at creation), or NULL.
    HWND GetToolTips() const { return reinterpret_cast<HWND>(SendMessage(TCM_GETTOOLTIPS)); }

    // Image lists are not owned by the control: the previous one comes back
    // as a temporary object.
    CImageList* GetImageList() const;
    CImageList* SetImageList(CImageList* pImageList);
};
