// A tab control that fixes its own styles (tool tips always, tabs at the
// bottom on request) whether it is created by the program or taken over from
// a dialog template, inserts tabs with text and image, hands out images from
// an image list, and answers its tool tip's text requests from a list.
#pragma once

#include "CTabCtrl.h"

#include <vector>

class CTabCtrlEx : public CTabCtrl
{
    DECLARE_DYNAMIC(CTabCtrlEx)
public:
    CTabCtrlEx();
    ~CTabCtrlEx() override;

    // Must be set before the control is created or subclassed.
    BOOL m_bTabsAtBottom = FALSE;
    // Tool tip text of tab i at position i.
    std::vector<CString> m_strToolTips;

    // Adds TCS_TOOLTIPS when missing, then TCS_BOTTOM when m_bTabsAtBottom.
    void ApplyStyles();
    using CTabCtrl::InsertItem;
    // nImage -1: text only. The new tab's index, or -1.
    LONG InsertItem(int nItem, LPCSTR lpszText, int nImage);
    using CTabCtrl::SetImageList;
    // Sets the image list; with bAssignImages every existing tab i shows
    // image i. The previous list comes back as a temporary object.
    virtual CImageList* SetImageList(CImageList* pImageList, BOOL bAssignImages);
    void AddToolTip(LPCSTR lpszText);
    void AddToolTip(UINT nIDString);

protected:
    void PreSubclassWindow() override;
    int OnCreate(LPCREATESTRUCT lpCreateStruct);
    void OnSize(UINT nType, int cx, int cy);
    BOOL OnToolTipNeedText(UINT nID, NMHDR* pNMHDR, LRESULT* pResult);

    DECLARE_MESSAGE_MAP()
};
